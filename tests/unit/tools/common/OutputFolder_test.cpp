// SPDX-License-Identifier: MIT
#include "tools/common/OutputFolder.h"

#include "tests/support/TempDir.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class OutputFolderTest : public ::testing::Test
{
protected:
    const TempDir _dir;
    OutputFolder _folder;
};

TEST_F(OutputFolderTest, SharedOneIsMadeWithThoseAbove)
{
    ASSERT_TRUE(_folder.makeShared(_dir.path("a/b")));
    EXPECT_TRUE(fs::is_directory(_dir.path("a/b")));
    EXPECT_TRUE(_folder.sync());
    OutputFolder other;
    EXPECT_TRUE(other.makeShared(_dir.path("a/b")));
}

TEST_F(OutputFolderTest, IsKnownByTheSystemsPath)
{
    fs::create_directory(_dir.path("a"));
    fs::create_directory_symlink("a", _dir.path("link"));
    ASSERT_TRUE(_folder.takeAlone(_dir.path("link/../a/.")));
    EXPECT_EQ(_folder.path(), fs::canonical(_dir.path("a")).string());
}

TEST_F(OutputFolderTest, OneThatIsNotThereCannotBeTakenAlone)
{
    EXPECT_FALSE(_folder.takeAlone(_dir.path("none")));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(fs::exists(_dir.path("none")));
}

TEST_F(OutputFolderTest, FileIsNoFolder)
{
    const std::string file = _dir.write("file", "");
    EXPECT_FALSE(_folder.takeAlone(file));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_FALSE(_folder.makeShared(file + "/below"));
    EXPECT_EQ(errno, ENOTDIR);
}

} // namespace
