// SPDX-License-Identifier: MIT
#include "tools/common/checkView.h"

#include "tests/unit/tools/common/CovSample.h"

#include <gtest/gtest.h>

namespace {

class CheckViewTest : public ::testing::Test
{
protected:
    // A function whose blocks touch some lines and are stored in another way.
    void add(const std::vector<CovSampleBlock>& touched, const std::vector<CovSampleRange>& stored)
    {
        std::vector<int64_t> counts;
        _file._functions.push_back(covFunction(counts, "f", 1, 9, touched));
        for (const CovSampleRange& block : stored) {
            _file._functions.back()._blocks.push_back(
                {static_cast<uint16_t>(block.start), static_cast<uint16_t>(block.stop), 0});
            _counts.push_back(static_cast<uint32_t>(block.hits));
        }
        _values.insert(_values.end(), counts.begin(), counts.end());
    }

    void check(uint64_t red, uint64_t black)
    {
        checkView(_file, _values, _counts, _losses);
        EXPECT_EQ(_losses._linesShownRed, red);
        EXPECT_EQ(_losses._linesShownBlack, black);
    }

    CovFile _file;
    std::vector<uint32_t> _values; // of the basic blocks
    std::vector<uint32_t> _counts; // of the stored blocks
    ImportLosses _losses;
};

TEST_F(CheckViewTest, WhatIsDrawnRightlyIsNotCounted)
{
    add({{{1, 2}, 0}, {{3}, 4}}, {{1, 2, 0}, {3, 3, 4}});
    check(0, 0);
}

TEST_F(CheckViewTest, DeadBlockOverLinesThatRanIsCounted)
{
    add({{{1, 5}, 0}, {{3}, 4}, {{4}, 1}}, {{3, 3, 4}, {4, 4, 1}, {1, 5, 0}});
    check(2, 0);
}

TEST_F(CheckViewTest, LaterFunctionReplacesTheMarksOfAnEarlierOne)
{
    add({{{3}, 4}}, {{3, 3, 4}});
    add({{{3}, 0}}, {{3, 3, 0}});
    check(1, 0);
}

TEST_F(CheckViewTest, EachFunctionHasItsOwnCounts)
{
    add({{{1}, 0}, {{2}, 4}}, {{1, 1, 0}, {2, 2, 4}});
    add({{{11}, 3}, {{12}, 0}}, {{11, 11, 3}, {12, 12, 0}});
    check(0, 0);
}

TEST_F(CheckViewTest, DeadLineThatNobodyMarksIsCounted)
{
    add({{{3, 7}, 0}}, {{3, 3, 0}});
    check(0, 1);
}

TEST_F(CheckViewTest, LinesThatNoBlockCanNameAreNotAskedFor)
{
    add({{{65536, 4000000000}, 0}}, {{0, 0, 0}});
    check(0, 0);
}

// Blocks on one line are drawn together, with their sum.
TEST_F(CheckViewTest, LineOfSeveralBlocksGoesByTheirSum)
{
    add({{{3}, 0}, {{3}, 2}, {{5}, 0}, {{5}, 0}}, {{3, 3, 0}, {3, 3, 2}, {5, 5, 0}, {5, 5, 0}});
    add({{{7}, 0}, {{9}, 3}}, {{7, 7, 4}, {7, 7, 0}, {9, 9, 0}, {9, 9, 0}});
    check(1, 1);
}

// The first line shows the count; behind it the view marks what never ran, and nothing else.
TEST_F(CheckViewTest, LinesInsideABlockAreMarkedWhenItNeverRan)
{
    add({{{1, 2, 4}, 0}, {{6, 7}, 1}}, {{1, 4, 0}, {6, 7, 1}});
    add({{{11, 12}, 1}, {{15, 16}, 0}}, {{11, 12, 0}, {15, 16, 1}});
    check(2, 2);
}

// Of blocks in another order, or past each other's lines, the viewer itself is asked: that makes no
// difference to lines that are apart.
TEST_F(CheckViewTest, ViewerAgreesOnLinesThatAreApart)
{
    add({{{1, 2, 4}, 0}, {{6, 7}, 1}, {{8}, 0}, {{8}, 1}},
        {{1, 4, 0}, {6, 7, 0}, {8, 8, 0}, {8, 8, 0}});
    add({{{11, 12}, 1}, {{15, 16}, 0}}, {{11, 12, 0}, {15, 16, 1}});
    check(5, 2);
    _losses = ImportLosses();
    add({{{20}, 0}, {{22}, 0}}, {{20, 22, 0}, {22, 22, 0}});
    check(5, 2);
}

TEST_F(CheckViewTest, FileWithoutFunctionsIsRight)
{
    check(0, 0);
}

} // namespace
