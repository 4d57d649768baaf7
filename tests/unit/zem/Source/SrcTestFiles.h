// SPDX-License-Identifier: MIT
//
// Text files for the tests of the line indexes, in a directory that goes with the fixture.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class SrcTestFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = testing::TempDir() + "zemlinesXXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        _dir = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(_dir); }

    std::string path(const char* name) const { return _dir + "/" + name; }

    // Writes `text` to the file `name` and returns its path.
    std::string write(const char* name, const std::string& text) const
    {
        std::ofstream out(path(name), std::ios::binary | std::ios::trunc);
        out << text;
        return path(name);
    }

    std::string _dir;
};
