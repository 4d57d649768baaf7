// SPDX-License-Identifier: MIT
#include "tools/import/TemporaryFolder.h"

#include "tests/support/TempDir.h"
#include "tools/import/gcc/runGcov.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

class TemporaryFolderTest : public ::testing::Test
{
protected:
    void TearDown() override { unsetenv("TMPDIR"); }
};

TEST_F(TemporaryFolderTest, LivesAsLongAsTheObject)
{
    const TempDir dir;
    setenv("TMPDIR", dir.path().c_str(), 1);
    {
        const TemporaryFolder folder;
        EXPECT_EQ(folder.path().rfind(dir.path("zem-import-"), 0), 0u) << folder.path();
        EXPECT_TRUE(folder.link("x", "link"));
        EXPECT_EQ(folder.problem(), "");
    }
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

// The tool that waits for it is not to blame.
TEST_F(TemporaryFolderTest, WithoutAPlaceItSaysWhy)
{
    setenv("TMPDIR", "/nowhere", 1);
    EXPECT_EQ(TemporaryFolder().path(), "");
    EXPECT_EQ(TemporaryFolder().problem(),
              "the folder for temporary files cannot be used: No such file or directory; set "
              "TMPDIR to one that can");
    std::string json;
    std::string problem;
    EXPECT_FALSE(runGcov("true", {"/a.gcno", ""}, json, problem));
    EXPECT_EQ(problem, TemporaryFolder().problem());
    setenv("TMPDIR", "/proc", 1); // even root makes no folder there
    EXPECT_EQ(TemporaryFolder().problem().rfind("cannot make a temporary folder in /proc: ", 0), 0u)
        << TemporaryFolder().problem();
}

} // namespace
