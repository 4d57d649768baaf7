// SPDX-License-Identifier: MIT
#include "tools/common/FolderWalk.h"

#include "tests/support/TempDir.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class FolderWalkTest : public ::testing::Test
{
protected:
    // Each entry below the folder, with a "*" behind what is no file.
    std::vector<std::string> walk(const std::string& folder)
    {
        FolderWalk walk(folder);
        std::vector<std::string> result;
        while (walk.next()) {
            result.push_back(walk.path() + (walk.isFile() ? "" : "*"));
        }
        _problems = walk.problems();
        std::sort(result.begin(), result.end());
        return result;
    }

    const TempDir _dir;
    std::vector<FolderWalk::Problem> _problems;
};

TEST_F(FolderWalkTest, GivesFilesOfAllFoldersBelow)
{
    _dir.write("a", "");
    _dir.write("b/c/d", "");
    _dir.write("b/.e", "");
    fs::create_directory(_dir.path("empty"));
    EXPECT_EQ(walk(_dir.path()),
              (std::vector<std::string>{_dir.path("a"), _dir.path("b/.e"), _dir.path("b/c/d")}));
    EXPECT_TRUE(_problems.empty());
}

TEST_F(FolderWalkTest, LinksToFoldersAreNotFollowed)
{
    _dir.write("a/file", "");
    fs::create_symlink(_dir.path(), _dir.path("a/up"));
    fs::create_symlink(_dir.path("a/file"), _dir.path("a/link"));
    fs::create_symlink("nowhere", _dir.path("a/lost"));
    EXPECT_EQ(walk(_dir.path("a") + "/"),
              (std::vector<std::string>{_dir.path("a/file"), _dir.path("a/link"),
                                        _dir.path("a/lost*"), _dir.path("a/up*")}));
}

TEST_F(FolderWalkTest, FolderThatIsNotThereIsAProblem)
{
    EXPECT_TRUE(walk(_dir.path("none")).empty());
    ASSERT_EQ(_problems.size(), 1u);
    EXPECT_EQ(_problems[0]._folder, _dir.path("none"));
    EXPECT_EQ(_problems[0]._reason, "No such file or directory");
}

TEST_F(FolderWalkTest, FolderThatVanishesMeanwhileIsAProblem)
{
    _dir.write("a/one", "");
    _dir.write("b/two", "");
    FolderWalk walk(_dir.path());
    ASSERT_TRUE(walk.next()); // both folders are known now
    fs::remove_all(_dir.path(walk.path() == _dir.path("a/one") ? "b" : "a"));
    EXPECT_FALSE(walk.next());
    ASSERT_EQ(walk.problems().size(), 1u);
    EXPECT_EQ(walk.problems()[0]._reason, "No such file or directory");
}

} // namespace
