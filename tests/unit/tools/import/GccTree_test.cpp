// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccTree.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace {

class GccTreeTest : public ::testing::Test
{
protected:
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
    EXPECT_EQ(_tree.strayCounters(), 0u);
}

TEST_F(GccTreeTest, FolderGivenTwiceGivesEachUnitOnce)
{
    _dir.write("a/one.gcno", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    ASSERT_TRUE(_tree.addBuild(_dir.path("a").c_str()));
    ASSERT_TRUE(_tree.addBuild((_dir.path("a") + "/../a/.").c_str()));
    EXPECT_EQ(_tree.units().size(), 1u);
}

TEST_F(GccTreeTest, CountersWithoutNotesAreStray)
{
    _dir.write("one.gcda", "");
    ASSERT_TRUE(_tree.addBuild(_dir.path().c_str()));
    EXPECT_TRUE(_tree.units().empty());
    EXPECT_EQ(_tree.strayCounters(), 1u);
}

TEST_F(GccTreeTest, FolderThatIsNotThereCannotBeRead)
{
    EXPECT_FALSE(_tree.addBuild(_dir.path("none").c_str()));
    EXPECT_FALSE(_tree.addRun(_dir.path("none").c_str()));
    EXPECT_FALSE(_tree.addBuild(_dir.write("file", "").c_str()));
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
    EXPECT_EQ(_tree.strayCounters(), 1u);
}

} // namespace
