// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcPrefix.h"

#include "zem/Lines/SrcLine.h"
#include "zem/Rows/RptInfo.h"

#include <gtest/gtest.h>

#include <string>

class SrcPrefixTest : public testing::Test
{
protected:
    void show(bool numbers, bool counts, bool marks)
    {
        _info._showLineNumbers = numbers;
        _info._showHitCounts = counts;
        _info._markUncovered = marks;
    }
    SrcPrefix columns(int hitDetailWidth = 4, int maxBlocksOnLine = 4) const
    {
        return SrcPrefix(_info, hitDetailWidth, maxBlocksOnLine);
    }
    static std::string header(const SrcPrefix& prefix, int size = 100)
    {
        char text[200];
        return std::string(text, static_cast<size_t>(prefix.header("dir/a.c", text, size)));
    }
    std::string prefix(const SrcPrefix& prefix, long n = 4, int size = 100) const
    {
        char text[200];
        return std::string(text, static_cast<size_t>(prefix.prefix(n, &_line, text, size)));
    }

    RptInfo _info;
    SrcLine _line;
};

TEST_F(SrcPrefixTest, LineNumberColumnIsNineWide)
{
    show(true, false, false);
    EXPECT_EQ(columns().width(), 9);
    EXPECT_EQ(columns().textColumn(), 10);
    EXPECT_EQ(columns().numberSeparator(), 8);
    EXPECT_EQ(columns().blockSeparator(), -1);
}

TEST_F(SrcPrefixTest, CountColumnIsTheWidestCountAndThree)
{
    show(true, true, true);
    EXPECT_EQ(columns(6, 11).width(), 9 + 9);
    EXPECT_EQ(columns(6, 11).numberSeparator(), 8);
    EXPECT_EQ(columns(6, 11).blockSeparator(), 8 + 9);
}

TEST_F(SrcPrefixTest, MarkColumnIsTheMostBlocksAndThree)
{
    show(true, false, true);
    EXPECT_EQ(columns(11, 5).width(), 9 + 8);
    EXPECT_EQ(columns(11, 5).blockSeparator(), 8 + 8);
    EXPECT_EQ(columns(11, 5).textColumn(), 18);
}

TEST_F(SrcPrefixTest, WithoutLineNumbersTheOnlySeparatorEndsTheColumn)
{
    show(false, false, true);
    EXPECT_EQ(columns().width(), 7);
    EXPECT_EQ(columns().numberSeparator(), -1);
    EXPECT_EQ(columns().blockSeparator(), 6);
}

TEST_F(SrcPrefixTest, WithoutColumnsTheTextStartsInTheSecondColumn)
{
    show(false, false, false);
    EXPECT_EQ(columns().width(), 0);
    EXPECT_EQ(columns().textColumn(), 1);
    EXPECT_EQ(header(columns()), " dir/a.c");
    _line.showBlock(0);
    EXPECT_EQ(prefix(columns()), "");
}

TEST_F(SrcPrefixTest, HeaderCentresHitsAndEndsInTheFileName)
{
    show(true, false, true);
    EXPECT_EQ(header(columns()), " Line #    Hits  dir/a.c");
    show(true, true, true);
    EXPECT_EQ(header(columns(12)), " Line #        Hits      dir/a.c");
    show(false, true, true);
    EXPECT_EQ(header(columns()), "  Hits  dir/a.c");
    show(true, false, false);
    EXPECT_EQ(header(columns()), " Line #   dir/a.c");
}

TEST_F(SrcPrefixTest, HeaderIsCutToTheRoomThatThereIs)
{
    show(true, false, true);
    EXPECT_EQ(header(columns(), 13), " Line #    Hi");
    EXPECT_EQ(header(columns(), 0), "");
}

TEST_F(SrcPrefixTest, LineNumberIsRightAlignedInSevenAndCountsFromOne)
{
    show(true, false, false);
    EXPECT_EQ(prefix(columns(), 0), "      1  ");
    EXPECT_EQ(prefix(columns(), 65534), "  65535  ");
    EXPECT_EQ(prefix(columns(), 7999999), "8000000  ");
}

TEST_F(SrcPrefixTest, CountsAreSeparatedByASlash)
{
    show(true, true, true);
    _line.showBlocks(new int32_t[2]{3, 0}, 2, 3);
    EXPECT_EQ(prefix(columns()), "      5   3/0");
    _line.showBlock(17);
    EXPECT_EQ(prefix(columns()), "      5   17");
}

TEST_F(SrcPrefixTest, MarksAreOneCharacterForEachBlock)
{
    show(true, false, true);
    _line.showBlocks(new int32_t[2]{3, 0}, 2, 3);
    EXPECT_EQ(prefix(columns()), "      5   .! ");
    _line.showBlock(0);
    EXPECT_EQ(prefix(columns()), "      5   ! ");
}

TEST_F(SrcPrefixTest, LineInsideAnUnrunBlockHasTheMarkOfARunOne)
{
    show(true, false, true);
    _line.showBlock(SrcLine::InsideUnrun);
    EXPECT_EQ(prefix(columns()), "      5   . ");
}

TEST_F(SrcPrefixTest, LineInsideAnUnrunBlockHasItsValueAsCount)
{
    show(true, true, true);
    _line.showBlock(SrcLine::InsideUnrun);
    EXPECT_EQ(prefix(columns()), "      5   -2");
}

TEST_F(SrcPrefixTest, LineWithoutBlocksHasOnlyItsNumber)
{
    show(true, false, true);
    EXPECT_EQ(prefix(columns()), "      5  ");
    show(true, true, true);
    EXPECT_EQ(prefix(columns()), "      5  ");
}

TEST_F(SrcPrefixTest, NullLineHasOnlyItsNumber)
{
    show(true, false, true);
    char text[40];
    EXPECT_EQ(columns().prefix(4, nullptr, text, 40), 9);
}

TEST_F(SrcPrefixTest, ManyBlocksAreCutToTheRoomThatThereIs)
{
    constexpr int Many = 1000000;
    auto* map = new int32_t[Many]();
    _line.showBlocks(map, Many, 0);
    show(true, false, true);
    EXPECT_EQ(prefix(columns(4, Many), 4, 15), "      5   !!!!!");
    show(true, true, true);
    EXPECT_EQ(prefix(columns(Many, 4), 4, 15), "      5   0/0/0");
}
