// SPDX-License-Identifier: MIT
#include "tools/common/cleanMaps.h"

#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class CleanMapsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        mapFile({{"/s/a.cc"}}).write(_dir.path("one-1.map"));
        mapFile({{"/s/b.cc"}}).write(_dir.path("two-2.map"));
        logFile({{"/s/a.cc", "/moved/from/elsewhere/one-1.map"}}).write(_dir.path("one.log"));
    }

    bool clean() { return cleanMaps(_dir.path(), _result); }
    bool isThere(const char* name) const { return fs::exists(_dir.path(name)); }

    const TempDir _dir;
    CleanedMaps _result;
};

TEST_F(CleanMapsTest, RemovesMapsThatNoLogNames)
{
    ASSERT_TRUE(clean());
    EXPECT_EQ(_result._removed, std::vector<std::string>{"two-2.map"});
    EXPECT_EQ(_result._kept, 1u);
    EXPECT_TRUE(isThere("one-1.map"));
    EXPECT_TRUE(isThere("one.log"));
    EXPECT_FALSE(isThere("two-2.map"));
}

TEST_F(CleanMapsTest, LogOfAnyNameKeepsItsMaps)
{
    logFile({{"/s/b.cc", "two-2.map"}, {"/s/b.cc", "one-1.map"}}).write(_dir.path("kept.old"));
    fs::remove(_dir.path("one.log"));
    ASSERT_TRUE(clean());
    EXPECT_EQ(_result._kept, 2u);
    EXPECT_TRUE(_result._removed.empty());
}

TEST_F(CleanMapsTest, LogThatNamesNothingKeepsNothing)
{
    logFile({}).startAt(0).write(_dir.path("one.log"));
    ASSERT_TRUE(clean()) << _result._problem;
    EXPECT_EQ(_result._removed, (std::vector<std::string>{"one-1.map", "two-2.map"}));
    EXPECT_EQ(_result._kept, 0u);
}

TEST_F(CleanMapsTest, OtherFilesAreLeftAlone)
{
    _dir.write("map.map", "a map of the town");
    _dir.write("build.log", "g++ -c a.cc\n");
    _dir.write("empty.map", "");
    _dir.write("empty.log", "");
    fs::create_directory(_dir.path("folder.map"));
    fs::create_directory(_dir.path("folder.log"));
    mapFile({{"/s/c.cc"}}).write(_dir.path("map.saved"));
    ASSERT_TRUE(clean());
    EXPECT_EQ(_result._removed.size(), 1u);
    for (const char* name : {"map.map", "build.log", "empty.map", "empty.log", "map.saved"}) {
        EXPECT_TRUE(isThere(name)) << name;
    }
}

TEST_F(CleanMapsTest, NothingIsRemovedWhenALogCannotBeRead)
{
    const std::string log = TempDir::read(_dir.path("one.log"));
    for (const size_t size : {log.size() - 1, size_t(130), size_t(64), size_t(30)}) {
        _dir.write("cut.log", log.substr(0, size));
        CleanedMaps result;
        EXPECT_FALSE(cleanMaps(_dir.path(), result));
        EXPECT_EQ(result._problem.find(_dir.path("cut.log") + ": "), 0u) << result._problem;
        EXPECT_TRUE(isThere("two-2.map")) << size;
    }
    fs::remove(_dir.path("cut.log"));
    fs::create_symlink("nowhere", _dir.path("lost"));
    EXPECT_FALSE(clean());
    EXPECT_TRUE(isThere("two-2.map"));
}

TEST_F(CleanMapsTest, FolderThatIsNotThereIsAProblem)
{
    EXPECT_FALSE(cleanMaps(_dir.path("none"), _result));
    EXPECT_EQ(_result._problem, _dir.path("none") + ": No such file or directory");
}

TEST_F(CleanMapsTest, WhatDeadImportsLeftGoes)
{
    _dir.write(".zem-import-0123456789abcdef.new", "half a map");
    ASSERT_TRUE(clean());
    EXPECT_FALSE(isThere(".zem-import-0123456789abcdef.new"));
}

// Otherwise the map of an import whose log is not there yet would go.
TEST_F(CleanMapsTest, WaitsForImportsIntoTheFolder)
{
    const int import = open(_dir.path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(import, LOCK_SH), 0);
    bool isGood = false;
    std::thread cleaner([this, &isGood] { isGood = clean(); });
    usleep(100 * 1000);
    logFile({{"/s/b.cc", "two-2.map"}}).write(_dir.path("two.log"));
    close(import);
    cleaner.join();
    EXPECT_TRUE(isGood);
    EXPECT_EQ(_result._kept, 2u);
}

} // namespace
