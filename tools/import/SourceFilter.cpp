// SPDX-License-Identifier: MIT
#include "tools/import/SourceFilter.h"

#include "tools/common/SourcePath.h"

#include <algorithm>
#include <fnmatch.h>

void SourceFilter::only(const char* folder)
{
    std::string path = absolutePath("", folder);
    if (path.empty() || path.back() != '/') {
        path += '/';
    }
    _folders.push_back(path);
}

SourceFilter::Answer SourceFilter::ask(const std::string& path) const
{
    if (!_keepsSystem && path.compare(0, 5, "/usr/") == 0) {
        return System;
    }
    const bool isMatched =
        std::any_of(_patterns.begin(), _patterns.end(), [&path](const std::string& pattern) {
            return fnmatch(pattern.c_str(), path.c_str(), 0) == 0;
        });
    const bool isInside =
        _folders.empty() ||
        std::any_of(_folders.begin(), _folders.end(), [&path](const std::string& folder) {
            return path.compare(0, folder.size(), folder) == 0;
        });
    return isMatched || !isInside ? Excluded : Kept;
}
