// SPDX-License-Identifier: MIT
#include "tools/import/LineOwners.h"

#include <gtest/gtest.h>
#include <random>

namespace {

struct Range
{
    uint32_t first;
    uint32_t last;
};

class LineOwnersTest : public ::testing::Test
{
protected:
    // The owners of the lines 1 to `last`, a character each: the number of the range, or '-'.
    std::string owners(const std::vector<Range>& ranges, uint32_t last)
    {
        LineOwners owners;
        uint32_t number = 0;
        for (const Range& range : ranges) {
            owners.add(range.first, range.last, number++);
        }
        owners.build();
        std::string text;
        for (uint32_t line = 1; line <= last; ++line) {
            const uint32_t owner = owners.ownerOf(line);
            text += owner == LineOwners::Nobody ? '-' : static_cast<char>('0' + owner);
        }
        return text;
    }
};

TEST_F(LineOwnersTest, LinesOutsideBelongToNobody)
{
    EXPECT_EQ(owners({}, 2), "--");
    EXPECT_EQ(owners({{2, 3}, {6, 6}}, 7), "-00--1-");
}

TEST_F(LineOwnersTest, InnermostRangeOwnsALine)
{
    EXPECT_EQ(owners({{1, 9}, {3, 7}, {5, 5}}, 10), "001121100-");
    EXPECT_EQ(owners({{5, 5}, {3, 7}, {1, 9}}, 10), "221101122-");
}

TEST_F(LineOwnersTest, OfTwoThatBeginTogetherTheShorterIsInside)
{
    EXPECT_EQ(owners({{1, 3}, {1, 6}}, 7), "000111-");
}

TEST_F(LineOwnersTest, OfTwoEqualOnesTheFirstOwns)
{
    EXPECT_EQ(owners({{1, 3}, {1, 3}}, 4), "000-");
}

TEST_F(LineOwnersTest, RangesThatOverlapBelongToTheLater)
{
    EXPECT_EQ(owners({{1, 4}, {3, 6}}, 7), "001111-");
}

TEST_F(LineOwnersTest, RangeThatEndsBeforeItStartsIsNone)
{
    EXPECT_EQ(owners({{4, 2}}, 5), "-----");
}

TEST_F(LineOwnersTest, RangeMayEndAtTheGreatestNumber)
{
    LineOwners owners;
    owners.add(1, UINT32_MAX, 7);
    owners.add(UINT32_MAX, UINT32_MAX, 8);
    owners.build();
    EXPECT_EQ(owners.ownerOf(UINT32_MAX - 1), 7u);
    EXPECT_EQ(owners.ownerOf(UINT32_MAX), 8u);
    EXPECT_EQ(owners.ownerOf(0), LineOwners::Nobody);
}

TEST_F(LineOwnersTest, AgreesWithALookAtEveryRange)
{
    std::mt19937 random(1);
    for (int turn = 0; turn < 300; ++turn) {
        std::vector<Range> ranges;
        for (uint32_t i = 0; i < 1 + random() % 9; ++i) {
            const auto first = static_cast<uint32_t>(1 + random() % 30);
            ranges.push_back({first, static_cast<uint32_t>(first + random() % 12)});
        }
        std::string expected;
        for (uint32_t line = 1; line <= 45; ++line) {
            size_t best = ranges.size();
            for (size_t i = 0; i < ranges.size(); ++i) {
                const bool isBetter =
                    best == ranges.size() || ranges[i].first > ranges[best].first ||
                    (ranges[i].first == ranges[best].first && ranges[i].last < ranges[best].last);
                if (ranges[i].first <= line && line <= ranges[i].last && isBetter) {
                    best = i;
                }
            }
            expected += best == ranges.size() ? '-' : static_cast<char>('0' + best);
        }
        ASSERT_EQ(owners(ranges, 45), expected) << turn;
    }
}

} // namespace
