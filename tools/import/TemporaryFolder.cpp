// SPDX-License-Identifier: MIT
#include "tools/import/TemporaryFolder.h"

#include "tools/import/CleanEnd.h"

#include <filesystem>

TemporaryFolder::TemporaryFolder()
{
    std::error_code failure;
    const std::filesystem::path base = std::filesystem::temp_directory_path(failure);
    std::string pattern = (base / "zem-import-XXXXXX").string();
    if (CleanEnd::makeFolder(pattern)) {
        _path = pattern;
    }
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
