// SPDX-License-Identifier: MIT
#include "tools/common/SourcePath.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>

namespace {

// Whether each part of `path`, between its slashes, is a name. One slash at the end is none's.
bool hasPlainParts(std::string_view path)
{
    bool isGood = !path.empty();
    for (size_t start = 0; start < path.size() && isGood;) {
        const size_t end = std::min(path.find('/', start), path.size());
        const std::string_view part = path.substr(start, end - start);
        isGood = !part.empty() && part != "." && part != "..";
        start = end + 1;
    }
    return isGood;
}

// Whether an absolute path is as short as it can be.
bool isNormal(std::string_view path)
{
    return path.size() > 1 && path.front() == '/' && hasPlainParts(path.substr(1));
}

} // namespace

std::string absolutePath(const std::string& base, const std::string& path)
{
    // The library takes each path to pieces: a hundred times the work for what most paths need.
    if (isNormal(path)) {
        return path;
    }
    if (isNormal(base) && hasPlainParts(path)) {
        return base + (base.back() == '/' ? "" : "/") + path;
    }
    const std::filesystem::path joined = std::filesystem::path(base) / path;
    if (joined.is_absolute()) {
        return joined.lexically_normal().string();
    }
    std::error_code failure;
    const std::filesystem::path here = std::filesystem::current_path(failure);
    return (here / joined).lexically_normal().string();
}

uint32_t modificationTime(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? static_cast<uint32_t>(status.st_mtime) : 0;
}
