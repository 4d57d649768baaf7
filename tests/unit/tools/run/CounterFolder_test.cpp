#include "tests/support/TempDir.h"
#include "tools/run/CounterFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class CounterFolderTest : public ::testing::Test
{
protected:
    CounterFolderTest() { setenv("TMPDIR", _dir.path().c_str(), 1); }

    ~CounterFolderTest() override { unsetenv("TMPDIR"); }

    bool isEmpty() const { return fs::is_empty(_dir.path()); }

    TempDir _dir;
};

TEST_F(CounterFolderTest, IsForItsUserAloneAndGoesWithTheObject)
{
    {
        CounterFolder folder;
        ASSERT_TRUE(folder.create()) << folder.problem();
        EXPECT_EQ(fs::path(folder.path()).parent_path(), _dir.path());
        EXPECT_EQ(fs::status(folder.path()).permissions(), fs::perms::owner_all);
        fs::create_directories(folder.all() + "/deep/below");
        std::ofstream(folder.each() + "/file") << "x";
    }
    EXPECT_TRUE(isEmpty());
}

TEST_F(CounterFolderTest, OthersThatLiveStay)
{
    CounterFolder folder;
    CounterFolder other;
    ASSERT_TRUE(folder.create());
    CounterFolder::removeDead();
    ASSERT_TRUE(other.create());
    EXPECT_NE(folder.path(), other.path());
    EXPECT_TRUE(fs::exists(folder.all()));
    EXPECT_TRUE(folder.remove());
    EXPECT_FALSE(fs::exists(folder.path()));
    EXPECT_TRUE(fs::exists(other.all()));
}

TEST_F(CounterFolderTest, WhatAKilledRunLeftGoes)
{
    // A process that outlives zem-run makes the folder again, with other permissions.
    fs::create_directories(_dir.path("zem-run-counters.aB3xYz/all/home"));
    fs::create_directories(_dir.path("zem-run-counters.longer1/all"));
    fs::create_directories(_dir.path("elsewhere"));
    fs::create_directory_symlink(_dir.path("elsewhere"), _dir.path("zem-run-counters.linked"));
    _dir.write("zem-run-counters.afile1", "x");
    CounterFolder::removeDead();
    EXPECT_FALSE(fs::exists(_dir.path("zem-run-counters.aB3xYz")));
    EXPECT_TRUE(fs::exists(_dir.path("zem-run-counters.longer1/all")));
    EXPECT_TRUE(fs::exists(_dir.path("zem-run-counters.linked")));
    EXPECT_TRUE(fs::exists(_dir.path("zem-run-counters.afile1")));
}

TEST_F(CounterFolderTest, GoesWithoutAStandardInputToo)
{
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO); // its number is the next that is given
    {
        CounterFolder folder;
        ASSERT_TRUE(folder.create()) << folder.problem();
        EXPECT_FALSE(isEmpty());
    }
    EXPECT_TRUE(isEmpty());
    if (input >= 0) {
        dup2(input, STDIN_FILENO);
        close(input);
    }
}

TEST_F(CounterFolderTest, SaysWhyThereIsNone)
{
    setenv("TMPDIR", _dir.path("none").c_str(), 1);
    CounterFolder missing;
    EXPECT_FALSE(missing.create());
    EXPECT_NE(missing.problem().find("none: No such file or directory"), std::string::npos);
    CounterFolder::removeDead();

    fs::create_directory(_dir.path("100%"));
    setenv("TMPDIR", _dir.path("100%").c_str(), 1);
    CounterFolder patterned;
    EXPECT_FALSE(patterned.create());
    EXPECT_NE(patterned.problem().find("TMPDIR"), std::string::npos);
}

} // namespace
