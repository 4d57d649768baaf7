// SPDX-License-Identifier: MIT
#include "tests/support/TempDir.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

TempDir::TempDir()
{
    std::string name = (std::filesystem::temp_directory_path() / "zem-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        std::perror("mkdtemp");
        std::abort();
    }
    _path = name;
}

TempDir::~TempDir()
{
    std::error_code ignored; // a test that failed may have left anything behind
    std::filesystem::remove_all(_path, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& bytes) const
{
    const std::string file = path(name);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
}

std::string TempDir::read(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes; // by the buffer: some tests read a hundred megabytes
    bytes << in.rdbuf();
    return bytes.str();
}
