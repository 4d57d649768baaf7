#include "tests/support/gtest_x.h"

#include "qip/Drawing/makeColorPixel.h"
#include "tests/support/CellWindow.h"
#include "tests/support/Pixels.h"
#include "tests/support/StdErr.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Reports/RptViewer.h"
#include "zem/Rows/ZEMFileView.h"
#include "zem/Rows/ZEMRptTable.h"

#include <X11/keysym.h>
#include <Xm/PanedW.h>
#include <Xm/PushB.h>
#include <Xm/Xm.h>

#include <string>
#include <vector>

namespace {

// The picture is copied inside the frame.
constexpr int Offset = 2;

// A viewer that counts its pictures.
class CountingViewer : public RptViewer
{
public:
    CountingViewer() : RptViewer("rptViewer") {}
    using RptViewer::render;
    void render() override
    {
        ++nRenders;
        RptViewer::render();
    }
    void helpRequested() const override { ++nHelps; }
    int lineHeight() const { return _Ypxls; }
    int nRenders = 0;
    mutable int nHelps = 0;
};

class RptViewerTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        _window = std::make_unique<CellWindow>(_viewer);
        _window->open();
        ASSERT_TRUE(waitFor([this] { return XtIsRealized(_viewer.clientArea()); }));
        settle();
        _green = makeColorPixel(_viewer.clientArea(), "SeaGreen4", 1);
        _red = makeColorPixel(_viewer.clientArea(), "OrangeRed2", 0);
        _blue = makeColorPixel(_viewer.clientArea(), "LightSkyBlue3", 0);
        XtVaGetValues(_viewer.baseWidget(), XmNtopShadowColor, &_light, XmNbottomShadowColor,
                      &_dark, nullptr);
        XtVaGetValues(_viewer.clientArea(), XmNbackground, &_background, nullptr);
    }

    void TearDown() override
    {
        XtFixture::TearDown();
        _table.deleteRows();
    }

    struct Row
    {
        std::string path;
        int total;
        int covered;
    };

    void show(const std::vector<Row>& rows)
    {
        _table.deleteRows();
        _table._view = new ZEMView*[rows.size() + 1];
        for (const Row& row : rows) {
            auto* view = new ZEMFileView;
            view->filename(row.path.c_str());
            view->setLabel();
            view->_totBlk = row.total;
            view->_covBlk = row.covered;
            view->_owner = &_record;
            _table._view[_table._nItems++] = view;
        }
        _viewer.installView(&_table);
        settle();
    }

    Window window() const { return XtWindow(_viewer.clientArea()); }
    int rowTop(int row) const { return Offset + row * _viewer.rowPixels(); }
    int middle(int row) const { return rowTop(row) + _viewer.rowPixels() / 2; }
    int barTop(int row) const
    {
        const int height = 5 * _viewer.lineHeight() / 4;
        return rowTop(row) + (_viewer.rowPixels() - height - 1) / 2;
    }
    int barX() const { return Offset + (_viewer.canvasWidth() / 2 + 1) * _viewer.columnPixels(); }
    int barHeight() const { return 5 * _viewer.lineHeight() / 4; }

    CountingViewer _viewer;
    std::unique_ptr<CellWindow> _window;
    ZEMRptTable _table;
    ZEMFileRecord _record;
    unsigned long _green = 0;
    unsigned long _red = 0;
    unsigned long _blue = 0;
    Pixel _light = 0;
    Pixel _dark = 0;
    Pixel _background = 0;
};

TEST_F(RptViewerTest, FirstCanvasIsHundredColumnsBySevenRows)
{
    EXPECT_EQ(_viewer.canvasWidth(), 100);
    EXPECT_EQ(_viewer.canvasHeight(), 7);
    EXPECT_EQ(_viewer.view()._dx, 100);
    EXPECT_EQ(_viewer.view()._dy, 7);
    EXPECT_EQ(_viewer.rowPixels(), 2 * _viewer.lineHeight());
    EXPECT_EQ(_viewer.selection(), -1);
}

TEST_F(RptViewerTest, CanvasFollowsLabelsCountsAndRows)
{
    show({{"d/alpha", 40, 10}, {"d/be", 1000, 20}});
    EXPECT_EQ(_viewer.canvasWidth(), (7 + 2 * 4) * 2 + 20);
    EXPECT_EQ(_viewer.canvasHeight(), 2);
    show({});
    EXPECT_EQ(_viewer.canvasHeight(), 1);
}

TEST_F(RptViewerTest, BarsAreInProportionToTheLargest)
{
    _viewer.showPercentage(0);
    show({{"d/alpha", 40, 10}, {"d/beta", 20, 20}, {"d/gamma", 7, 0}, {"d/empty", 0, 0}});
    const int scale = 40 * _viewer.columnPixels();
    const Pixels picture(display(), window());
    EXPECT_EQ(picture.runRight(barX(), middle(0), _green), scale / 4);
    EXPECT_EQ(picture.runRight(barX() + scale / 4, middle(0), _red), scale - scale / 4);
    EXPECT_EQ(picture.runRight(barX(), middle(1), _green), scale / 2);
    EXPECT_EQ(picture.find(barX(), middle(1), _red), -1);
    EXPECT_EQ(picture.runRight(barX(), middle(2), _red), scale * 7 / 40);
    EXPECT_EQ(picture.find(barX(), middle(2), _green), -1);
    EXPECT_EQ(picture.find(0, middle(3), _red), -1);
    EXPECT_EQ(picture.find(0, middle(3), _green), -1);
    saveScreenshot(display(), window(), "report-bars-by-size");
}

TEST_F(RptViewerTest, BarsHaveOneLengthWhenPercentagesAreShown)
{
    _viewer.showPercentage(1);
    show({{"d/alpha", 40, 10}, {"d/beta", 3, 2}, {"d/empty", 0, 0}});
    const int full = 40 * _viewer.columnPixels();
    const Pixels picture(display(), window());
    EXPECT_EQ(picture.runRight(barX(), middle(0), _green), full / 4);
    EXPECT_EQ(picture.runRight(barX() + full / 4, middle(0), _red), full - full / 4);
    EXPECT_EQ(picture.runRight(barX(), middle(1), _green), full * 2 / 3);
    EXPECT_EQ(picture.runRight(barX() + full * 2 / 3, middle(1), _red), full - full * 2 / 3);
    EXPECT_EQ(picture.find(0, middle(2), _green), -1);
    saveScreenshot(display(), window(), "report-bars-by-percentage");
}

TEST_F(RptViewerTest, FrameIsTwoPixelsWideLightAboveAndLeft)
{
    _viewer.showPercentage(0);
    show({{"d/alpha", 40, 10}});
    const Pixels picture(display(), window());
    const int x = barX();
    const int w = 40 * _viewer.columnPixels();
    const int t = barTop(0);
    const int h = barHeight();
    EXPECT_EQ(picture.at(x - 1, t + 3), _light);
    EXPECT_EQ(picture.at(x - 2, t + 3), _light);
    EXPECT_EQ(picture.at(x - 3, t + 3), _background);
    EXPECT_EQ(picture.at(x + 5, t), _light);
    EXPECT_EQ(picture.at(x + 5, t - 1), _light);
    EXPECT_EQ(picture.at(x + 5, t - 2), _background);
    EXPECT_EQ(picture.at(x + 5, t + 1), _green);
    EXPECT_EQ(picture.at(x + w, t + 3), _dark);
    EXPECT_EQ(picture.at(x + w + 1, t + 3), _dark);
    EXPECT_EQ(picture.at(x + w + 2, t + 3), _background);
    EXPECT_EQ(picture.at(x + 5, t + h), _dark);
    EXPECT_EQ(picture.at(x + 5, t + h + 1), _dark);
    EXPECT_EQ(picture.at(x + 5, t + h + 2), _background);
    // The corners: the dark lines are drawn last.
    EXPECT_EQ(picture.at(x + w, t), _light);
    EXPECT_EQ(picture.at(x + w + 1, t), _dark);
    EXPECT_EQ(picture.at(x + w + 1, t - 1), _light);
    EXPECT_EQ(picture.at(x - 1, t + h), _light);
    EXPECT_EQ(picture.at(x - 1, t + h + 1), _dark);
}

TEST_F(RptViewerTest, SelectionCrossesTheVisibleWidth)
{
    show({{"d/alpha", 40, 10}, {"d/beta", 20, 20}});
    _viewer.selection(1);
    _viewer.render();
    settle();
    const Pixels picture(display(), window());
    EXPECT_EQ(picture.count(Offset, rowTop(0), 60, _viewer.rowPixels(), _blue), 0);
    EXPECT_EQ(picture.runRight(Offset, rowTop(1), _blue),
              _viewer.view()._dx * _viewer.columnPixels() - 2 * Offset); // up to the frame
    EXPECT_EQ(picture.runDown(Offset, rowTop(1), _blue), _viewer.rowPixels());
}

TEST_F(RptViewerTest, ClickSelectsOnThePress)
{
    show({{"d/alpha", 40, 10}, {"d/beta", 20, 20}});
    XInput::moveTo(display(), window(), 30, _viewer.rowPixels() + 3);
    XInput::press(display());
    EXPECT_TRUE(waitFor([this] { return _viewer.selection() == 1; }));
    EXPECT_EQ(_viewer.getSelection(), &_record);
    _viewer.selection(0);
    XInput::release(display());
    settle();
    EXPECT_EQ(_viewer.selection(), 0);
}

TEST_F(RptViewerTest, ClickBelowTheLastRowSelectsNothing)
{
    show({{"d/alpha", 40, 10}, {"d/beta", 20, 20}});
    _viewer.selection(0);
    XInput::click(display(), window(), 30, 2 * _viewer.rowPixels() + 3);
    EXPECT_TRUE(waitFor([this] { return _viewer.selection() == -1; }));
    EXPECT_EQ(_viewer.getSelection(), nullptr);
    const Pixels picture(display(), window());
    EXPECT_EQ(picture.count(0, 0, picture.width(), picture.height(), _blue), 0);
}

TEST_F(RptViewerTest, ClickAboveTheCanvasSelectsNothing)
{
    show({{"d/alpha", 40, 10}});
    _viewer.select(-5);
    EXPECT_EQ(_viewer.selection(), -1);
}

TEST_F(RptViewerTest, SelectBeforeInstallDoesNothing)
{
    RptViewer viewer("early");
    show({{"d/alpha", 40, 10}});
    viewer.installView(&_table);
    viewer.select(0);
    EXPECT_EQ(viewer.selection(), -1);
    // Nothing has been clicked either: there is no report area to be called.
    viewer.browse();
}

TEST_F(RptViewerTest, ClickCountsFromTheFirstVisibleRow)
{
    std::vector<Row> rows;
    for (int i = 0; i < 40; ++i) {
        rows.push_back({"d/file" + std::to_string(i), 40, i});
    }
    show(rows);
    _viewer.vertScroll(20);
    _viewer.select(3 * _viewer.rowPixels());
    EXPECT_EQ(_viewer.selection(), 23);
}

TEST_F(RptViewerTest, ANewTableClearsTheSelection)
{
    show({{"d/alpha", 40, 10}});
    _viewer.selection(0);
    show({{"d/beta", 40, 10}});
    EXPECT_EQ(_viewer.selection(), -1);
    _viewer.installView(nullptr);
    EXPECT_EQ(_viewer.canvasHeight(), 1);
}

TEST_F(RptViewerTest, WithoutATableNothingIsDrawnOrSelected)
{
    _viewer.forgetView();
    _viewer.select(10);
    settle();
    EXPECT_EQ(_viewer.selection(), -1);
    EXPECT_EQ(_viewer.getSelection(), nullptr);
    const Pixels picture(display(), window());
    EXPECT_EQ(picture.count(3, 3, picture.width() - 6, picture.height() - 6, _background),
              (picture.width() - 6) * (picture.height() - 6));
}

TEST_F(RptViewerTest, VeryLongLabelsAreDrawnAndCanBeScrolledTo)
{
    _viewer.showPercentage(1);
    show({{"d/" + std::string(5000, 'x'), 40, 10}, {"d/short", 40, 40}});
    // At the left end the long label fills its row.
    Pixels left(display(), window());
    EXPECT_EQ(left.find(Offset, middle(0), _green), -1);
    // The bars begin in the middle.
    _viewer.horizScroll(_viewer.canvasWidth() / 2);
    _viewer.render();
    settle();
    const Pixels picture(display(), window());
    const int x = Offset + _viewer.columnPixels();
    EXPECT_GT(picture.runRight(x, middle(0), _green), 90 * _viewer.columnPixels());
    EXPECT_EQ(picture.find(x, middle(1), _red), -1);
}

TEST_F(RptViewerTest, HugeTablesAndCountsAreDrawnWithoutAServerError)
{
    _viewer.showPercentage(0);
    show({{"d/" + std::string(20000, 'x'), 2147483647, 2147483646}, {"d/y", 1, 0}});
    for (const int x : {0, 100, 20000, 20100, 39000}) {
        _viewer.horizScroll(x);
        _viewer.render();
        settle();
    }
}

TEST_F(RptViewerTest, RedrawsAsOftenWhateverTheNumberOfRows)
{
    std::vector<Row> rows(20000, Row{"d/file", 40, 10});
    show(rows);
    const int before = _viewer.nRenders;
    _viewer.select(0);
    settle();
    EXPECT_EQ(_viewer.nRenders, before + 1);
}

TEST_F(RptViewerTest, WheelScrolls)
{
    show(std::vector<Row>(40, Row{"d/file", 40, 10}));
    XInput::click(display(), window(), 30, 30, 1, 5);
    EXPECT_TRUE(waitFor([this] { return _viewer.view()._y == 3; }));
    XInput::click(display(), window(), 30, 30, 1, 4);
    EXPECT_TRUE(waitFor([this] { return _viewer.view()._y == 0; }));
}

TEST_F(RptViewerTest, HelpKeyAsksForHelpAlthoughTheTranslationsLeaveItOut)
{
    show({{"d/alpha", 40, 10}});
    XInput::click(display(), window(), 30, 30);
    XInput::key(display(), XK_F1);
    EXPECT_TRUE(waitFor([this] { return _viewer.nHelps == 1; }));
    settle();
    EXPECT_EQ(_viewer.nHelps, 1);
}

TEST_F(RptViewerTest, ARequestForHelpIsAnsweredOnceAndByNobodyOnceTheViewerIsGone)
{
    XtCallCallbacks(_viewer.baseWidget(), XmNhelpCallback, nullptr);
    EXPECT_EQ(_viewer.nHelps, 1);

    auto deleted = std::make_unique<RptViewer>("deleted");
    CellWindow window(*deleted);
    window.initialize();
    Widget base = deleted->baseWidget();
    EXPECT_EQ(XtHasCallbacks(base, XmNhelpCallback), XtCallbackHasSome);
    deleted.reset();
    EXPECT_EQ(XtHasCallbacks(base, XmNhelpCallback), XtCallbackHasNone);
    EXPECT_EQ(XtHasCallbacks(base, XmNdestroyCallback), XtCallbackHasNone);
}

// A window around a report with a button before and one after it.
class ReportBetweenButtons : public qipWindow
{
public:
    explicit ReportBetweenButtons(RptViewer& viewer) : qipWindow("between"), _viewer(viewer) {}

    Widget createWorkArea(Widget parent) override
    {
        _clientArea = XtVaCreateManagedWidget("panes", xmPanedWindowWidgetClass, parent, nullptr);
        Widget before =
            XtVaCreateManagedWidget("before", xmPushButtonWidgetClass, _clientArea, nullptr);
        _viewer.install(this);
        Widget after =
            XtVaCreateManagedWidget("after", xmPushButtonWidgetClass, _clientArea, nullptr);
        for (Widget button : {before, after}) {
            XtVaSetValues(button, XmNnavigationType, XmTAB_GROUP, nullptr);
        }
        return _clientArea;
    }

private:
    RptViewer& _viewer;
};

TEST_F(RptViewerTest, TabAndShiftTabLeaveTheReport)
{
    CountingViewer viewer;
    ReportBetweenButtons window(viewer);
    window.initialize();
    window.manage();
    ASSERT_TRUE(waitFor([&] { return isViewable(viewer.clientArea()); }));
    const auto focus = [&] {
        return XmGetFocusWidget(window.baseWidget());
    };
    const auto comesTo = [&](Widget widget) {
        return waitFor([&] { return focus() == widget; });
    };
    XInput::click(display(), XtWindow(viewer.clientArea()), 30, 30);
    ASSERT_TRUE(comesTo(viewer.clientArea()));
    XInput::key(display(), XK_Tab);
    ASSERT_TRUE(waitFor([&] { return focus() != viewer.clientArea(); }));
    Widget next = focus();
    XInput::key(display(), XK_Tab, XK_Shift_L);
    ASSERT_TRUE(comesTo(viewer.clientArea()));
    XInput::key(display(), XK_Tab, XK_Shift_L);
    ASSERT_TRUE(waitFor([&] { return focus() != viewer.clientArea(); }));
    EXPECT_NE(focus(), next) << "the other way";
}

TEST_F(RptViewerTest, KeysWithControlSelectAndScrollToTheRow)
{
    show(std::vector<Row>(40, Row{"d/file", 40, 10}));
    XInput::click(display(), window(), 30, 30);
    ASSERT_TRUE(waitFor([this] { return _viewer.selection() == 1; }));
    struct Step
    {
        KeySym key;
        int row;
        int top; // the first visible row
    };
    const Step steps[] = {{XK_Down, 2, 0}, {XK_Up, 1, 0},   {XK_End, 39, 33}, {XK_Down, 39, 33},
                          {XK_Up, 38, 33}, {XK_Home, 0, 0}, {XK_Up, 0, 0}};
    for (const Step& step : steps) {
        XInput::key(display(), step.key, XK_Control_L);
        EXPECT_TRUE(waitFor([&] {
            return _viewer.selection() == step.row && _viewer.view()._y == step.top;
        })) << XKeysymToString(step.key)
            << " leads to " << _viewer.selection() << ", " << _viewer.view()._y;
    }
}

TEST_F(RptViewerTest, KeysOnAnEmptyReportSelectNothing)
{
    show({});
    XInput::click(display(), window(), 30, 30);
    XInput::key(display(), XK_Down, XK_Control_L);
    XInput::key(display(), XK_End, XK_Control_L);
    settle();
    EXPECT_EQ(_viewer.selection(), -1);
}

TEST_F(RptViewerTest, KeysScroll)
{
    show(std::vector<Row>(40, Row{"d/file", 40, 10}));
    XInput::click(display(), window(), 30, 30);
    XInput::key(display(), XK_Page_Down);
    EXPECT_TRUE(waitFor([this] { return _viewer.view()._y == _viewer.view()._dy - 1; }));
    XInput::key(display(), XK_Up);
    EXPECT_TRUE(waitFor([this] { return _viewer.view()._y == _viewer.view()._dy - 2; }));
}

TEST_F(RptViewerTest, AnEventOnAStrangersWidgetIsReported)
{
    StdErr err;
    XEvent event = {};
    XtCallActionProc(_window->baseWidget(), "select", &event, nullptr, 0);
    XtCallActionProc(_window->baseWidget(), "browse", &event, nullptr, 0);
    EXPECT_EQ(err.text(), " **** RptViewer::click_cbk() : unknown client!\n"
                          " **** RptViewer::click_cbk() : unknown client!\n");
}

TEST_F(RptViewerTest, BrowseWithoutASelectDoesNothing)
{
    // There is no report area to be called.
    _viewer.browse();
}

TEST_F(RptViewerTest, ADestroyedWidgetIsForgotten)
{
    show({{"d/alpha", 40, 10}});
    XtDestroyWidget(_window->baseWidget());
    settle();
    EXPECT_EQ(_viewer.clientArea(), nullptr);
    _viewer.select(0);
}

} // namespace
