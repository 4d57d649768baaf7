#include "tests/support/gtest_x.h"

#include "qip/Components/qipHorizScrollBar.h"
#include "qip/Components/qipScrolledWindow.h"
#include "qip/Components/qipVertScrollBar.h"
#include "tests/support/CellWindow.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XtFixture.h"

#include <Xm/ScrollBar.h>
#include <Xm/ScrolledW.h>
#include <Xm/Xm.h>

#include <climits>

namespace {

// Counts how often it is asked to draw.
class Scrolled : public qipScrolledWindow
{
public:
    Scrolled() : qipScrolledWindow("cell") {}

    void render() override { ++nRenders; }
    void helpRequested() const override { ++nHelps; }
    void center(bool on) { _centerWhenOversize = on; }
    void setUp(int columns, int rows, int width, int height)
    {
        _view = qipView(0, 0, columns, rows);
        _canvasWidth = width;
        _canvasHeight = height;
    }
    qipScrollBar* hsb() const { return _hsb; }
    qipScrollBar* vsb() const { return _vsb; }

    int nRenders = 0;
    mutable int nHelps = 0;
};

struct BarState
{
    int value = 0;
    int maximum = 0;
    int slider = 0;
    int page = 0;
};
bool operator==(const BarState& a, const BarState& b)
{
    return a.value == b.value && a.maximum == b.maximum && a.slider == b.slider && a.page == b.page;
}
std::ostream& operator<<(std::ostream& out, const BarState& bar)
{
    return out << "value " << bar.value << ", maximum " << bar.maximum << ", slider " << bar.slider
               << ", page " << bar.page;
}

BarState stateOf(const qipScrollBar* bar)
{
    BarState state;
    XtVaGetValues(bar->baseWidget(), XmNvalue, &state.value, XmNmaximum, &state.maximum,
                  XmNsliderSize, &state.slider, XmNpageIncrement, &state.page, nullptr);
    return state;
}

void expectView(const qipScrolledWindow& cell, int x, int y, int dx, int dy)
{
    EXPECT_EQ(cell.view()._x, x);
    EXPECT_EQ(cell.view()._y, y);
    EXPECT_EQ(cell.view()._dx, dx);
    EXPECT_EQ(cell.view()._dy, dy);
}

class qipScrolledWindowTest : public XtFixture
{
protected:
    // A view of 20 columns and 10 rows on a canvas of 200 columns and 1000 rows.
    void open()
    {
        cell.setUp(20, 10, 200, 1000);
        window = std::make_unique<CellWindow>(cell);
        window->open();
        settle();
    }

    Scrolled cell;
    std::unique_ptr<CellWindow> window;
};

using qipScrolledWindowDeathTest = qipScrolledWindowTest;
using qipScrollBarTest = qipScrolledWindowTest;

TEST_F(qipScrolledWindowTest, InstallMakesTheWindowAndItsTwoBars)
{
    open();
    EXPECT_EQ(widgetTree(cell.baseWidget()), "cell XmScrolledWindow\n"
                                             "  cell_hsb XmScrollBar\n"
                                             "  cell_vsb XmScrollBar\n");
    EXPECT_EQ(cell.clientArea(), cell.baseWidget());
    EXPECT_STREQ(cell.className(), "qipScrolledWindow");
    unsigned char policy = XmAUTOMATIC;
    XtVaGetValues(cell.baseWidget(), XmNscrollingPolicy, &policy, nullptr);
    EXPECT_EQ(policy, XmAPPLICATION_DEFINED);
    EXPECT_EQ(XtHasCallbacks(cell.baseWidget(), XmNdestroyCallback), XtCallbackHasSome);
}

TEST_F(qipScrolledWindowDeathTest, EmptyViewOrCanvasIsABug)
{
    const char* const file = "qip/Components/qipScrolledWindow.cpp:.*Assertion ";
    cell.setUp(0, 10, 200, 1000);
    EXPECT_DEATH(CellWindow(cell).open(), std::string(file) + "`_view._dx != 0' failed");
    cell.setUp(20, 10, 0, 1000);
    EXPECT_DEATH(CellWindow(cell).open(), std::string(file) + "`_canvasWidth != 0' failed");
    cell.setUp(20, 0, 200, 1000);
    EXPECT_DEATH(CellWindow(cell).open(), std::string(file) + "`_view._dy != 0' failed");
    cell.setUp(20, 10, 200, 0);
    EXPECT_DEATH(CellWindow(cell).open(), std::string(file) + "`_canvasHeight != 0' failed");
}

TEST_F(qipScrolledWindowTest, BarsStartWithTheViewThatWasSetBefore)
{
    cell.setUp(20, 10, 200, 1000);
    cell.viewPosition(30, 400);
    CellWindow around(cell);
    around.open();
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{30, 200, 20, 19}));
    EXPECT_EQ(stateOf(cell.vsb()), (BarState{400, 1000, 10, 9}));
    expectView(cell, 30, 400, 20, 10);
}

TEST_F(qipScrolledWindowTest, HelpOnItReachesTheCell)
{
    open();
    XtCallCallbacks(cell.baseWidget(), XmNhelpCallback, nullptr);
    EXPECT_EQ(cell.nHelps, 1);
}

TEST_F(qipScrolledWindowTest, CanvasIsAtLeastOneCell)
{
    open();
    cell.resizeCanvas(0, 0);
    EXPECT_EQ(cell.canvasWidth(), 1);
    EXPECT_EQ(cell.canvasHeight(), 1);
    cell.resizeCanvas(-5, INT_MIN);
    EXPECT_EQ(cell.canvasWidth(), 1);
    EXPECT_EQ(cell.canvasHeight(), 1);
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{0, 1, 1, 1}));
}

TEST_F(qipScrolledWindowTest, PositionAndSizeLeaveEachOtherAlone)
{
    open();
    cell.viewPosition(7, 8);
    expectView(cell, 7, 8, 20, 10);
    cell.viewSize(30, 40);
    expectView(cell, 7, 8, 30, 40);
    cell.horizScroll(100);
    expectView(cell, 100, 8, 30, 40);
    cell.vertScroll(200);
    expectView(cell, 100, 200, 30, 40);
}

TEST_F(qipScrolledWindowTest, RelativeMovesStopAtTheEnds)
{
    open();
    cell.horizIScroll(5);
    cell.vertIScroll(7);
    expectView(cell, 5, 7, 20, 10);
    cell.horizIScroll(-2);
    cell.vertIScroll(-3);
    expectView(cell, 3, 4, 20, 10);
    cell.horizIScroll(INT_MAX);
    cell.vertIScroll(INT_MAX);
    expectView(cell, 180, 990, 20, 10);
    cell.horizIScroll(INT_MIN);
    cell.vertIScroll(INT_MIN);
    expectView(cell, 0, 0, 20, 10);
}

TEST_F(qipScrolledWindowTest, ViewPastTheEndShowsTheLastCell)
{
    open();
    cell.viewPosition(195, 2000);
    expectView(cell, 180, 990, 20, 10);
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{180, 200, 20, 19}));
    EXPECT_EQ(stateOf(cell.vsb()), (BarState{990, 1000, 10, 9}));
}

TEST_F(qipScrolledWindowTest, ViewLargerThanTheCanvasIsPinnedOrCentred)
{
    open();
    cell.resizeCanvas(24, 5);
    cell.viewSize(100, 10);
    expectView(cell, 0, 0, 100, 10);
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{0, 24, 24, 23}));
    cell.center(true);
    cell.viewSize(100, 10);
    expectView(cell, -38, -2, 100, 10);
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{0, 24, 24, 23}));
    EXPECT_EQ(stateOf(cell.vsb()), (BarState{0, 5, 5, 4}));
}

TEST_F(qipScrolledWindowTest, ShrinkingTheCanvasPullsTheViewIn)
{
    open();
    cell.viewPosition(150, 900);
    cell.resizeCanvas(100, 50);
    expectView(cell, 80, 40, 20, 10);
}

TEST_F(qipScrolledWindowTest, HugeCanvasesHaveBarsToo)
{
    open();
    cell.resizeCanvas(INT_MAX, 2000000000);
    cell.viewPosition(INT_MAX, INT_MAX);
    expectView(cell, INT_MAX - 20, 2000000000 - 10, 20, 10);
    EXPECT_EQ(stateOf(cell.vsb()), (BarState{1999999990, 2000000000, 10, 9}));
}

TEST_F(qipScrolledWindowTest, ViewOfNoCellsBehindTheLastOneDrawsNoWarning)
{
    open();
    cell.viewPosition(200, 1000);
    cell.viewSize(0, 0);
    cell.viewPosition(200, 1000);
    EXPECT_EQ(stateOf(cell.hsb()), (BarState{199, 200, 1, 1}));
}

TEST_F(qipScrolledWindowTest, KeepsScrollingWithoutItsWidgets)
{
    open();
    XtDestroyWidget(window->baseWidget());
    cell.viewPosition(5, 6);
    expectView(cell, 5, 6, 20, 10);
    EXPECT_EQ(cell.hsb()->currentValue(), 5);
}

TEST_F(qipScrollBarTest, BarsDifferInOrientationAndInWhatTheyScroll)
{
    open();
    unsigned char orientation = 0;
    XtVaGetValues(cell.hsb()->baseWidget(), XmNorientation, &orientation, nullptr);
    EXPECT_EQ(orientation, XmHORIZONTAL);
    XtVaGetValues(cell.vsb()->baseWidget(), XmNorientation, &orientation, nullptr);
    EXPECT_EQ(orientation, XmVERTICAL);
    EXPECT_STREQ(cell.hsb()->className(), "qipHorizScrollBar");
    EXPECT_STREQ(cell.vsb()->className(), "qipVertScrollBar");

    cell.hsb()->scroll(11);
    expectView(cell, 11, 0, 20, 10);
    cell.vsb()->scroll(12);
    expectView(cell, 11, 12, 20, 10);
    EXPECT_EQ(cell.nRenders, 2);
}

TEST_F(qipScrollBarTest, ScrollingToWhereItIsDrawsNothing)
{
    open();
    cell.vsb()->scroll(0);
    EXPECT_EQ(cell.nRenders, 0);
    cell.vsb()->scroll(3);
    cell.vsb()->scroll(3);
    EXPECT_EQ(cell.nRenders, 1);
}

TEST_F(qipScrollBarTest, SettersReachTheWidget)
{
    open();
    qipScrollBar* bar = cell.vsb();
    bar->currentValue(25);
    EXPECT_EQ(bar->currentValue(), 25);
    bar->maxValue(500);
    EXPECT_EQ(bar->maxValue(), 500);
    bar->pageLength(50);
    EXPECT_EQ(bar->pageLength(), 50);
    EXPECT_EQ(stateOf(bar), (BarState{25, 500, 50, 49}));
    bar->pageLength(1);
    EXPECT_EQ(stateOf(bar), (BarState{25, 500, 1, 1}));
    bar->adjustValues(30, 300, 40);
    EXPECT_EQ(stateOf(bar), (BarState{30, 300, 40, 39}));
    EXPECT_EQ(cell.nRenders, 0);
}

TEST_F(qipScrollBarTest, MaximumBelowValueAndSliderDrawsNoWarning)
{
    open();
    qipScrollBar* bar = cell.vsb();
    bar->adjustValues(900, 1000, 100);
    bar->maxValue(50);
    EXPECT_EQ(stateOf(bar), (BarState{0, 50, 50, 49}));
}

TEST_F(qipScrollBarTest, StoresWhatItIsToldBeforeItsWidget)
{
    qipVertScrollBar bar("bar", &cell);
    bar.adjustValues(3, 30, 5);
    EXPECT_EQ(bar.currentValue(), 3);
    EXPECT_EQ(bar.maxValue(), 30);
    EXPECT_EQ(bar.pageLength(), 5);
    bar.currentValue(4);
    bar.pageLength(6);
    bar.maxValue(40);
    EXPECT_EQ(bar.currentValue(), 4);
    EXPECT_EQ(bar.maxValue(), 40);
    EXPECT_EQ(bar.pageLength(), 6);
    // Not even a maximum below both changes them.
    bar.maxValue(2);
    EXPECT_EQ(bar.maxValue(), 2);
    EXPECT_EQ(bar.currentValue(), 4);
    EXPECT_EQ(bar.pageLength(), 6);
    EXPECT_EQ(bar.baseWidget(), nullptr);
}

TEST_F(qipScrollBarTest, TheWidgetsNewValueScrolls)
{
    open();
    XmScrollBarCallbackStruct call = {};
    call.value = 17;
    XtCallCallbacks(cell.vsb()->baseWidget(), XmNvalueChangedCallback, &call);
    expectView(cell, 0, 17, 20, 10);
    EXPECT_EQ(cell.vsb()->currentValue(), 17);
    call.value = 18;
    XtCallCallbacks(cell.hsb()->baseWidget(), XmNdragCallback, &call);
    expectView(cell, 18, 17, 20, 10);
    EXPECT_EQ(cell.nRenders, 2);
}

} // namespace
