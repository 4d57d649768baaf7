// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

class GccUnitTest : public ::testing::Test
{
protected:
    // Each function as "path symbol: lines=hits ..." with a comma between the lines of a block,
    // those of another file with that file's path before them; sorted. Empties the store.
    std::string blocks()
    {
        std::vector<std::string> rows;
        for (const FunctionCopy& copy : solve()) {
            rows.push_back(row(copy));
        }
        std::sort(rows.begin(), rows.end());
        std::string text;
        for (const std::string& row : rows) {
            text += row;
        }
        return text;
    }

    const std::vector<FunctionCopy>& solve()
    {
        _build._copies.clear();
        EXPECT_TRUE(_store.solve(1, _build, _counts, _solved));
        return _build._copies;
    }

    std::string row(const FunctionCopy& copy)
    {
        const std::vector<std::string>& paths = _sources.paths();
        std::string text = paths[copy._file] + " " + copy._symbol + ":";
        for (size_t i = 0; i < copy._lines.size(); ++i) {
            const CopyLine& line = copy._lines[i];
            const bool isFirst = i == 0 || copy._lines[i - 1]._block != line._block;
            const bool isLast =
                i + 1 == copy._lines.size() || copy._lines[i + 1]._block != line._block;
            text += isFirst ? " " : ",";
            text += line._file == copy._file ? "" : paths[line._file] + ":";
            text += std::to_string(line._line);
            text += isLast ? "=" + std::to_string(_counts[copy._firstCount + line._block]) : "";
        }
        return text + "\n";
    }

    const TempDir _dir;
    SourceFilter _filter;
    ImportedBuild _build{_filter};
    SourceTable& _sources = _build._sources;
    std::vector<int64_t> _counts;
    GraphStore _store;
    GccUnit _unit{_sources, _store};
    ImportLosses _solved;
};

TEST_F(GccUnitTest, BlocksHaveTheirLinesAndSolvedCounts)
{
    const std::string counters = sampleCounters(12);
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(12), &counters));
    EXPECT_EQ(_unit.failure(), "");
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=10 3=4 4,5=6 6=10\n");
    EXPECT_EQ(_unit.losses()._mostRuns, 3u);
}

// Where a function is entered and left is no code of its own.
TEST_F(GccUnitTest, EntryAndExitHaveNoLines)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(7, 8, 9, "work", 0, "a.cc", 1, 6);
    notes.blocks(3);
    notes.arcs(0, {{2, 4}});
    notes.arcs(2, {{1, 1}});
    notes.lines(0, "a.cc", {1});
    notes.lines(1, "a.cc", {6});
    notes.lines(2, "a.cc", {3});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc work: 3=0\n");
}

TEST_F(GccUnitTest, FilesOfClangHaveTheirLinesAndSolvedCounts)
{
    const std::string notes = _dir.write("a.gcno", sampleNotes(GcovBuilder::Clang));
    const std::string counters = _dir.write("a.gcda", sampleCounters(GcovBuilder::Clang));
    ASSERT_TRUE(_unit.readBlocks({notes, counters}));
    EXPECT_EQ(_unit.failure(), "");
    // They do not say where they were made: names count from where they lie.
    EXPECT_EQ(blocks(), _dir.path("a.cc") + " work: 1,2=10 3=4 4,5=6 6=10\n");
    ASSERT_EQ(_build._copies.size(), 1u);
    EXPECT_EQ(_build._copies[0]._startLine, 1u);
    EXPECT_EQ(_build._copies[0]._endLine, 6u);
    EXPECT_EQ(_build._copies[0]._startColumn, 0u);
    EXPECT_EQ(_solved._unsolvedFunctions, 0u);
}

// The end follows from the lines, and must be one for all instances of a template.
TEST_F(GccUnitTest, FunctionsOfClangThatBeginOnOneLineEndOnOneLine)
{
    GcovBuilder notes(GcovBuilder::Clang);
    notes.notesHead(SampleStamp, "");
    for (const uint32_t ident : {1u, 2u, 3u}) {
        notes.function(ident, 8, 9, "f" + std::to_string(ident), 0, "/a.cc", ident < 3 ? 4 : 9, 0);
        notes.blocks(3);
        notes.arcs(0, {{2, 0}});
        notes.arcs(2, {{1, 1}});
        notes.lines(2, "/a.cc", {ident < 3 ? 4 + ident : 2}, "/b.h", {70});
    }
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    std::vector<std::string> ranges;
    for (const FunctionCopy& copy : solve()) {
        ranges.push_back(copy._symbol + " " + std::to_string(copy._startLine) + "-" +
                         std::to_string(copy._endLine));
    }
    std::sort(ranges.begin(), ranges.end());
    EXPECT_EQ(ranges, (std::vector<std::string>{"f1 4-6", "f2 4-6", "f3 9-9"}));
}

TEST_F(GccUnitTest, UnitWithoutCountersNeverRan)
{
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(9), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=0 3=0 4,5=0 6=0\n");
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
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=0 3=0 4,5=0 6=0\n");
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
    EXPECT_EQ(blocks(), "/build/a.cc f: 1=0\n/build/a.cc g: 2=0\n");
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

// Notes that are cut between two functions, or counters whose ident is damaged.
TEST_F(GccUnitTest, FunctionsThatOnlyTheCountersKnowTakeTheUnitsCounts)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    for (uint32_t ident : {1u, 2u}) {
        notes.function(ident, 8, 9, ident == 1 ? "f" : "g", 0, ident == 1 ? "a.cc" : "/usr/x.h", 1,
                       6);
        notes.blocks(3);
        notes.arcs(0, {{2, 0}});
        notes.arcs(2, {{1, 1}});
        notes.lines(2, ident == 1 ? "a.cc" : "/usr/x.h", {3});
    }
    struct Case
    {
        std::vector<uint32_t> idents;
        uint32_t lastChecksum;
        bool isFit;
        int64_t count;
    };
    const Case cases[] = {{{1, 2}, 9, true, 5},     {{1}, 9, true, 5},    {{2}, 9, true, 0},
                          {{1, 2, 3}, 9, false, 0}, {{3}, 9, false, 0},   {{0, 1}, 9, false, 0},
                          {{1, 2}, 7, false, 0},    {{1, 1}, 9, true, 5}, {{}, 9, true, 0}};
    for (const Case& one : cases) {
        GcovBuilder counters(12);
        counters.countersHead(SampleStamp);
        for (size_t i = 0; i < one.idents.size(); ++i) {
            counters.ran(one.idents[i], 8, i + 1 == one.idents.size() ? one.lastChecksum : 9);
            counters.counters({5});
        }
        counters.word(0);
        const std::string text = testing::PrintToString(one.idents);
        GraphStore store;
        ImportedBuild build(_filter);
        GccUnit unit(build._sources, store);
        ASSERT_TRUE(unit.readBlocks(notes.bytes(), &counters.bytes()));
        ASSERT_TRUE(store.solve(1, build, _counts, _solved));
        EXPECT_EQ(unit.losses()._failedUnits, one.isFit ? 0u : 1u) << text;
        EXPECT_EQ(unit.failure().find("does not fit") == std::string::npos, one.isFit) << text;
        ASSERT_EQ(build._copies.size(), 1u);
        const FunctionCopy& copy = build._copies[0];
        ASSERT_EQ(copy._lines.size(), 1u);
        EXPECT_EQ(_counts[copy._firstCount + copy._lines[0]._block], one.count) << text;
    }
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
    notes.lines(2, "a.cc", {2}, "/usr/include/x.h", {70});
    notes.lines(3, "/usr/include/x.h", {71});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    GccUnit same(_sources, _store);
    ASSERT_TRUE(same.readBlocks(notes.bytes(), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc f: 2=0\n");
    for (const GccUnit* unit : {&_unit, &same}) {
        EXPECT_EQ(unit->losses()._systemFunctions, 1u);
        EXPECT_EQ(unit->losses()._artificialFunctions, 1u);
    }
    EXPECT_EQ(_solved._linesOfOtherFiles, 2u);
    EXPECT_EQ(_solved._blocksOfOtherFiles, 1u);
    EXPECT_EQ(_solved._blocksWithoutLine, 1u);
}

TEST_F(GccUnitTest, LinesThatFunctionsLeftOutHoldAreKept)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(1, 2, 3, "find_if", 0, "/usr/include/x.h", 1, 6);
    notes.blocks(4);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{3, 1}});
    notes.arcs(3, {{1, 1}});
    notes.lines(2, "/usr/include/x.h", {2}, "a.cc", {9});
    notes.function(2, 2, 3, "_ZN1AC2ERKS_", 1, "a.cc", 5, 5);
    notes.blocks(3);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{1, 1}});
    notes.lines(2, "a.cc", {5, 8});
    GcovBuilder counters(12);
    counters.countersHead(SampleStamp);
    counters.ran(1, 2, 3);
    counters.counters({4});
    counters.ran(2, 2, 3);
    counters.counters({5});
    counters.word(0);
    for (int i = 0; i < 2; ++i) {
        GccUnit unit(_sources, _store);
        ASSERT_TRUE(unit.readBlocks(notes.bytes(), &counters.bytes()));
        EXPECT_EQ(unit.losses()._systemFunctions, 1u);
        EXPECT_EQ(unit.losses()._artificialFunctions, 1u);
    }
    const std::vector<FunctionCopy>& copies = solve();
    ASSERT_EQ(copies.size(), 2u);
    const FunctionCopy& system = copies[copies[0]._symbol == "find_if" ? 0 : 1];
    const FunctionCopy& made = copies[copies[0]._symbol == "find_if" ? 1 : 0];
    EXPECT_EQ(row(system), "/usr/include/x.h find_if: /build/a.cc:9=8\n");
    EXPECT_EQ(row(made), "/build/a.cc _ZN1AC2ERKS_: 5,8=10\n");
    EXPECT_FALSE(system._isHidden);
    EXPECT_TRUE(made._isHidden);
    EXPECT_EQ(_solved._blocksWithoutLine + _solved._linesOfOtherFiles, 0u);
}

TEST_F(GccUnitTest, WhatTheCompilerMadeInAFileLeftOutIsHiddenLikeAllItMade)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(1, 2, 3, "_ZNSt4pairIii1AED2Ev", 1, "/usr/include/x.h", 1, 6);
    notes.blocks(3);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{1, 1}});
    notes.lines(2, "a.cc", {9});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    const std::vector<FunctionCopy>& copies = solve();
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_TRUE(copies[0]._isHidden);
}

TEST_F(GccUnitTest, ExcludedFunctionsAreCounted)
{
    _filter.exclude("*.cc");
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(12), nullptr));
    EXPECT_EQ(blocks(), "");
    EXPECT_EQ(_unit.losses()._excludedFunctions, 1u);
}

TEST_F(GccUnitTest, LinesOfIncludedTextKeepTheirFile)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(3, 2, 3, "f", 0, "a.cc", 1, 6);
    notes.blocks(4);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{3, 1}});
    notes.arcs(3, {{1, 1}});
    notes.lines(2, "a.cc", {2, 1, 2}, "../t.inc", {70});
    notes.lines(3, "../t.inc", {71});
    ASSERT_TRUE(_unit.readBlocks(notes.bytes(), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc f: 1,2,/t.inc:70=0 /t.inc:71=0\n");
    EXPECT_EQ(_solved._blocksWithoutLine, 0u);
}

TEST_F(GccUnitTest, FunctionOfSeveralUnitsIsReadOnceAndAddedUp)
{
    const std::string counters = sampleCounters(12);
    for (int i = 0; i < 5; ++i) {
        GccUnit unit(_sources, _store);
        ASSERT_TRUE(unit.readBlocks(sampleNotes(12), &counters));
    }
    // In another byte order and with other notes around it, it is the same function.
    const std::string other = sampleCounters(11, true);
    GccUnit unit(_sources, _store);
    ASSERT_TRUE(unit.readBlocks(sampleNotes(11, true), &other));
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=60 3=24 4,5=36 6=60\n");
}

TEST_F(GccUnitTest, UnitThatDoesNotFitAddsNothingToTheSums)
{
    const std::string good = sampleCounters(12);
    GcovBuilder bad(12);
    bad.countersHead(SampleStamp);
    bad.ran(7, 8, 9);
    bad.counters({10, 4, 1});
    bad.word(0);
    ASSERT_TRUE(_unit.readBlocks(sampleNotes(12), &good));
    GccUnit other(_sources, _store);
    ASSERT_TRUE(other.readBlocks(sampleNotes(12), &bad.bytes()));
    EXPECT_NE(other.failure(), "");
    EXPECT_EQ(other.losses()._mostRuns, 0u);
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=10 3=4 4,5=6 6=10\n");
}

TEST_F(GccUnitTest, RelativeNamesInTwoFoldersAreTwoFiles)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/other");
    const std::string sample = sampleNotes(12);
    // The same function behind the head of a unit that was compiled elsewhere.
    GcovBuilder head(12);
    head.notesHead(SampleStamp, "/build");
    const std::string moved = notes.bytes() + sample.substr(head.bytes().size());
    ASSERT_TRUE(_unit.readBlocks(sample, nullptr));
    GccUnit unit(_sources, _store);
    ASSERT_TRUE(unit.readBlocks(moved, nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc work: 1,2=0 3=0 4,5=0 6=0\n"
                        "/other/a.cc work: 1,2=0 3=0 4,5=0 6=0\n");
}

TEST_F(GccUnitTest, NotesWithoutAFolderWereMadeWhereTheyLie)
{
    GcovBuilder head(12);
    head.notesHead(SampleStamp, "/build");
    GcovBuilder bare(12);
    bare.notesHead(SampleStamp, "");
    const std::string sample = sampleNotes(12);
    const std::string notes =
        _dir.write("a.gcno", bare.bytes() + sample.substr(head.bytes().size()));
    ASSERT_TRUE(_unit.readBlocks({notes, ""}));
    EXPECT_EQ(_unit.failure(), "");
    EXPECT_EQ(blocks(), _dir.path("a.cc") + " work: 1,2=0 3=0 4,5=0 6=0\n");
}

// A function that the compiler made of a coroutine.
std::string coroutineNotes(const char* symbol, uint32_t line)
{
    GcovBuilder notes(12);
    notes.notesHead(SampleStamp, "/build");
    notes.function(3, 2, 3, symbol, 1, "a.cc", 1, 1);
    notes.blocks(3);
    notes.arcs(0, {{2, 0}});
    notes.arcs(2, {{1, 1}});
    notes.lines(2, "a.cc", {line});
    return notes.bytes();
}

TEST_F(GccUnitTest, BodyOfACoroutineHasTheCoroutinesName)
{
    for (const char* symbol : {"_Z5countPZ5countiE15_Z5counti.Frame.actor", "_Z5counti.actor"}) {
        GccUnit unit(_sources, _store);
        ASSERT_TRUE(unit.readBlocks(coroutineNotes(symbol, 3), nullptr));
        EXPECT_EQ(blocks(), "/build/a.cc _Z5counti: 3=0\n") << symbol;
    }
}

TEST_F(GccUnitTest, OtherPartsOfACoroutineStayOut)
{
    ASSERT_TRUE(_unit.readBlocks(coroutineNotes("_Z5countPZ5countiE15_Z5counti.Frame.destroy", 1),
                                 nullptr));
    EXPECT_EQ(blocks(), "");
    EXPECT_EQ(_unit.losses()._artificialFunctions, 1u);
}

TEST_F(GccUnitTest, NameThatHoldsNoCoroutineIsKept)
{
    ASSERT_TRUE(_unit.readBlocks(coroutineNotes("odd_Z1f.Frame.actor", 3), nullptr));
    EXPECT_EQ(blocks(), "/build/a.cc odd_Z1f.Frame: 3=0\n");
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
    EXPECT_EQ(blocks(), "/build/a.cc f: 2=0\n");
    EXPECT_EQ(_solved._unsolvedFunctions, 1u);
}

TEST_F(GccUnitTest, FilesThatCannotBeReadAreFailures)
{
    ASSERT_TRUE(_unit.readBlocks({_dir.path("none.gcno"), ""}));
    EXPECT_EQ(_unit.failure(), "the .gcno file cannot be read: No such file or directory");
    GccUnit folder(_sources, _store);
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
    GccUnit folder(_sources, _store);
    ASSERT_TRUE(folder.readBlocks({notes, _dir.path()}));
    EXPECT_EQ(folder.failure(),
              "the .gcda file cannot be read: Not a regular file" + advice + _dir.path());
    GccUnit cut(_sources, _store);
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
    GccUnit other(_sources, _store);
    ASSERT_TRUE(other.readBlocks({huge, ""}));
    EXPECT_EQ(other.failure(),
              "the .gcno file holds no notes: compile the unit again, or delete the file");
}

TEST_F(GccUnitTest, NotesOfAnotherCompilerSayWhatWorks)
{
    const std::string clang = {'o', 'n', 'c', 'g', '*', '2', '0', '4', 1, 2, 3, 4, 0, 0, 0, 0};
    ASSERT_TRUE(_unit.readBlocks(clang, nullptr));
    EXPECT_EQ(_unit.failure(), "built by a GCC older than 9, or by a clang++ older than 11: use a "
                               "later one");
    EXPECT_EQ(_unit.losses()._failedUnits, 1u);
}

TEST_F(GccUnitTest, MissingGcovIsAFailure)
{
    _unit.readLines({_dir.write("a.gcno", sampleNotes(12)), ""}, "/no/such/gcov");
    EXPECT_NE(_unit.failure(), "");
    EXPECT_EQ(blocks(), "");
}

} // namespace
