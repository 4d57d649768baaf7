// SPDX-License-Identifier: MIT
#include "tools/common/SourcePath.h"

#include <filesystem>
#include <sys/stat.h>

std::string absolutePath(const std::string& base, const std::string& path)
{
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
