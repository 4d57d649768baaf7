#include "tools/formats/functionRuns.h"

#include "zem/Data/ZEMFuncRecord.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Block
{
    uint16_t line;
    uint32_t hits;
};

uint32_t runsOf(const std::vector<Block>& blocks)
{
    const auto records = std::make_unique<ZEMBlkRecord[]>(blocks.size());
    std::vector<uint32_t> lines;
    for (const Block& block : blocks) {
        lines.push_back(block.line << 16 | block.line);
    }
    ZEMFuncRecord function(nullptr);
    function._nBlocks = static_cast<uint32_t>(blocks.size());
    function.setBlocks(records.get(), lines.data());
    for (size_t i = 0; i < blocks.size(); ++i) {
        records[i]._startLine = blocks[i].line;
        records[i]._stopLine = blocks[i].line;
        records[i]._nHits = blocks[i].hits;
    }
    return functionRuns(function);
}

TEST(functionRunsTest, AreThoseOfTheFirstBlockWithLines)
{
    EXPECT_EQ(runsOf({{3, 2}, {4, 90}}), 2u);
    EXPECT_EQ(runsOf({{0, 7}, {3, 2}, {4, 90}}), 2u);
}

TEST(functionRunsTest, AFunctionOfWhichABlockRanRan)
{
    EXPECT_EQ(runsOf({{3, 0}, {4, 5}, {5, 1}}), 5u);
    EXPECT_EQ(runsOf({{3, 0}, {4, 0}}), 0u);
    EXPECT_EQ(runsOf({{0, 4}}), 4u);
    EXPECT_EQ(runsOf({}), 0u);
}

} // namespace
