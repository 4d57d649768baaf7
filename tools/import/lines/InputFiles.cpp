// SPDX-License-Identifier: MIT
#include "tools/import/lines/InputFiles.h"

#include "tools/common/FolderWalk.h"

#include <algorithm>
#include <cstring>
#include <sys/stat.h>

bool InputFiles::fits(const std::string& path) const
{
    for (const char* const* end = _ends; *end != nullptr; ++end) {
        const size_t length = std::strlen(*end);
        if (path.size() > length &&
            path.compare(path.size() - length, std::string::npos, *end) == 0) {
            return true;
        }
    }
    return false;
}

bool InputFiles::isLikely(const std::string& folder) const
{
    constexpr int MostEntries = 20000;
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        return false;
    }
    FolderWalk walk(folder);
    for (int i = 0; i < MostEntries && walk.next(); ++i) {
        if (fits(walk.path())) {
            return true;
        }
    }
    return false;
}

bool InputFiles::add(const std::string& word)
{
    struct stat status = {};
    if (stat(word.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        _paths.push_back(word); // who reads it says what is wrong with it
        return true;
    }
    const size_t before = _paths.size();
    FolderWalk walk(word);
    while (walk.next()) {
        if (fits(walk.path()) && walk.isFile()) {
            _paths.push_back(walk.path());
        }
    }
    std::sort(_paths.begin() + static_cast<std::ptrdiff_t>(before), _paths.end());
    _problems.add(walk, word);
    if (_paths.size() == before && walk.problems().empty()) {
        std::string problem = word + ": no file below it has a name that ends in ";
        for (const char* const* end = _ends; *end != nullptr; ++end) {
            problem += end == _ends ? "" : " or ";
            problem += *end;
        }
        _problems.add(problem);
    }
    return _paths.size() != before;
}
