// SPDX-License-Identifier: MIT
#include "tools/import/TemporaryFolder.h"

#include "tools/import/CleanEnd.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

TemporaryFolder::TemporaryFolder()
{
    std::error_code failure;
    const std::filesystem::path base = std::filesystem::temp_directory_path(failure);
    if (failure) {
        _problem = "the folder for temporary files cannot be used: " + failure.message() +
                   "; set TMPDIR to one that can";
        return;
    }
    std::string pattern = (base / "zem-import-XXXXXX").string();
    if (CleanEnd::makeFolder(pattern)) {
        _path = pattern;
        return;
    }
    const int error = errno;
    _problem = "cannot make a temporary folder in " + base.string() + ": " + std::strerror(error) +
               "; set TMPDIR to one where that can be done";
}

TemporaryFolder::~TemporaryFolder()
{
    if (!_path.empty()) {
        CleanEnd::removeFolder(_path);
    }
}

bool TemporaryFolder::link(const std::string& target, const std::string& name) const
{
    return CleanEnd::makeLink(target, _path + "/" + name);
}
