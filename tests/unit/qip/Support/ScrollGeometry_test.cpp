#include "qip/Support/ScrollGeometry.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using ScrollGeometry::Axis;
using ScrollGeometry::clamp;

void expectAxis(const Axis& axis, int origin, int value, int page)
{
    EXPECT_EQ(axis.origin, origin);
    EXPECT_EQ(axis.value, value);
    EXPECT_EQ(axis.page, page);
}

TEST(ScrollGeometryTest, FittingViewStaysWhereItIs)
{
    expectAxis(clamp(10, 20, 100, false), 10, 10, 20);
    expectAxis(clamp(0, 20, 100, true), 0, 0, 20);
}

TEST(ScrollGeometryTest, ViewPastTheEndIsPulledBackToTheLastCell)
{
    expectAxis(clamp(95, 20, 100, false), 80, 80, 20);
    expectAxis(clamp(80, 20, 100, false), 80, 80, 20);
    expectAxis(clamp(INT_MAX, 20, 100, false), 80, 80, 20);
}

TEST(ScrollGeometryTest, NegativeOriginBecomesZero)
{
    expectAxis(clamp(-1, 20, 100, false), 0, 0, 20);
    expectAxis(clamp(INT_MIN, 20, 100, true), 0, 0, 20);
}

TEST(ScrollGeometryTest, ViewOfTheCanvasSizeIsNotOversize)
{
    expectAxis(clamp(5, 24, 24, true), 0, 0, 24);
}

TEST(ScrollGeometryTest, OversizeViewStartsAtZero)
{
    expectAxis(clamp(0, 100, 24, false), 0, 0, 24);
    expectAxis(clamp(17, 100, 24, false), 0, 0, 24);
    expectAxis(clamp(-17, 100, 24, false), 0, 0, 24);
}

TEST(ScrollGeometryTest, OversizeViewIsCentredOnDemand)
{
    expectAxis(clamp(0, 100, 24, true), -38, 0, 24);
    expectAxis(clamp(17, 100, 24, true), -38, 0, 24);
}

TEST(ScrollGeometryTest, CentringTruncatesTowardsZero)
{
    EXPECT_EQ(clamp(0, 27, 24, true).origin, -1);
    EXPECT_EQ(clamp(0, 25, 24, true).origin, 0);
}

TEST(ScrollGeometryTest, PageIsAtLeastOne)
{
    EXPECT_EQ(clamp(0, 0, 24, false).page, 1);
    EXPECT_EQ(clamp(0, 10, 0, false).page, 1);
}

// A window narrower than one cell has a view of no cells, which fits behind the last one; a scroll
// bar cannot show that place.
TEST(ScrollGeometryTest, ValueAndPageNeverPassTheCanvas)
{
    expectAxis(clamp(30, 0, 24, false), 24, 23, 1);
    for (int canvas = 1; canvas < 6; ++canvas) {
        for (int extent = 0; extent < 8; ++extent) {
            for (int origin = -3; origin < 9; ++origin) {
                const Axis axis = clamp(origin, extent, canvas, origin % 2 == 0);
                EXPECT_GE(axis.value, 0);
                EXPECT_LE(axis.value + axis.page, canvas)
                    << "origin " << origin << ", extent " << extent << ", canvas " << canvas;
            }
        }
    }
}

TEST(ScrollGeometryTest, FittingViewIsAlwaysInsideTheCanvas)
{
    for (int canvas = 1; canvas < 6; ++canvas) {
        for (int extent = 1; extent <= canvas; ++extent) {
            for (int origin = -8; origin < 9; ++origin) {
                const Axis axis = clamp(origin, extent, canvas, true);
                EXPECT_GE(axis.origin, 0);
                EXPECT_LE(axis.origin + extent, canvas);
                EXPECT_EQ(axis.value, axis.origin);
                EXPECT_EQ(axis.page, extent);
            }
        }
    }
}

} // namespace
