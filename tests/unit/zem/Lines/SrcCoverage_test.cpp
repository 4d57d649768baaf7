// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcCoverage.h"

#include "tests/support/TempDir.h"
#include "tests/unit/zem/Lines/SourceRecord.h"
#include "zem/Lines/SrcBrowser.h"
#include "zem/Lines/SrcLine.h"

#include <gtest/gtest.h>

#include <vector>

class SrcCoverageTest : public testing::Test
{
protected:
    TempDir _files;

    void SetUp() override { openLines(20); }

    // A source file of `n` lines and the empty one behind its last newline.
    void openLines(size_t n)
    {
        ASSERT_EQ(_browser.open(_files.write("a.c", std::string(n, '\n')).c_str()), 0);
    }

    void addFunction(const std::vector<SourceBlock>& blocks) { _record.addFunction(blocks); }

    void load() { EXPECT_EQ(_coverage.load(_record.file()), 0); }
    void load(const std::vector<SourceBlock>& blocks)
    {
        addFunction(blocks);
        load();
    }

    // Sum and counts of a line counted from 1, as "3: 3/0"; "-" without blocks.
    std::string line(long n) const
    {
        const SrcLine& line = *_browser.line(n - 1);
        if (line._hitMap == nullptr) {
            return "-";
        }
        std::string text = std::to_string(line._hits) + ":";
        for (int i = 0; i < line._nBlocks; ++i) {
            text += (i == 0 ? " " : "/") + std::to_string(line._hitMap[i]);
        }
        return text;
    }

    SourceRecord _record{"a.c"};
    SrcBrowser _browser;
    SrcCoverage _coverage{_browser};
};

TEST_F(SrcCoverageTest, BlockIsShownOnItsFirstLine)
{
    load({{5, 7, 3}});
    EXPECT_EQ(line(4), "-");
    EXPECT_EQ(line(5), "3: 3");
    EXPECT_EQ(line(6), "-");
    EXPECT_EQ(line(7), "-");
}

TEST_F(SrcCoverageTest, BlocksOfUnknownLinesAreSkipped)
{
    load({{0, 7, 3}, {7, 0, 3}, {8, 8, 1}});
    EXPECT_EQ(line(7), "-");
    EXPECT_EQ(line(8), "1: 1");
}

TEST_F(SrcCoverageTest, UnrunBlockMarksTheLinesBehindItsFirst)
{
    load({{10, 12, 0}});
    EXPECT_EQ(line(9), "-");
    EXPECT_EQ(line(10), "0: 0");
    EXPECT_EQ(line(11), "-2: -2");
    EXPECT_EQ(line(12), "-2: -2");
    EXPECT_EQ(line(13), "-");
    EXPECT_TRUE(_browser.line(9)->untested());
    EXPECT_TRUE(_browser.line(10)->untested());
}

TEST_F(SrcCoverageTest, TwoOneLineBlocksShareTheirLine)
{
    load({{5, 5, 3}, {5, 5, 0}});
    EXPECT_EQ(line(5), "3: 3/0");
    EXPECT_FALSE(_browser.line(4)->untested());
}

TEST_F(SrcCoverageTest, BlocksTogetherAreShownOnTheFirstOnesLastLine)
{
    // That line has no count of its own yet, so one of the two is not shown.
    load({{5, 8, 3}, {5, 6, 4}});
    EXPECT_EQ(line(5), "3: 3");
    EXPECT_EQ(line(8), "7: 3");
}

TEST_F(SrcCoverageTest, BlocksTogetherNeverShowMoreCountsThanThereAre)
{
    load({{8, 8, 1}, {8, 8, 1}, {8, 8, 1}, {5, 8, 3}, {5, 6, 4}});
    EXPECT_EQ(line(8), "7: 3/4");
    EXPECT_EQ(_browser.getHitMapSize(7), 2);
}

TEST_F(SrcCoverageTest, BlocksTogetherBehindAnUnrunOneEndTheirLines)
{
    load({{5, 7, 0}, {5, 5, 2}});
    EXPECT_EQ(line(5), "0: 0");
    EXPECT_EQ(line(6), "-2: -2");
    EXPECT_EQ(line(7), "2: 0/2");
}

TEST_F(SrcCoverageTest, OnlyBlocksThatFollowEachOtherAreShownTogether)
{
    load({{5, 5, 3}, {6, 6, 1}, {5, 5, 4}});
    EXPECT_EQ(line(5), "4: 4");
}

TEST_F(SrcCoverageTest, LaterBlocksTakeThePlaceOfTogetherShownOnes)
{
    load({{5, 5, 3}, {5, 5, 1}, {6, 6, 2}, {5, 5, 0}});
    EXPECT_EQ(line(5), "0: 0");
}

TEST_F(SrcCoverageTest, BlocksOfTwoFunctionsAreNotShownTogether)
{
    addFunction({{5, 5, 3}});
    addFunction({{5, 5, 4}});
    load();
    EXPECT_EQ(line(5), "4: 4");
}

TEST_F(SrcCoverageTest, BlockInsideAnEarlierUnrunOneShowsItself)
{
    load({{5, 9, 0}, {7, 7, 6}});
    EXPECT_EQ(line(6), "-2: -2");
    EXPECT_EQ(line(7), "6: 6");
    EXPECT_EQ(line(8), "-2: -2");
}

TEST_F(SrcCoverageTest, UnrunBlockPaintsOverEarlierBlocks)
{
    load({{7, 7, 6}, {5, 9, 0}});
    EXPECT_EQ(line(7), "-2: -2");
}

TEST_F(SrcCoverageTest, LinePaintedShownAndPaintedAgainIsInside)
{
    load({{5, 9, 0}, {7, 7, 6}, {8, 8, 1}, {8, 8, 1}, {4, 9, 0}});
    EXPECT_EQ(line(5), "-2: -2");
    EXPECT_EQ(line(7), "-2: -2");
    EXPECT_EQ(line(8), "-2: -2");
}

TEST_F(SrcCoverageTest, StopBeforeStartPaintsNothing)
{
    load({{9, 5, 0}});
    EXPECT_EQ(line(9), "0: 0");
    EXPECT_EQ(line(5), "-");
    EXPECT_EQ(line(10), "-");
}

TEST_F(SrcCoverageTest, LinesThatTheFileDoesNotHaveAreSkipped)
{
    load({{21, 65535, 0},
          {22, 22, 5},
          {65535, 65535, 1},
          {65535, 65535, 2},
          {20, 30, 1},
          {20, 30, 1}});
    EXPECT_EQ(line(20), "1: 1");
    EXPECT_EQ(line(21), "0: 0");
    EXPECT_EQ(_browser.getHits(21), -1);
}

TEST_F(SrcCoverageTest, EveryLineThatABlockCanNameIsPainted)
{
    openLines(70000);
    load({{1, 65535, 0}});
    EXPECT_EQ(line(1), "0: 0");
    for (long n = 2; n <= 65535; ++n) {
        ASSERT_EQ(_browser.getHits(n - 1), SrcLine::InsideUnrun) << n;
    }
    EXPECT_EQ(line(65536), "-");
}

TEST_F(SrcCoverageTest, ManyLargeUnrunBlocksArePaintedOnce)
{
    openLines(65535);
    load(std::vector<SourceBlock>(20000, SourceBlock{1, 65535, 0}));
    EXPECT_EQ(line(2), "-2: -2");
    addFunction({});
    std::vector<SourceBlock> blocks;
    for (int i = 0; i < 60000; ++i) {
        blocks.push_back({i + 1, 65535, 0});
    }
    load(blocks);
    EXPECT_EQ(line(60000), "0: 0");
    EXPECT_EQ(line(60001), "-2: -2");
}

TEST_F(SrcCoverageTest, CountsAreClampedToTheLargestOfTheField)
{
    load({{5, 5, 4294967294u}, {6, 6, 2147483647u}, {6, 6, 2147483647u}});
    EXPECT_EQ(line(5), "2147483647: 2147483647");
    EXPECT_FALSE(_browser.line(4)->untested());
    EXPECT_EQ(line(6), "2147483647: 2147483647/2147483647");
    EXPECT_EQ(_coverage.hitDetailWidth(), 24);
}

TEST_F(SrcCoverageTest, WidthsAreAtLeastFour)
{
    EXPECT_EQ(_coverage.hitDetailWidth(), 4);
    EXPECT_EQ(_coverage.maxBlocksOnLine(), 4);
    load({{5, 5, 999}, {6, 6, 1}});
    EXPECT_EQ(_coverage.hitDetailWidth(), 4);
    EXPECT_EQ(_coverage.maxBlocksOnLine(), 4);
}

TEST_F(SrcCoverageTest, WidthOfASingleCountIsItsDigits)
{
    load({{5, 5, 123456}});
    EXPECT_EQ(_coverage.hitDetailWidth(), 6);
}

TEST_F(SrcCoverageTest, WidthOfSeveralCountsAddsTwoForEach)
{
    load({{5, 5, 10}, {5, 5, 0}, {5, 5, 100}});
    EXPECT_EQ(_coverage.hitDetailWidth(), 4 + 3 + 5);
}

TEST_F(SrcCoverageTest, MostBlocksOnALineAreCounted)
{
    load({{5, 5, 1}, {5, 5, 1}, {5, 5, 1}, {5, 5, 1}});
    EXPECT_EQ(_coverage.maxBlocksOnLine(), 4);
    load({{6, 6, 1}, {6, 6, 1}, {6, 6, 1}, {6, 6, 1}, {6, 6, 1}});
    EXPECT_EQ(_coverage.maxBlocksOnLine(), 5);
}

TEST_F(SrcCoverageTest, FunctionWithoutBlocksShowsNothing)
{
    load({});
    EXPECT_EQ(line(1), "-");
}
