// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

class GccUnitTest : public ::testing::Test
{
protected:
    std::string blocks()
    {
        std::string text;
        for (const GccUnitFunction& entry : _unit.functions()) {
            text += entry._path + " " + entry._function._symbol + ":";
            for (const CovBlock& block : entry._function._blocks) {
                text += " " + std::to_string(block._startLine) + "-" +
                        std::to_string(block._stopLine) + "=" + std::to_string(block._hits);
            }
            text += "\n";
        }
        return text;
    }

    const TempDir _dir;
    SourceFilter _filter;
    GccUnit _unit{_filter};
};

TEST_F(GccUnitTest, BlocksSpanTheirLinesAndHaveSolvedCounts)
{
    const std::string counters = sampleCounters(12);
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(12), &counters));
    EXPECT_EQ(_unit.failure(), "");
    EXPECT_EQ(blocks(), "/build/a.cc work: 1-2=10 3-3=4 4-5=6 6-6=10\n");
    EXPECT_EQ(_unit.losses()._mostRuns, 3u);
}

TEST_F(GccUnitTest, UnitWithoutCountersNeverRan)
{
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(9), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc work: 1-2=0 3-3=0 4-5=0 6-6=0\n");
    EXPECT_EQ(_unit.failure(), "");
    EXPECT_EQ(_unit.losses()._unitsNotRun, 1u);
}

TEST_F(GccUnitTest, CountersOfAnotherBuildAreNeverUsed)
{
    GcovBuilder other(12);
    other.countersHead(SampleStamp + 1);
    other.ran(7, 8, 9);
    other.counters({10, 4});
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(12), &other.bytes()));
    EXPECT_EQ(blocks(), "/build/a.cc work: 1-2=0 3-3=0 4-5=0 6-6=0\n");
    EXPECT_NE(_unit.failure().find("stamp mismatch"), std::string::npos);
    EXPECT_EQ(_unit.losses()._failedUnits, 1u);
}

TEST_F(GccUnitTest, OneFunctionThatDoesNotFitTakesTheUnitsCounts)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    for (uint32_t ident : {1u, 2u}) {
        notes.function(ident, 8, 9, ident == 1 ? "f" : "g", 0, "a.cc", 1, 6);
        notes.blocks(3);
        notes.arcs(0, {{2, 0}});
        notes.arcs(2, {{1, 1}});
        notes.lines(2, "a.cc", {ident});
    }
    GcovBuilder counters(12);
    counters.countersHead(SampleStamp);
    counters.ran(1, 8, 9);
    counters.counters({5});
    counters.ran(2, 8, 7);
    counters.counters({5});
    counters.word(0);
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), &counters.bytes()));
    EXPECT_EQ(blocks(), "/build/a.cc f: 1-1=0\n/build/a.cc g: 2-2=0\n");
    EXPECT_NE(_unit.failure(), "");
}

TEST_F(GccUnitTest, UnknownVersionGivesNothingAndNoFailure)
{
    EXPECT_FALSE(_unit.readBlocks(sampleNotes(15), nullptr));
    EXPECT_EQ(blocks(), "");
    EXPECT_EQ(_unit.failure(), "");
}

TEST_F(GccUnitTest, DamagedNotesGiveNoFunction)
{
    const std::string notes = sampleNotes(12);
    ASSERT_TRUE(_unit.readBlocks(notes + notes.substr(40, 60), nullptr));
    EXPECT_EQ(blocks(), "");
    EXPECT_NE(_unit.failure(), "");
    EXPECT_EQ(_unit.losses()._failedUnits, 1u);
}

TEST_F(GccUnitTest, WhatIsLeftOutIsCounted)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(1, 2, 3, "system", 0, "/usr/include/x.h", 1, 6);
    notes.function(2, 2, 3, "_GLOBAL__sub_I_f", 1, "a.cc", 1, 6);
    notes.function(3, 2, 3, "f", 0, "a.cc", 1, 6);
    notes.blocks(5);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{3, 1}});
    notes.arcs(3, {{4, 1}});
    notes.arcs(4, {{1, 1}});
    notes.lines(2, "a.cc", {2}, "t.inc", {70});
    notes.lines(3, "t.inc", {71});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc f: 2-2=0\n");
    EXPECT_EQ(_unit.losses()._systemFunctions, 1u);
    EXPECT_EQ(_unit.losses()._artificialFunctions, 1u);
    EXPECT_EQ(_unit.losses()._linesOfOtherFiles, 2u);
    EXPECT_EQ(_unit.losses()._blocksOfOtherFiles, 1u);
    EXPECT_EQ(_unit.losses()._blocksWithoutLine, 1u);
}

TEST_F(GccUnitTest, CountersThatDetermineNothingAreCounted)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(3, 2, 3, "f", 0, "a.cc", 1, 6);
    notes.blocks(4);
    notes.arcs(0, {{2, 1}, {3, 1}});
    notes.arcs(2, {{1, 1}});
    notes.arcs(3, {{1, 1}});
    notes.lines(2, "a.cc", {2});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc f: 2-2=0\n");
    EXPECT_EQ(_unit.losses()._unsolvedFunctions, 1u);
}

TEST_F(GccUnitTest, FilesThatCannotBeReadAreFailures)
{
    ASSERT_TRUE(_unit.readBlocks({_dir.path("none.gcno"), ""}));
    EXPECT_EQ(_unit.failure(), "the .gcno file cannot be read: No such file or directory");
    GccUnit folder(_filter);
    ASSERT_TRUE(folder.readBlocks({_dir.path(), ""}));
    EXPECT_EQ(folder.failure(), "the .gcno file cannot be read: Not a regular file");
}

TEST_F(GccUnitTest, CountersThatCannotBeUsedAreNamedWithWhatToDo)
{
    const std::string notes = _dir.write("a.gcno", sampleNotes(12));
    const std::string advice = ": run the tests again, or delete ";
    const std::string empty = _dir.write("a.gcda", "");
    ASSERT_TRUE(_unit.readBlocks({notes, empty}));
    EXPECT_EQ(_unit.failure(), "the .gcda file holds no counters" + advice + empty);
    GccUnit folder(_filter);
    ASSERT_TRUE(folder.readBlocks({notes, _dir.path()}));
    EXPECT_EQ(folder.failure(),
              "the .gcda file cannot be read: Not a regular file" + advice + _dir.path());
    EXPECT_EQ(folder.functions().size(), 1u);
    GccUnit cut(_filter);
    const std::string counters = sampleCounters(12);
    const std::string half = _dir.write("a.gcda", counters.substr(0, counters.size() - 4));
    ASSERT_TRUE(cut.readBlocks({notes, half}));
    EXPECT_EQ(cut.failure(), "the .gcda file is damaged or ends early" + advice + half);
    EXPECT_EQ(cut.losses()._failedUnits, 1u);
    EXPECT_EQ(cut.losses()._mostRuns, 0u);
}

TEST_F(GccUnitTest, HugeFilesOfSomethingElseAreNamed)
{
    const std::string notes = _dir.write("a.gcno", sampleNotes(12));
    const std::string huge = _dir.write("a.gcda", "");
    std::filesystem::resize_file(huge, 3ull << 30); // sparse
    ASSERT_TRUE(_unit.readBlocks({notes, huge}));
    EXPECT_NE(_unit.failure().find("the .gcda file holds no counters"), std::string::npos);
    GccUnit other(_filter);
    ASSERT_TRUE(other.readBlocks({huge, ""}));
    EXPECT_EQ(other.failure(), "the .gcno file holds no notes");
}

TEST_F(GccUnitTest, NotesOfAnotherCompilerSayWhatWorks)
{
    const std::string clang = {'o', 'n', 'c', 'g', '*', '8', '0', '4', 1, 2, 3, 4, 0, 0, 0, 0};
    ASSERT_TRUE(_unit.readBlocks(clang, nullptr));
    EXPECT_NE(_unit.failure().find("built by clang++"), std::string::npos) << _unit.failure();
    EXPECT_EQ(_unit.losses()._failedUnits, 1u);
}

TEST_F(GccUnitTest, MissingGcovIsAFailure)
{
    _unit.readLines({_dir.write("a.gcno", sampleNotes(12)), ""}, "/no/such/gcov");
    EXPECT_NE(_unit.failure(), "");
    EXPECT_EQ(blocks(), "");
}

} // namespace
