// SPDX-License-Identifier: MIT
#include "tools/common/RelativePath.h"

#include "tests/support/KeptFolder.h"
#include "tests/support/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class RelativePathTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directories(_dir.path("project/build"));
        fs::create_symlink("project", _dir.path("link"));
        enter("project");
    }

    void enter(const std::string& folder)
    {
        ASSERT_EQ(chdir(_dir.path(folder).c_str()), 0);
        ASSERT_EQ(setenv("PWD", _dir.path(folder).c_str(), 1), 0);
    }

    const TempDir _dir;
    const KeptFolder _kept;
};

TEST_F(RelativePathTest, IsSeenFromTheCurrentFolder)
{
    EXPECT_EQ(RelativePath().of(_dir.path("project/src/a.cc")), "src/a.cc");
    EXPECT_EQ(RelativePath().of(_dir.path("project/a.cc")), "./a.cc");
    enter("project/build");
    EXPECT_EQ(RelativePath().of(_dir.path("project/src/a.cc")), "../src/a.cc");
    EXPECT_EQ(RelativePath().of(_dir.path("b.cc")), "../../b.cc");
}

TEST_F(RelativePathTest, PathWithoutACommonFolderStays)
{
    EXPECT_EQ(RelativePath().of("/usr/include/x.h"), "/usr/include/x.h");
    ASSERT_EQ(chdir("/"), 0);
    EXPECT_EQ(RelativePath().of("/usr/include/x.h"), "/usr/include/x.h");
}

// Compilers write the folder as the shell names it.
TEST_F(RelativePathTest, LinkThatTheShellWentOverIsTheCurrentFolderToo)
{
    enter("link");
    EXPECT_EQ(RelativePath().of(_dir.path("link/src/a.cc")), "src/a.cc");
    EXPECT_EQ(RelativePath().of(_dir.path("project/src/a.cc")), "src/a.cc");
    ASSERT_EQ(setenv("PWD", "/usr", 1), 0); // no name of this folder
    EXPECT_EQ(RelativePath().of("/usr/a.cc"), "/usr/a.cc");
}

// The system takes ".." from the folder itself, not from the link.
TEST_F(RelativePathTest, FolderGoesBeforeALinkWithAsManySteps)
{
    fs::create_symlink("project/build", _dir.path("deep"));
    enter("deep");
    const std::string path = _dir.write("project/a.cc", "");
    EXPECT_EQ(RelativePath().of(path), "../a.cc");
    EXPECT_TRUE(fs::exists(RelativePath().of(path)));
}

} // namespace
