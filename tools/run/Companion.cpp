// SPDX-License-Identifier: MIT
#include "tools/run/Companion.h"

#include <filesystem>
#include <unistd.h>

std::string ownPath()
{
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", failure);
    return failure ? std::string() : path.string();
}

std::string companion(const std::string& name)
{
    const std::string own = ownPath();
    const std::string beside = own.substr(0, own.rfind('/') + 1) + name;
    return !own.empty() && access(beside.c_str(), X_OK) == 0 ? beside : name;
}
