#include "zem/Rows/RptRowLayout.h"

#include "zem/Rows/ZEMFuncView.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

class RptRowLayoutTest : public ::testing::Test
{
protected:
    // A font of 6 by 13 pixels and a view of 100 columns at the canvas's left end.
    RptRowLayoutTest()
    {
        _layout._hPixels = 6;
        _layout._vPixels = 26;
        _layout._lineHeight = 13;
        _layout._baseline = 11;
        _layout._barHeight = 16;
        _layout._canvasWidth = 100;
        _layout._viewX = 0;
        _layout._viewDx = 100;
        _layout._longestLabel = 10;
        _layout._maxBlocks = 8;
        _layout._showPercentage = 0;
    }

    const RptRow& layOut(const char* label, int covered, int total, int i = 0)
    {
        if (label != nullptr) {
            _view.funcname(label);
            _view.setLabel();
        }
        _view._covBlk = covered;
        _view._totBlk = total;
        _layout.layOut(_view, i, _row);
        return _row;
    }

    static std::string text(const RptTextRun& run)
    {
        return std::string(run.text, static_cast<size_t>(run.length));
    }
    static std::string text(const RptRect& rect)
    {
        return std::to_string(rect.x) + "," + std::to_string(rect.y) + " " +
               std::to_string(rect.width) + "x" + std::to_string(rect.height);
    }
    static std::string text(const RptLine& line)
    {
        return std::to_string(line.x0) + "," + std::to_string(line.y0) + "-" +
               std::to_string(line.x1) + "," + std::to_string(line.y1);
    }

    RptRowLayout _layout;
    ZEMFuncView _view;
    RptRow _row;
};

TEST_F(RptRowLayoutTest, OffsetsAreTruncated)
{
    EXPECT_EQ(_layout.barOffset(), 4);
    EXPECT_EQ(_layout.textOffset(), 17);
}

TEST_F(RptRowLayoutTest, LabelEndsAgainstTheMiddle)
{
    layOut("main", 4, 8);
    EXPECT_EQ(text(_row.label), "main");
    EXPECT_EQ(_row.label.x, (50 - 4) * 6 - 2);
    EXPECT_EQ(_row.label.y, 17);
}

TEST_F(RptRowLayoutTest, RowsFollowEachOther)
{
    layOut("main", 4, 8, 3);
    EXPECT_EQ(_row.label.y, 3 * 26 + 17);
    EXPECT_EQ(text(_row.covered), "306,82 120x16");
    EXPECT_EQ(text(_row.selection), "0,78 600x26");
}

TEST_F(RptRowLayoutTest, BarsAreInProportionToTheLargest)
{
    // Scale 40 columns: the labels are shorter.
    layOut("main", 4, 8);
    EXPECT_EQ(text(_row.covered), "306,4 120x16");
    EXPECT_EQ(text(_row.uncovered), "426,4 120x16");
    layOut("main", 1, 3);
    EXPECT_EQ(text(_row.covered), "306,4 30x16");
    EXPECT_EQ(text(_row.uncovered), "336,4 60x16");
}

// What zem-import shortens labels for: 100 columns show the longest label and a part of its bar.
TEST_F(RptRowLayoutTest, FirstCanvasShowsAWideLabelAndItsBar)
{
    _layout._longestLabel = 64;
    _layout._maxBlocks = 9999;
    _layout._canvasWidth = (64 + 2 * 4) * 2 + 20; // as RptViewer::installView() has it
    const std::string label(64, 'f');
    layOut(label.c_str(), 9999, 9999);
    EXPECT_EQ(_row.label.length, 64);
    EXPECT_GE(_row.label.x, 0);
    EXPECT_EQ(_row.covered.x, 83 * 6);
    EXPECT_GT(_row.covered.width, 17 * 6);
}

TEST_F(RptRowLayoutTest, BarsHaveOneLengthByPercentage)
{
    _layout._showPercentage = 1;
    layOut("main", 1, 3);
    EXPECT_EQ(text(_row.covered), "306,4 80x16");
    EXPECT_EQ(text(_row.uncovered), "386,4 160x16");
}

TEST_F(RptRowLayoutTest, ScaleIsTheLongestLabelFromFortyOn)
{
    _layout._longestLabel = 41;
    layOut("main", 8, 8);
    EXPECT_EQ(_row.covered.width, 6 * 41);
    _layout._longestLabel = 39;
    layOut("main", 8, 8);
    EXPECT_EQ(_row.covered.width, 6 * 40);
}

TEST_F(RptRowLayoutTest, BarsOfHugeLabelsAndCountsStayInProportion)
{
    _layout._longestLabel = INT_MAX;
    _layout._maxBlocks = INT_MAX;
    layOut("main", INT_MAX, INT_MAX);
    EXPECT_EQ(_row.uncovered.width, 0);
    EXPECT_GT(_row.nLight, 0);
    layOut("main", 0, INT_MAX);
    EXPECT_EQ(_row.covered.width, 0);
}

TEST_F(RptRowLayoutTest, CountsStandBehindTheBar)
{
    layOut("main", 4, 8);
    EXPECT_EQ(text(_row.counts), " 4:4 (50%)");
    EXPECT_EQ(_row.counts.x, 306 + 240 + 1);
    EXPECT_EQ(_row.counts.y, 17);
}

TEST_F(RptRowLayoutTest, NothingAndEverythingCovered)
{
    _layout._maxBlocks = 7;
    _layout._viewDx = 120;
    layOut("main", 0, 7);
    EXPECT_EQ(text(_row.counts), " 0:7 (0%)");
    EXPECT_EQ(_row.covered.width, 0);
    EXPECT_EQ(_row.uncovered.width, 240);
    layOut("main", 7, 7);
    EXPECT_EQ(text(_row.counts), " 7:0 (100%)");
    EXPECT_EQ(_row.covered.width, 240);
    EXPECT_EQ(_row.uncovered.width, 0);
}

TEST_F(RptRowLayoutTest, TwoOfThreeIs66PerCent)
{
    layOut("main", 2, 3);
    EXPECT_EQ(text(_row.counts), " 2:1 (66%)");
}

TEST_F(RptRowLayoutTest, FrameIsTwoPixelsWideOnEachSide)
{
    layOut("main", 4, 8);
    ASSERT_EQ(_row.nLight, 4);
    EXPECT_EQ(text(_row.light[0]), "305,4-305,20");
    EXPECT_EQ(text(_row.light[1]), "304,3-304,21");
    EXPECT_EQ(text(_row.light[2]), "305,4-546,4");
    EXPECT_EQ(text(_row.light[3]), "304,3-547,3");
    ASSERT_EQ(_row.nDark, 4);
    EXPECT_EQ(text(_row.dark[0]), "546,5-546,20");
    EXPECT_EQ(text(_row.dark[1]), "547,4-547,21");
    EXPECT_EQ(text(_row.dark[2]), "306,20-546,20");
    EXPECT_EQ(text(_row.dark[3]), "305,21-547,21");
}

TEST_F(RptRowLayoutTest, ScrollingSidewaysMovesEverythingButTheSelection)
{
    _layout._viewX = 10;
    layOut("main", 4, 8);
    EXPECT_EQ(_row.label.x, (40 - 4) * 6 - 2);
    EXPECT_EQ(_row.covered.x, 246);
    EXPECT_EQ(_row.selection.x, 0);
}

TEST_F(RptRowLayoutTest, OddCanvasWidthIsHalvedDown)
{
    _layout._canvasWidth = 101;
    layOut("main", 4, 8);
    EXPECT_EQ(_row.covered.x, 306);
}

TEST_F(RptRowLayoutTest, NullLabelDrawsNothing)
{
    layOut(nullptr, 4, 8);
    EXPECT_EQ(_row.label.length, 0);
    EXPECT_EQ(_row.covered.width, 120);
}

TEST_F(RptRowLayoutTest, NoBlocksAtAllIsAFrameAroundNothing)
{
    for (const int percentage : {0, 1}) {
        _layout._maxBlocks = 0;
        _layout._showPercentage = percentage;
        layOut("main", 0, 0);
        EXPECT_EQ(text(_row.counts), " 0:0 (0%)");
        EXPECT_EQ(_row.covered.width, 0);
        EXPECT_EQ(_row.uncovered.width, 0);
        ASSERT_EQ(_row.nLight, 4);
        EXPECT_EQ(text(_row.light[2]), "305,4-306,4");
        EXPECT_EQ(_row.nDark, 4);
    }
}

TEST_F(RptRowLayoutTest, NegativeCoverageKeepsItsNumberAndDrawsNoGreen)
{
    _layout._viewDx = 120;
    layOut("main", -2, 8);
    EXPECT_EQ(text(_row.counts), " -2:10 (-25%)");
    EXPECT_EQ(_row.covered.width, 0);
    EXPECT_EQ(_row.uncovered.width, 240);
}

TEST_F(RptRowLayoutTest, MoreCoveredThanAllFillsTheBar)
{
    layOut("main", 20, 8);
    EXPECT_EQ(_row.covered.width, 240);
    EXPECT_EQ(_row.uncovered.width, 0);
}

TEST_F(RptRowLayoutTest, HugeCountsDoNotOverflow)
{
    _layout._maxBlocks = INT_MAX;
    layOut("main", INT_MAX / 2, INT_MAX);
    EXPECT_EQ(_row.covered.width, 119);
    EXPECT_EQ(_row.uncovered.width, 121);
}

TEST_F(RptRowLayoutTest, OnlyVisibleCharactersOfALongLabelAreKept)
{
    const std::string label = std::string(4990, 'x') + "0123456789";
    _layout._longestLabel = 5000;
    _layout._canvasWidth = (5000 + 2) * 2 + 20;
    // The label's last five columns and the column between label and bar are in view,
    // the first of them but for two pixels.
    _layout._viewX = 5012 - 5;
    layOut(label.c_str(), 4, 8);
    EXPECT_EQ(text(_row.label), "56789");
    EXPECT_EQ(_row.label.x, -2);
    EXPECT_EQ(_row.covered.x, 36);
    EXPECT_EQ(_row.covered.width, 6 * 4 * 5000 / 8);
}

TEST_F(RptRowLayoutTest, LabelLeftOfTheViewIsGone)
{
    _layout._viewX = 60;
    layOut("main", 4, 8);
    EXPECT_EQ(_row.label.length, 0);
}

TEST_F(RptRowLayoutTest, CountsRightOfTheViewAreGone)
{
    _layout._viewDx = 60;
    layOut("main", 4, 8);
    EXPECT_EQ(_row.counts.length, 0);
}

TEST_F(RptRowLayoutTest, CoordinatesNeverLeaveSixteenBits)
{
    const std::string label(20000, 'x');
    _layout._longestLabel = 20000;
    _layout._canvasWidth = 40020;
    for (const int viewX : {0, 10000, 20010, 30000, 40000, 60000}) {
        _layout._viewX = viewX;
        layOut(label.c_str(), 4, 8);
        for (const RptRect& rect : {_row.covered, _row.uncovered, _row.selection}) {
            EXPECT_GE(rect.x, -32768);
            EXPECT_LE(rect.x + rect.width, 32767);
            EXPECT_GE(rect.width, 0);
        }
        for (int i = 0; i < _row.nLight; ++i) {
            EXPECT_GE(_row.light[i].x0, -32768);
            EXPECT_LE(_row.light[i].x1, 32767);
        }
        for (int i = 0; i < _row.nDark; ++i) {
            EXPECT_GE(_row.dark[i].x0, -32768);
            EXPECT_LE(_row.dark[i].x1, 32767);
        }
        EXPECT_LE(_row.label.length, 102);
        EXPECT_GE(_row.label.x, -6);
    }
}

TEST_F(RptRowLayoutTest, BarsFarRightOfTheViewDoNotWrapIntoIt)
{
    _layout._canvasWidth = 40020;
    _layout._viewX = 0;
    layOut("main", 4, 8);
    EXPECT_EQ(_row.covered.width, 0);
    EXPECT_EQ(_row.uncovered.width, 0);
    EXPECT_EQ(_row.nLight, 0);
    EXPECT_EQ(_row.nDark, 0);
    EXPECT_EQ(_row.label.length, 0);
    EXPECT_EQ(_row.counts.length, 0);
}

TEST_F(RptRowLayoutTest, ABarWiderThanTheViewFillsIt)
{
    _layout._longestLabel = 20000;
    _layout._canvasWidth = 40020;
    _layout._viewX = 20010 + 100;
    layOut("main", 8, 8);
    EXPECT_LT(_row.covered.x, 0);
    EXPECT_EQ(_row.covered.x + _row.covered.width, 32767);
}

TEST_F(RptRowLayoutTest, AFontWithoutSizeDrawsNothing)
{
    _layout = RptRowLayout();
    layOut("main", 4, 8);
    EXPECT_EQ(_row.label.length, 0);
    EXPECT_EQ(_row.counts.length, 0);
    EXPECT_EQ(_row.covered.width, 0);
    EXPECT_EQ(_row.selection.height, 0);
}

} // namespace
