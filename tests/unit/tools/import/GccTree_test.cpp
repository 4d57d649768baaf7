// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccTree.h"

#include "tests/support/KeptFolder.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/LinksInFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class GccTreeTest : public ::testing::Test
{
protected:
    std::string problems()
    {
        std::ostringstream out;
        _tree.problems().write(out);
        return out.str();
    }

    const TempDir _dir;
    GccTree _tree;
};

TEST_F(GccTreeTest, PairsNotesWithTheCountersBesideThem)
{
    _dir.write("b/two.cc.gcno", "");
    _dir.write("b/two.cc.gcda", "");
    _dir.write("a/one file.gcno", "");
    _dir.write("a/one file.o", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    const std::vector<GccUnitFiles> units = _tree.units();
    ASSERT_EQ(units.size(), 2u);
    EXPECT_EQ(units[0]._notes, _dir.path("a/one file.gcno"));
    EXPECT_EQ(units[0]._counters, "");
    EXPECT_EQ(units[1]._notes, _dir.path("b/two.cc.gcno"));
    EXPECT_EQ(units[1]._counters, _dir.path("b/two.cc.gcda"));
    EXPECT_TRUE(_tree.strayCounters().empty());
    EXPECT_TRUE(_tree.isAnyUnitRun());
    EXPECT_EQ(problems(), "");
}

TEST_F(GccTreeTest, FolderGivenTwiceGivesEachUnitOnce)
{
    _dir.write("a/one.gcno", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    ASSERT_TRUE(_tree.addBuild(_dir.path("a").c_str()));
    ASSERT_TRUE(_tree.addBuild((_dir.path("a") + "/../a/.").c_str()));
    EXPECT_EQ(_tree.units().size(), 1u);
}

TEST_F(GccTreeTest, WhatFoldersLackIsCountedAndTold)
{
    addLinks(_dir, "a/one.gcno", "a/two.gcda");
    ASSERT_TRUE(_tree.addBuild(_dir.path("a").c_str()));
    EXPECT_EQ(_tree.units().size(), 1u);
    EXPECT_EQ(_tree.problems().unread(), 1u);
    EXPECT_EQ(_tree.problems().findLinkedFolders(), 1u);
    EXPECT_EQ(problems(), problemsOfLinks(_dir, "a", "a/two.gcda"));
}

TEST_F(GccTreeTest, CountersWithoutNotesAreStray)
{
    _dir.write("one.gcda", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    EXPECT_TRUE(_tree.units().empty());
    EXPECT_EQ(_tree.strayCounters(), std::vector<std::string>{_dir.path("one.gcda")});
    EXPECT_EQ(_tree.findLostUnits(), 1u);
    EXPECT_EQ(problems(), "zem-import: " + _dir.path("one.gcda") +
                              ": the .gcno file of these counters is gone: compile the unit "
                              "again, or delete them\n");
    EXPECT_FALSE(_tree.isAnyUnitRun());
}

TEST_F(GccTreeTest, ManyProblemsAreNotAllTold)
{
    for (int i = 0; i < 25; ++i) {
        _dir.write(std::to_string(i) + ".gcda", "");
    }
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    EXPECT_EQ(_tree.findLostUnits(), 25u);
    const std::string text = problems();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 21);
    EXPECT_NE(text.find("zem-import: and 5 more like these\n"), std::string::npos);
}

TEST_F(GccTreeTest, FolderThatIsNotThereCannotBeRead)
{
    EXPECT_FALSE(_tree.addBuild(_dir.path("none").c_str()));
    EXPECT_FALSE(_tree.addRun(_dir.path("none").c_str()));
    EXPECT_FALSE(_tree.addBuild(_dir.write("file", "").c_str()));
    EXPECT_EQ(problems(), "zem-import: cannot read the folder " + _dir.path("none") +
                              ": No such file or directory\nzem-import: cannot read the folder " +
                              _dir.path("none") +
                              ": No such file or directory\nzem-import: cannot read the folder " +
                              _dir.path("file") + ": Not a directory\n");
}

TEST_F(GccTreeTest, FolderBelowThatCannotBeReadIsToldAndTheOthersAreRead)
{
    _dir.write("a/one.gcno", "");
    _dir.write("b/two.gcno", "");
    // A name that is as long as a name may be, in a folder so deep that the path gets too long.
    std::string deep = _dir.path();
    while (deep.size() < 3900) {
        deep += "/" + std::string(150, 'd');
    }
    std::filesystem::create_directories(deep);
    const KeptFolder kept;
    ASSERT_EQ(chdir(deep.c_str()), 0);
    const std::string last(255, 'd');
    ASSERT_EQ(mkdir(last.c_str(), 0700), 0);
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    EXPECT_EQ(_tree.units().size(), 2u);
    EXPECT_EQ(_tree.problems().unread(), 1u);
    EXPECT_EQ(problems(),
              "zem-import: cannot read the folder " + deep + "/" + last + ": File name too long\n");
    ASSERT_EQ(rmdir(last.c_str()), 0);
}

TEST_F(GccTreeTest, RunWithoutCountersIsRefused)
{
    std::filesystem::create_directory(_dir.path("run"));
    EXPECT_FALSE(_tree.addRun(_dir.path("run").c_str()));
    EXPECT_EQ(problems(), "zem-import: no .gcda file in the run folder " + _dir.path("run") +
                              ": did the program run with GCOV_PREFIX set to it, and did it "
                              "exit?\n");
}

TEST_F(GccTreeTest, CountersOfARunBelongToTheBuildByTheirPath)
{
    _dir.write("build/one.gcno", "");
    _dir.write("run" + _dir.path() + "/build/one.gcda", "");
    _dir.write("run" + _dir.path() + "/build/gone.gcda", "");
    _dir.write("run" + _dir.path() + "/library/other.gcda", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path("build").c_str()));
    ASSERT_TRUE(_tree.addRun(_dir.path("run").c_str()));
    EXPECT_EQ(_tree.strayCounters().size(), 2u);
    EXPECT_EQ(_tree.findLostUnits(), 1u);
    EXPECT_NE(problems().find("gone.gcda"), std::string::npos);
}

TEST_F(GccTreeTest, RunReplacesTheCountersBesideTheNotes)
{
    _dir.write("build/one.gcno", "");
    _dir.write("build/one.gcda", "");
    _dir.write("build/two.gcno", "");
    _dir.write("build/two.gcda", "");
    const std::string counters = "run" + _dir.path() + "/build/one.gcda";
    _dir.write(counters, "");
    ASSERT_TRUE(_tree.addBuild(_dir.path("build").c_str()));
    ASSERT_TRUE(_tree.addRun(_dir.path("run").c_str()));
    const std::vector<GccUnitFiles> units = _tree.units();
    ASSERT_EQ(units.size(), 2u);
    EXPECT_EQ(units[0]._counters, _dir.path(counters));
    EXPECT_EQ(units[1]._counters, "");
}

TEST_F(GccTreeTest, RunMayHaveLostLeadingFolders)
{
    _dir.write("build/sub/one.gcno", "");
    _dir.write("run/sub/one.gcda", "");
    _dir.write("run/other.gcda", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path("build").c_str()));
    ASSERT_TRUE(_tree.addRun(_dir.path("run").c_str()));
    EXPECT_EQ(_tree.units()[0]._counters, _dir.path("run/sub/one.gcda"));
    EXPECT_EQ(_tree.strayCounters().size(), 1u);
}

} // namespace
