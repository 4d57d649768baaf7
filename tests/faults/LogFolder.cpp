// SPDX-License-Identifier: MIT
#include "tests/faults/LogFolder.h"

#include "tests/support/TempDir.h"
#include "tools/common/ContentDigest.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

LogFolder::Contents LogFolder::contents() const
{
    Contents result;
    for (const fs::directory_entry& entry : fs::directory_iterator(_path)) {
        result[entry.path().filename().string()] = TempDir::read(entry.path().string());
    }
    return result;
}

void LogFolder::fill(const Contents& files) const
{
    fs::remove_all(_path);
    fs::create_directories(_path);
    for (const auto& file : files) {
        std::ofstream(path(file.first), std::ios::binary) << file.second;
    }
}

void LogFolder::expectWholeMaps(const Contents& files)
{
    for (const auto& file : files) {
        const fs::path name = file.first;
        if (name.extension() == ".map") {
            ContentDigest digest;
            digest.add(reinterpret_cast<const unsigned char*>(file.second.data()),
                       file.second.size());
            const std::string stem = name.stem().string();
            EXPECT_EQ(stem.substr(stem.rfind('-') + 1), digest.text().substr(0, 32)) << name;
        }
    }
}
