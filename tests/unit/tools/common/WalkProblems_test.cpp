// SPDX-License-Identifier: MIT
#include "tools/common/WalkProblems.h"

#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "tools/common/ImportLosses.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace {

namespace fs = std::filesystem;

class WalkProblemsTest : public ::testing::Test
{
protected:
    // Goes through a folder as far as to its end.
    bool walk(const std::string& folder)
    {
        FolderWalk walk(folder);
        while (walk.next()) {
            walk.isFile();
        }
        return _problems.add(walk, folder);
    }

    std::string text() const
    {
        std::ostringstream out;
        _problems.write(out);
        return out.str();
    }

    const TempDir _dir;
    WalkProblems _problems;
};

TEST_F(WalkProblemsTest, LinkedFoldersAreNamedUnlessTheyWereGoneThrough)
{
    const TempDir elsewhere;
    elsewhere.write("two", "");
    _dir.write("a/one", "");
    fs::create_symlink(elsewhere.path(), _dir.path("a/out"));
    fs::create_symlink(elsewhere.path(), _dir.path("b"));
    fs::create_symlink("..", _dir.path("a/up")); // gone through anyway
    EXPECT_TRUE(walk(_dir.path()));
    EXPECT_EQ(_problems.findLinkedFolders(), 2u);
    EXPECT_EQ(text(), "zem-import: " + _dir.path("a/out") +
                          " is a link to a folder, which was not looked through: if it holds "
                          "something for this import, name it, too\n");
    EXPECT_EQ(_problems.findLinkedFolders(), 0u); // told once
    WalkProblems both;
    std::swap(both, _problems);
    EXPECT_TRUE(walk(_dir.path()));
    EXPECT_TRUE(walk(_dir.path("b"))); // named, too
    EXPECT_EQ(_problems.findLinkedFolders(), 0u);
    EXPECT_EQ(text(), "");
}

// Only the folder that was asked for ends an import.
TEST_F(WalkProblemsTest, FolderThatCannotBeReadIsToldFromAnEntry)
{
    fs::create_symlink("gone", _dir.path("lost"));
    EXPECT_TRUE(walk(_dir.path()));
    EXPECT_FALSE(walk(_dir.path("none")));
    EXPECT_EQ(_problems.unread(), 2u);
}

TEST_F(WalkProblemsTest, ReportCountsTellsAndForgets)
{
    fs::create_symlink("gone", _dir.path("lost"));
    fs::create_symlink("/", _dir.path("root"));
    walk(_dir.path());
    ImportLosses losses;
    const StdErr errors;
    _problems.report(losses);
    _problems.report(losses);
    EXPECT_EQ(losses._unreadFolders, 1u);
    EXPECT_EQ(losses._linkedFolders, 1u);
    const std::string said = errors.text();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2);
}

} // namespace
