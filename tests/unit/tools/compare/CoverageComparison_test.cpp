// SPDX-License-Identifier: MIT
#include "tools/compare/CoverageComparison.h"

#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"
#include "zem/Repository/ZEMRepository.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr int64_t Unlisted = -1;

// A source of nine lines, a map and log of it, and what is known of its lines and functions.
class CoverageComparisonTest : public ::testing::Test
{
protected:
    CoverageComparisonTest()
    {
        std::string text;
        for (int line = 1; line <= 9; ++line) {
            text += "line " + std::to_string(line) + "\n";
        }
        _path = _dir.write("a.cc", text);
    }

    FileFacts& file() { return _facts._files[_path]; }

    // What gcov counts (or Unlisted) and whether a block that touches the line ran.
    LineFacts& line(uint32_t number, int64_t count, bool blockRan)
    {
        LineFacts& facts = file()._lines[number];
        facts._isListed = count != Unlisted;
        facts._count = facts._isListed ? count : 0;
        facts._isTouched = true;
        facts._blockRan = blockRan;
        return facts;
    }

    void function(const std::string& readable, uint32_t start, uint32_t end, int64_t entries)
    {
        file()._functions[{start, end, readable}] = {readable, entries};
    }

    // The classes found, "word number", one a line.
    std::string compare(const std::vector<MapFunc>& functions, const std::vector<uint32_t>& counts)
    {
        const std::string map = mapFile({{_path, functions}}).write(_dir.path("a.map"));
        const std::string log = logFile({{_path, map, counts}}).write(_dir.path("a.log"));
        ZEMRepository repository;
        EXPECT_EQ(repository.processFile(log.c_str()), 0);
        CoverageComparison comparison(_facts, 0);
        comparison.run(repository);
        std::ostringstream totals;
        comparison.writeTotals(totals);
        _totals = totals.str();
        std::ostringstream out;
        comparison.findings().write(out);
        std::string words;
        std::istringstream lines(out.str());
        for (std::string text; std::getline(lines, text);) {
            words += text.substr(0, text.find("  ", text.find("  ") + 2)) + "\n";
        }
        return words;
    }

    // Of blocks in one function that nobody compares by name.
    std::string compareBlocks(const std::vector<MapBlock>& blocks,
                              const std::vector<uint32_t>& counts)
    {
        function("f()", 1, 9, 1);
        line(9, 1, true);
        std::vector<MapBlock> all = blocks;
        all.push_back({9, 9});
        std::vector<uint32_t> allCounts = counts;
        allCounts.push_back(1);
        return compare({{"f__Fv", 1, 9, all}}, allCounts);
    }

    const TempDir _dir;
    std::string _path;
    BuildFacts _facts;
    std::string _totals;
};

TEST_F(CoverageComparisonTest, RedMeansNotRunAndBlackMeansRun)
{
    line(1, 3, true);
    line(2, 0, false);
    line(3, 5, true);
    line(5, 1, true);
    EXPECT_EQ(compareBlocks({{1, 1}, {2, 2}, {3, 5}}, {3, 0, 5}), "");
    EXPECT_EQ(_totals, "functions       1 of 1 agree (100.00%)\n"
                       "lines           5 of 5 agree (100.00%)\n"
                       "names, simple   1 of 1 agree (100.00%)\n"
                       "names, extended 1 of 1 agree (100.00%)\n"
                       "names, full     1 of 1 agree (100.00%)\n"
                       "lines that ran  4, of them red 0\n");
}

TEST_F(CoverageComparisonTest, LineThatRanAndIsRedIsFound)
{
    line(2, 3, true);
    EXPECT_EQ(compareBlocks({{1, 3}}, {0}), "line-ran-red  1\nline-stray  1\ntext-red  1\n");
    EXPECT_NE(_totals.find("lines           1 of 2 agree (50.00%)"), std::string::npos);
    EXPECT_NE(_totals.find("lines that ran  2, of them red 1"), std::string::npos);
}

TEST_F(CoverageComparisonTest, LineThatNeverRanAndIsBlackIsFound)
{
    line(1, 0, false);
    line(2, 0, false);
    EXPECT_EQ(compareBlocks({{1, 2}}, {4}), "line-dead-black  2\n");
}

TEST_F(CoverageComparisonTest, LineWithoutABlockIsFound)
{
    line(4, 0, false);
    line(5, 1, true);
    EXPECT_EQ(compareBlocks({}, {}), "line-missing  2\n");
}

TEST_F(CoverageComparisonTest, OnlyBlocksInOrderHaveAnInside)
{
    for (const uint32_t number : {1, 2, 3, 4}) {
        line(number, 1, true);
    }
    EXPECT_EQ(compareBlocks({{1, 4}}, {1}), "");
    EXPECT_EQ(compareBlocks({{0, 4}}, {1}), "line-missing  4\n");
    EXPECT_EQ(compareBlocks({{4, 1}}, {1}), "line-missing  3\n");
    EXPECT_EQ(compareBlocks({{4, 1}, {1, 4}}, {1, 1}), "");
}

TEST_F(CoverageComparisonTest, LineThatABlockPassesIsAClassOfItsOwn)
{
    line(1, 0, true);
    line(2, 0, true);
    EXPECT_EQ(compareBlocks({{1, 1}, {2, 2}}, {4, 0}), "line-passed  1\nline-passed-red  1\n");
}

TEST_F(CoverageComparisonTest, LinesThatGcovLeavesOutAreClassesOfTheirOwn)
{
    LineFacts& made = line(1, Unlisted, false);
    made._isTouched = false;
    made._isTouchedMade = made._madeRan = true;
    line(2, Unlisted, false);
    line(3, Unlisted, true); // red though a block ran
    EXPECT_EQ(compareBlocks({{1, 1}, {2, 2}, {3, 3}}, {1, 0, 0}),
              "line-ran-red  1\nline-made  1\nline-unlisted  1\n");
}

TEST_F(CoverageComparisonTest, InitialiserThatRanDoesNotMakeALineRun)
{
    line(1, 0, false)._madeRan = true;
    EXPECT_EQ(compareBlocks({{1, 1}}, {0}), "");
}

TEST_F(CoverageComparisonTest, LineBehindTheEndIsAClassOfItsOwn)
{
    line(70, 1, true);
    EXPECT_EQ(compareBlocks({{70, 70}}, {1}), "line-past-end  1\n");
}

TEST_F(CoverageComparisonTest, FileThatTheMapLacksIsFound)
{
    _facts._files["/other.cc"]._lines[3]._isListed = true;
    EXPECT_EQ(compareBlocks({}, {}), "file-missing  1\n");
}

TEST_F(CoverageComparisonTest, SourceThatIsNotThereIsFound)
{
    _path = _dir.path("gone.cc");
    line(1, 1, true);
    EXPECT_EQ(compareBlocks({{1, 1}}, {1}), "source-missing  1\n");
}

TEST_F(CoverageComparisonTest, FunctionWithoutARowAndRowWithoutAFunctionAreFound)
{
    function("f()", 1, 4, 0);
    function("g(int)", 5, 6, 0);
    EXPECT_EQ(
        compare({{"f__Fv", 1, 4, {{1, 1}}}, {"h__Fv", 7, 8, {{7, 7}}}, {"g__Fi", 9, 9, {{9, 9}}}},
                {0, 0, 0}),
        "function-missing  1\nfunction-part  1\nfunction-extra  1\nline-stray  3\n");
}

TEST_F(CoverageComparisonTest, EntriesAndBlocksMustAgree)
{
    function("f()", 1, 2, 3);
    function("g()", 3, 4, 0);
    function("h()", 5, 6, 0);
    line(1, 0, false);
    line(3, 0, false);
    line(5, 0, false);
    line(6, 2, true); // inlined somewhere
    EXPECT_EQ(compare({{"f__Fv", 1, 2, {{1, 1}}},
                       {"g__Fv", 3, 4, {{3, 3}}},
                       {"h__Fv", 5, 6, {{5, 5}, {6, 6}}}},
                      {0, 2, 0, 2}),
              "function-dead  1\nfunction-ran  1\nfunction-inlined  1\nline-dead-black  1\n");
}

TEST_F(CoverageComparisonTest, RowThatShowsALineForAnotherFunctionIsAClassOfItsOwn)
{
    function("f()", 1, 1, 3);
    function("g()", 1, 1, 0);
    line(1, 3, true);
    EXPECT_EQ(compare({{"f__Fv", 1, 1, {{0, 0}}}, {"g__Fv", 1, 1, {{1, 1}, {1, 1}}}}, {3, 0, 3}),
              "function-shared  1\n");
}

TEST_F(CoverageComparisonTest, FunctionsAtOnePlaceAreToldByTheirNames)
{
    function("f(int)", 1, 1, 0);
    function("f(long)", 1, 1, 0);
    line(1, 0, false);
    EXPECT_EQ(compare({{"f__Fl", 1, 1, {{1, 1}}}, {"f__Fi", 1, 1, {{1, 1}}}}, {0, 0}), "");
}

TEST_F(CoverageComparisonTest, NamesAreComparedAtEachLevel)
{
    function("f(char const*)", 1, 1, 0);
    function("g(int)", 2, 2, 0);
    function("h(int)", 3, 3, 0);
    line(1, 0, false);
    line(2, 0, false);
    line(3, 0, false);
    EXPECT_EQ(
        compare({{"f__FPc", 1, 1, {{1, 1}}}, {"g__Fl", 2, 2, {{2, 2}}}, {"k__Fi", 3, 3, {{3, 3}}}},
                {0, 0, 0}),
        "name-simple  1\nname-extended  2\nname-full  3\n");
}

TEST_F(CoverageComparisonTest, NamesThatCannotHaveParametersShowNone)
{
    const char* const names[] = {"a__b(int)", "ns::get_(int)", "a__b::get(int)"};
    for (uint32_t i = 0; i < 3; ++i) {
        function(names[i], i + 1, i + 1, 0);
        line(i + 1, 0, false);
    }
    EXPECT_EQ(
        compare(
            {{"a__b", 1, 1, {{1, 1}}}, {"ns::get_", 2, 2, {{2, 2}}}, {"a__b::get", 3, 3, {{3, 3}}}},
            {0, 0, 0}),
        "");
}

TEST_F(CoverageComparisonTest, NamesThatCanHaveParametersShowThem)
{
    const char* const names[] = {"get(int)", "get<__x>(int)", "set<__x>(int)"};
    for (uint32_t i = 0; i < 3; ++i) {
        function(names[i], i + 1, i + 1, 0);
        line(i + 1, 0, false);
    }
    EXPECT_EQ(compare({{"get", 1, 1, {{1, 1}}},
                       {"get<__x>", 2, 2, {{2, 2}}},
                       {"set<...>__FFi_8set<__x>", 3, 3, {{3, 3}}}},
                      {0, 0, 0}),
              "name-extended  2\nname-full  2\n");
}

TEST_F(CoverageComparisonTest, InstancesShareARowWithPlaceholders)
{
    function("int f<int>(int)", 1, 1, 1);
    function("long f<long>(long)", 1, 1, 0);
    line(1, 1, true);
    EXPECT_EQ(compare({{"f<...>__F4auto", 1, 1, {{1, 1}}}}, {1}), "");
}

TEST_F(CoverageComparisonTest, UnitThatCouldNotBeReadIsFound)
{
    _facts._failures.push_back("a.gcno: gcov gave no lines");
    EXPECT_EQ(compareBlocks({}, {}), "unit-failed  1\n");
}

} // namespace
