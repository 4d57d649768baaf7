#include "tools/formats/LineCounts.h"

#include "zem/Data/ZEMBlkRecord.h"
#include "zem/Lines/SrcCoverage.h"
#include "zem/Lines/SrcLine.h"
#include "zem/Lines/SrcLineTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace {

struct Block
{
    uint16_t start;
    uint16_t stop;
    uint32_t hits;
};

std::unique_ptr<ZEMBlkRecord[]> records(const std::vector<Block>& blocks)
{
    auto result = std::make_unique<ZEMBlkRecord[]>(blocks.size());
    for (size_t i = 0; i < blocks.size(); ++i) {
        result[i]._startLine = blocks[i].start;
        result[i]._stopLine = blocks[i].stop;
        result[i]._nHits = blocks[i].hits;
    }
    return result;
}

using Lines = std::map<uint32_t, uint32_t>;

Lines lines(const LineCounts& counts)
{
    Lines result;
    uint32_t last = 0;
    for (const LineCounts::Line& line : counts.lines()) {
        EXPECT_GT(line.number, last);
        last = line.number;
        result[line.number] = line.hits;
    }
    return result;
}

Lines countedAs(const std::vector<Block>& blocks)
{
    LineCounts counts;
    counts.add(records(blocks).get(), blocks.size());
    counts.finish();
    const Lines result = lines(counts);
    EXPECT_EQ(counts.found(), static_cast<int64_t>(result.size()));
    EXPECT_EQ(counts.run(), std::count_if(result.begin(), result.end(),
                                          [](const auto& line) { return line.second != 0; }));
    return result;
}

TEST(LineCountsTest, EachLineOfABlockHasItsCount)
{
    EXPECT_EQ(countedAs({{3, 5, 4}, {8, 8, 0}}), (Lines{{3, 4}, {4, 4}, {5, 4}, {8, 0}}));
    EXPECT_EQ(countedAs({}), Lines());
}

TEST(LineCountsTest, TheBlockThatRanMostCounts)
{
    EXPECT_EQ(countedAs({{5, 5, 2}, {5, 5, 7}, {5, 5, 0}}), (Lines{{5, 7}}));
    EXPECT_EQ(countedAs({{1, 9, 1}, {3, 4, 6}, {4, 7, 0}, {6, 6, 2}}),
              (Lines{{1, 1}, {2, 1}, {3, 6}, {4, 6}, {5, 1}, {6, 2}, {7, 1}, {8, 1}, {9, 1}}));
}

TEST(LineCountsTest, UnknownLinesAreNone)
{
    EXPECT_EQ(countedAs({{0, 5, 3}, {5, 0, 3}, {0, 0, 1}}), Lines());
}

TEST(LineCountsTest, ABlockThatEndsBeforeItBeginsIsWhereItBegins)
{
    EXPECT_EQ(countedAs({{9, 2, 3}}), (Lines{{9, 3}}));
}

TEST(LineCountsTest, TheLargestNumbersFit)
{
    EXPECT_EQ(countedAs({{65535, 65535, UINT32_MAX}}), (Lines{{65535, UINT32_MAX}}));
    EXPECT_EQ(countedAs({{1, 65535, 1}}).size(), 65535u);
}

TEST(LineCountsTest, TheOrderOfBlocksDoesNotCount)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<Block> blocks(random() % 30);
        Lines expected;
        for (Block& block : blocks) {
            block.start = static_cast<uint16_t>(1 + random() % 40);
            block.stop = static_cast<uint16_t>(block.start + random() % 12);
            block.hits = random() % 5;
            for (uint32_t line = block.start; line <= block.stop; ++line) {
                uint32_t& hits = expected[line];
                hits = std::max(hits, block.hits);
            }
        }
        ASSERT_EQ(countedAs(blocks), expected);
    }
}

TEST(LineCountsTest, ForgetsWhatWasCleared)
{
    LineCounts counts;
    counts.add(records({{1, 3, 1}}).get(), 1);
    counts.finish();
    counts.clear();
    counts.add(records({{7, 7, 0}}).get(), 1);
    counts.finish();
    EXPECT_EQ(lines(counts), (Lines{{7, 0}}));
    EXPECT_EQ(counts.run(), 0);
}

// A million blocks over all lines end at once only when no line is painted for each of them.
TEST(LineCountsTest, ManyLargeBlocksAreNoMoreWorkThanSmallOnes)
{
    constexpr size_t Many = 1000000;
    auto blocks = std::make_unique<ZEMBlkRecord[]>(Many);
    for (size_t i = 0; i < Many; ++i) {
        blocks[i]._startLine = 1;
        blocks[i]._stopLine = 65535;
        blocks[i]._nHits = static_cast<uint32_t>(i % 1000);
    }
    LineCounts counts;
    counts.add(blocks.get(), Many);
    counts.finish();
    EXPECT_EQ(counts.found(), 65535);
    EXPECT_EQ(counts.lines().back().hits, 999u);
}

class FewLines : public SrcLineTable
{
public:
    SrcLine* line(long line) override
    {
        return line >= 0 && line < nLines() ? &_lines[line] : nullptr;
    }
    long nLines() const override { return 60; }

private:
    SrcLine _lines[60];
};

// Blocks as importers make them: no block reaches over a line of another one.
TEST(LineCountsTest, ALineRanWhenTheSourceViewSaysSo)
{
    std::mt19937 random(11);
    for (int round = 0; round < 100; ++round) {
        std::vector<Block> blocks;
        uint16_t line = 1;
        while (line < 50) {
            const auto stop = static_cast<uint16_t>(line + random() % 3);
            const unsigned together = stop == line ? 1 + random() % 3 : 1;
            for (unsigned i = 0; i < together; ++i) {
                blocks.push_back({line, stop, static_cast<uint32_t>(random() % 2)});
            }
            line = static_cast<uint16_t>(stop + 1 + random() % 2);
        }
        FewLines view;
        SrcCoverage(view).loadBlocks(records(blocks).get(), static_cast<uint32_t>(blocks.size()));
        const Lines counted = countedAs(blocks);
        for (long i = 0; i < view.nLines(); ++i) {
            const auto found = counted.find(static_cast<uint32_t>(i) + 1);
            const bool isUnrun = found != counted.end() && found->second == 0;
            EXPECT_EQ(view.line(i)->untested(), isUnrun) << "line " << i + 1;
        }
    }
}

} // namespace
