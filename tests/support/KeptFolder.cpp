// SPDX-License-Identifier: MIT
#include "tests/support/KeptFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

KeptFolder::KeptFolder() : _path(fs::current_path().string())
{
    const char* name = std::getenv("PWD");
    _shellName = name != nullptr ? name : "";
}

KeptFolder::~KeptFolder()
{
    std::error_code failure;
    fs::current_path(_path, failure);
    EXPECT_FALSE(failure) << _path;
    EXPECT_EQ(_shellName.empty() ? unsetenv("PWD") : setenv("PWD", _shellName.c_str(), 1), 0);
}
