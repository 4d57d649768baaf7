// SPDX-License-Identifier: MIT
#include "tools/common/BlockList.h"

#include <gtest/gtest.h>

namespace {

struct Lines
{
    uint32_t start;
    uint32_t stop;
};

class BlockListTest : public ::testing::Test
{
protected:
    // The blocks as "start-stop:hits", hits being the place in the list given, from 1.
    std::string arrange(const std::vector<Lines>& lines)
    {
        std::vector<CovBlock> blocks;
        for (const Lines& each : lines) {
            blocks.push_back({each.start, each.stop, static_cast<int64_t>(blocks.size() + 1)});
        }
        arrangeBlocks(blocks, _losses);
        std::string text;
        for (const CovBlock& block : blocks) {
            text += (text.empty() ? "" : " ") + std::to_string(block._startLine) + "-" +
                    std::to_string(block._stopLine) + ":" + std::to_string(block._hits);
        }
        return text;
    }

    ImportLosses _losses;
};

TEST_F(BlockListTest, SortsByStartThenStop)
{
    EXPECT_EQ(arrange({{7, 7}, {3, 4}, {1, 1}, {7, 7}}), "1-1:3 3-4:2 7-7:1 7-7:4");
    EXPECT_EQ(_losses._adjustedBlocks, 0u);
}

TEST_F(BlockListTest, BodyThatSharesItsConditionsLineStartsOneLineLater)
{
    EXPECT_EQ(arrange({{3, 6}, {3, 3}}), "3-3:2 4-6:1");
    EXPECT_EQ(_losses._adjustedBlocks, 1u);
}

TEST_F(BlockListTest, ShortestOfTheLongBlocksKeepsTheLine)
{
    EXPECT_EQ(arrange({{3, 9}, {3, 5}}), "3-5:2 4-9:1");
    EXPECT_EQ(_losses._adjustedBlocks, 1u);
}

TEST_F(BlockListTest, MovedBlockGivesWayAgain)
{
    EXPECT_EQ(arrange({{3, 6}, {3, 3}, {4, 4}}), "3-3:2 4-4:3 5-6:1");
    EXPECT_EQ(_losses._adjustedBlocks, 1u);
}

TEST_F(BlockListTest, MovedBlockStaysAtItsOwnStopLine)
{
    EXPECT_EQ(arrange({{3, 4}, {3, 3}, {4, 4}}), "3-3:2 4-4:3 4-4:1");
}

TEST_F(BlockListTest, EqualLongBlocksPartInOrder)
{
    EXPECT_EQ(arrange({{3, 6}, {3, 6}, {3, 6}}), "3-6:1 4-6:2 5-6:3");
}

TEST_F(BlockListTest, NoLongBlockSharesItsStartLineAfterwards)
{
    std::vector<CovBlock> blocks;
    for (uint32_t i = 0; i < 400; ++i) {
        const uint32_t start = 1 + i * 7 % 31;
        blocks.push_back({start, start + i * 13 % 17, i});
    }
    arrangeBlocks(blocks, _losses);
    ASSERT_EQ(blocks.size(), 400u);
    for (size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_LE(blocks[i]._startLine, blocks[i]._stopLine);
        if (i > 0) {
            EXPECT_LE(blocks[i - 1]._startLine, blocks[i]._startLine);
            if (blocks[i - 1]._startLine == blocks[i]._startLine) {
                EXPECT_EQ(blocks[i - 1]._stopLine, blocks[i]._startLine);
                EXPECT_EQ(blocks[i]._stopLine, blocks[i]._startLine);
            }
        }
    }
}

TEST_F(BlockListTest, LinesPast65535AreRefusedAndCounted)
{
    EXPECT_EQ(arrange({{65535, 65535}, {65536, 65536}, {65530, 65536}}), "65535-65535:1");
    EXPECT_EQ(_losses._blocksPastLastLine, 2u);
}

TEST_F(BlockListTest, EmptyListStaysEmpty)
{
    EXPECT_EQ(arrange({}), "");
}

TEST_F(BlockListTest, ManyBlocksOverOneRangeAreArrangedAtOnce)
{
    std::vector<CovBlock> blocks(200000, CovBlock{1, 65535, 0});
    arrangeBlocks(blocks, _losses);
    EXPECT_EQ(blocks.size(), 200000u);
    EXPECT_EQ(blocks.back()._startLine, 65535u);
}

} // namespace
