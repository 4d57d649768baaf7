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
    std::vector<std::string> walk(const std::string& folder,
                                  FolderWalk::Sought sought = FolderWalk::Sought::ByName)
    {
        FolderWalk walk(folder);
        std::vector<std::string> result;
        while (walk.next()) {
            result.push_back(walk.path() + (walk.isFile(sought) ? "" : "*"));
        }
        _problems = walk.problems();
        _links = walk.links();
        _folders = walk.folders();
        std::sort(result.begin(), result.end());
        return result;
    }

    const TempDir _dir;
    std::vector<FolderWalk::Problem> _problems;
    std::vector<FolderWalk::Link> _links;
    std::vector<FolderWalk::Identity> _folders;
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
    ASSERT_EQ(_links.size(), 1u);
    EXPECT_EQ(_links[0]._path, _dir.path("a/up"));
    EXPECT_EQ(_folders.size(), 1u);
}

TEST_F(FolderWalkTest, FolderIsKnownByWhateverPath)
{
    fs::create_directories(_dir.path("a/b"));
    fs::create_symlink("b", _dir.path("a/link"));
    walk(_dir.path("a"));
    ASSERT_EQ(_links.size(), 1u);
    EXPECT_EQ(_folders.size(), 2u);
    EXPECT_NE(std::find(_folders.begin(), _folders.end(), _links[0]._target), _folders.end());
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

// The file that it stood for is lost, if its name is that of a file that somebody wants.
TEST_F(FolderWalkTest, LinksThatLeadNowhereAreProblemsWhereTheirNameIsSought)
{
    fs::create_symlink("gone/a.gcda", _dir.path("a.gcda"));
    fs::create_symlink("somebody@here.123", _dir.path(".#a.gcda"));
    EXPECT_EQ(walk(_dir.path("")).size(), 2u);
    ASSERT_EQ(_problems.size(), 1u);
    EXPECT_EQ(_problems[0].text(), "cannot look at " + _dir.path("a.gcda") +
                                       ": it is a link to gone/a.gcda, which is not there");
    EXPECT_EQ(walk(_dir.path(""), FolderWalk::Sought::ByContent).size(), 2u);
    EXPECT_TRUE(_problems.empty());
}

TEST_F(FolderWalkTest, LinksThatCannotBeFollowedAreProblems)
{
    fs::create_symlink("round", _dir.path("round"));
    EXPECT_EQ(walk(_dir.path(""), FolderWalk::Sought::ByContent).size(), 1u);
    ASSERT_EQ(_problems.size(), 1u);
    EXPECT_TRUE(_problems[0]._isEntry);
    EXPECT_EQ(_problems[0]._reason, "Too many levels of symbolic links");
    EXPECT_EQ(_problems[0].text().find("cannot look at "), 0u);
}

} // namespace
