// SPDX-License-Identifier: MIT
#include "tools/common/BlockList.h"

#include "tests/unit/tools/common/CovSample.h"
#include "tools/common/countRun.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using Blocks = std::vector<CovSampleBlock>;

class BlockListTest : public ::testing::Test
{
protected:
    void add(uint32_t start, uint32_t end, const Blocks& blocks)
    {
        _file._functions.push_back(covFunction(_counts, "f", start, end, blocks));
    }

    // The blocks of each function as "start-stop:hits", a function a line.
    std::string arrange()
    {
        CoverageModel model;
        model._files = {_file};
        arrangeBlocks(model._files[0], _losses);
        CoverageCounts counts;
        countRun(model, _counts, counts, _losses, 1);
        std::string text;
        size_t next = 0;
        for (const CovFunction& function : model._files[0]._functions) {
            text += text.empty() ? "" : "\n";
            std::string line;
            for (const CovBlock& block : function._blocks) {
                line += (line.empty() ? "" : " ") + std::to_string(block._startLine) + "-" +
                        std::to_string(block._stopLine) + ":" +
                        std::to_string(counts._files[0][next++]);
            }
            text += line;
        }
        EXPECT_EQ(_losses._linesShownRed, 0u);
        EXPECT_EQ(_losses._linesShownBlack, 0u);
        return text;
    }

    std::string arrange(const Blocks& blocks)
    {
        add(1, 99, blocks);
        return arrange();
    }

    CovFile _file;
    std::vector<int64_t> _counts; // of a run
    ImportLosses _losses;
};

TEST_F(BlockListTest, BlockOfItsOwnLinesIsOneStretch)
{
    EXPECT_EQ(arrange({{{7, 8, 11}, 5}, {{1, 3}, 0}}), "1-3:0 7-11:5");
}

TEST_F(BlockListTest, BlockThatIsInterruptedHasAStretchOnEachSide)
{
    EXPECT_EQ(arrange({{{5, 6, 9}, 2}, {{7}, 0}}), "5-6:2 7-7:0 9-9:2");
}

TEST_F(BlockListTest, LineOfSeveralBlocksHasAOneLineBlockOfEach)
{
    // if (e > 5) return 1; behind a line of its block
    EXPECT_EQ(arrange({{{4, 5}, 3}, {{5}, 0}, {{5, 6}, 3}}), "4-4:3 5-5:3 5-5:0 5-5:3 6-6:3");
}

TEST_F(BlockListTest, StretchDoesNotGoOnBehindALineOfSeveralBlocks)
{
    EXPECT_EQ(arrange({{{1, 2, 3}, 0}, {{2}, 1}}), "1-1:0 2-2:0 2-2:1 3-3:0");
}

TEST_F(BlockListTest, LineOfAnotherFunctionEndsAStretch)
{
    add(1, 9, {{{1, 2, 8, 9}, 0}});
    add(4, 5, {{{4, 5}, 7}});
    EXPECT_EQ(arrange(), "1-2:0 8-9:0\n4-5:7");
}

TEST_F(BlockListTest, FunctionAroundShowsALineOfLambdas)
{
    add(1, 20, {{{1}, 3}, {{20}, 3}});
    add(4, 9, {{{4}, 3}, {{9}, 3}}); // the innermost around
    add(6, 6, {{{6}, 2}});
    add(6, 6, {{{6}, 0}, {{6}, 0}});
    EXPECT_EQ(arrange(), "1-1:3 20-20:3\n4-4:3 6-6:2 6-6:0 9-9:3\n0-0:2\n0-0:0 0-0:0");
}

TEST_F(BlockListTest, WhatIsNotAroundShowsNoLineOfOthers)
{
    add(1, 9, {{{1}, 3}});
    _file._functions.back()._isPart = true; // of a function elsewhere
    add(2, 4, {{{2}, 1}});
    add(4, 6, {{{6}, 1}});
    add(4, 5, {{{4}, 2}});
    add(4, 5, {{{4}, 0}});
    add(9, 8, {{{9}, 1}});
    EXPECT_EQ(arrange(), "1-1:3\n2-2:1\n4-4:2 4-4:0 6-6:1\n0-0:2\n0-0:0\n9-9:1");
}

TEST_F(BlockListTest, PartOfAFunctionElsewhereShowsNoLineOfLambdasInIt)
{
    add(1, 9, {{{1}, 3}});
    _file._functions.back()._isPart = true;
    add(4, 5, {{{4}, 2}});
    add(4, 5, {{{4}, 1}});
    EXPECT_EQ(arrange(), "1-1:3\n4-4:2 4-4:1\n0-0:1");
}

TEST_F(BlockListTest, WidestFunctionShowsALineOfSeveral)
{
    add(5, 5, {{{5}, 0}, {{5}, 4}});
    add(4, 6, {{{4, 5, 6}, 3}});
    add(5, 5, {{{5}, 2}});
    EXPECT_EQ(arrange(), "0-0:0 0-0:4\n4-4:3 5-5:3 5-5:6 6-6:3\n0-0:2");
}

// A lambda of several blocks ran as often as it was called, not as often as all of them.
TEST_F(BlockListTest, OthersRanALineAsOftenAsTheirBlocksThatRanMost)
{
    add(4, 6, {{{4, 5, 6}, 6}});
    add(5, 5, {{{5}, 18}, {{5}, 30}, {{5}, 12}});
    add(5, 5, {{{5}, 2}, {{5}, 1}});
    EXPECT_EQ(arrange(), "4-4:6 5-5:6 5-5:32 6-6:6\n0-0:18 0-0:30 0-0:12\n0-0:2 0-0:1");
}

TEST_F(BlockListTest, FirstOfEquallyWideFunctionsShowsTheLine)
{
    add(5, 6, {{{5, 6}, 0}});
    add(5, 6, {{{5, 6}, 1}});
    EXPECT_EQ(arrange(), "5-5:0 5-5:1 6-6:0 6-6:1\n0-0:1");
}

TEST_F(BlockListTest, BlockHasOneBlockWithoutPlaceForAllLinesShownElsewhere)
{
    add(1, 9, {{{1, 2, 3}, 1}});
    add(2, 4, {{{2, 3, 4}, 2}});
    EXPECT_EQ(arrange(), "1-1:1 2-2:1 2-2:2 3-3:1 3-3:2\n0-0:2 4-4:2");
    EXPECT_TRUE(_losses._blocksPastLastLine.empty());
}

TEST_F(BlockListTest, LastLineWithAPlaceIsSharedAsAnyOther)
{
    add(1, 99, {{{98}, 1}});
    add(1, 99, {{{98}, 2}});
    const std::string any = arrange();
    for (CovFunction& function : _file._functions) {
        function._lines[0]._line = 65535;
    }
    std::string expected = any;
    for (size_t at = expected.find("98"); at != std::string::npos; at = expected.find("98")) {
        expected.replace(at, 2, "65535");
    }
    EXPECT_EQ(arrange(), expected);
}

TEST_F(BlockListTest, LinesPast65535AreKeptWithoutAPlaceAndCounted)
{
    _file._path = "/s/a.c";
    EXPECT_EQ(arrange({{{65534, 65535, 65536, 70000}, 1}, {{65536}, 2}, {{70000}, 0}}),
              "0-0:1 0-0:2 0-0:0 65534-65535:1");
    EXPECT_EQ(_losses._blocksPastLastLine["/s/a.c"], 3u);
}

TEST_F(BlockListTest, FileWithinTheBoundIsNotNamed)
{
    arrange({{{65535}, 1}});
    EXPECT_TRUE(_losses._blocksPastLastLine.empty());
}

TEST_F(BlockListTest, CountsAreBoundedBeforeTheyAreAddedUp)
{
    add(1, 9, {{{1}, -5}, {{2}, INT64_MAX}});
    add(2, 2, {{{1}, INT64_MAX}, {{1}, INT64_MAX}});
    EXPECT_EQ(arrange(), "1-1:0 1-1:2147483647 2-2:2147483647\n0-0:2147483647 0-0:2147483647");
    EXPECT_EQ(_losses._negativeCounts, 1u);
    EXPECT_EQ(_losses._clampedCounts, 3u);
}

TEST_F(BlockListTest, EmptyFileStaysEmpty)
{
    EXPECT_EQ(arrange({}), "");
}

// A file of random functions, the same for the same seed.
CovFile randomFile(unsigned int seed, std::vector<int64_t>& counts)
{
    std::mt19937 lines(seed);
    CovFile file;
    for (uint32_t f = 0; f < 6; ++f) {
        const uint32_t start = 1 + lines() % 20;
        Blocks blocks;
        for (uint32_t b = 0; b < 1 + lines() % 8; ++b) {
            std::vector<uint32_t> touched;
            for (uint32_t line = start; line < start + 15; ++line) {
                if (lines() % 4 == 0) {
                    touched.push_back(line);
                }
            }
            blocks.push_back({touched, 0});
        }
        file._functions.push_back(covFunction(counts, "f", start, start + lines() % 15, blocks));
    }
    return file;
}

TEST_F(BlockListTest, EveryLineIsRedExactlyWhenNoBlockOnItRan)
{
    for (unsigned int seed = 0; seed < 250; ++seed) {
        _counts.clear();
        _file = randomFile(seed, _counts);
        std::mt19937 random(seed + 1000);
        for (int run = 0; run < 2; ++run) {
            for (int64_t& count : _counts) {
                count = static_cast<int64_t>(random() % 2);
            }
            arrange();
            ASSERT_FALSE(HasFailure()) << seed;
        }
    }
}

TEST_F(BlockListTest, ArrangingAgainGivesTheSame)
{
    _file = randomFile(3, _counts);
    const std::string once = arrange();
    arrangeBlocks(_file, _losses);
    EXPECT_EQ(arrange(), once);
}

} // namespace
