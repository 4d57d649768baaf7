// SPDX-License-Identifier: MIT
#include "tools/common/RelativePath.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::ptrdiff_t stepsUp(const fs::path& path)
{
    return std::count(path.begin(), path.end(), "..");
}

std::ptrdiff_t depth(const fs::path& folder)
{
    const fs::path names = folder.relative_path();
    return std::distance(names.begin(), names.end());
}

} // namespace

RelativePath::RelativePath()
{
    std::error_code failure;
    const fs::path here = fs::current_path(failure);
    if (!failure) {
        _folders.push_back(here.string());
    }
    const char* shells = std::getenv("PWD");
    if (shells != nullptr && here != shells && fs::path(shells).is_absolute() &&
        fs::equivalent(here, shells, failure)) {
        _folders.push_back(fs::path(shells).lexically_normal().string());
    }
}

std::string RelativePath::of(const std::string& path) const
{
    fs::path best;
    for (const std::string& folder : _folders) {
        const fs::path seen = fs::path(path).lexically_relative(folder);
        if (stepsUp(seen) < depth(folder) && (best.empty() || stepsUp(seen) < stepsUp(best))) {
            best = seen;
        }
    }
    if (best.empty()) {
        return path;
    }
    const std::string result = best.string();
    return result.find('/') == std::string::npos ? "./" + result : result;
}
