#include "tests/support/gtest_x.h"

#include "tests/support/CellWindow.h"
#include "tests/support/DataFiles.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Pixels.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"
#include "zem/Reports/RptArea.h"
#include "zem/Rows/ZEMView.h"
#include "zem/Status/ZEMStsBar.h"

#include <Xm/Xm.h>

#include <chrono>
#include <iostream>
#include <memory>
#include <string>

namespace {

// The report area without the rest of the main window, and without a status bar.
class RptAreaTest : public XtFixture
{
protected:
    static constexpr int Lines = 200;

    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        // As in the program, it stays: the display goes before it could.
        theReportContainer = _area = new RptArea("rptArea");
        _window = std::make_unique<CellWindow>(*_area);
        _window->open();
        ASSERT_TRUE(waitFor([this] { return XtIsRealized(_area->baseWidget()); }));
        load();
    }

    void TearDown() override
    {
        XtFixture::TearDown();
        theReportContainer = nullptr;
    }

    void load()
    {
        std::string text;
        for (int i = 1; i <= Lines; ++i) {
            text += "line " + std::to_string(i) + "\n";
        }
        const std::string a = _dir.write("src/a.cpp", text);
        const std::string b = _dir.write("src/b.cpp", text);
        const std::string gone = _dir.path("src/gone.cpp");
        const std::string map =
            mapFile({{a, {{"A::first", 1, 20, {{2, 4}}}, {"A::second", 101, 120, {{102, 104}}}}},
                     {b, {{"B::only", 51, 60, {{52, 53}}}}},
                     {gone, {{"lost", 5, 6, {{5, 5}}}}}})
                .write(_dir.path("p.map"));
        _log =
            logFile({{a, map, {4, 0}}, {b, map, {1}}, {gone, map, {1}}}).write(_dir.path("p.log"));
        ASSERT_EQ(_area->processFile(_log.c_str()), 0);
        settle();
    }

    // Makes the report and selects a row by a click on it.
    void report(RptType type, int row)
    {
        _area->reportType(type);
        _area->report();
        settle();
        select(row);
    }

    void select(int row)
    {
        const RptViewer& viewer = _area->rptViewer();
        waitOutDoubleClick();
        XInput::click(display(), XtWindow(viewer.clientArea()), 50,
                      (row - viewer.view()._y) * viewer.rowPixels() + 8);
        ASSERT_TRUE(waitFor([&] { return viewer.selection() == row; }));
    }

    // A click too soon after another is the second half of a double click.
    void waitOutDoubleClick()
    {
        const auto pause = std::chrono::milliseconds(XtGetMultiClickTime(display()) + 50);
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(waitFor([&] { return std::chrono::steady_clock::now() - start > pause; }));
    }

    bool sourceShows() const
    {
        Widget source = _area->srcViewer().baseWidget();
        return source != nullptr && XtIsManaged(source);
    }

    int firstSourceLine() const { return _area->srcViewer().view()._y + 1; }

    static int heightOf(Widget widget)
    {
        Dimension height = 0;
        XtVaGetValues(widget, XmNheight, &height, nullptr);
        return height;
    }

    void resizeWindow(int width, int height)
    {
        XtVaSetValues(_window->baseWidget(), XmNwidth, width, XmNheight, height, nullptr);
        ASSERT_TRUE(waitFor([&] { return heightOf(_window->baseWidget()) == height; }));
        settle();
    }

    TempDir _dir;
    RptArea* _area = nullptr;
    std::unique_ptr<CellWindow> _window;
    std::string _log;
};

TEST_F(RptAreaTest, WithoutAStatusBarItReportsAllTheSame)
{
    ASSERT_EQ(theStatusBar, nullptr);
    _area->report();
    EXPECT_EQ(_area->table()._nItems, 3);
    EXPECT_EQ(_area->rptViewer().selection(), 0);
}

TEST_F(RptAreaTest, EachReportSelectsItsFirstRowAgain)
{
    report(RptByFile, 2);
    _area->reportType(RptByFunction);
    _area->report();
    EXPECT_EQ(_area->rptViewer().selection(), 0);
    EXPECT_EQ(_area->table()._nItems, 4);
}

TEST_F(RptAreaTest, AnEmptyReportHasNoSelectionAndNoSource)
{
    _area->addFilter('F', "nothing");
    _area->report();
    EXPECT_EQ(_area->table()._nItems, 0);
    EXPECT_EQ(_area->rptViewer().selection(), -1);
    _area->browse();
    EXPECT_FALSE(_area->browsing());
}

TEST_F(RptAreaTest, AFileIsShownFromItsFirstLine)
{
    report(RptByFile, 1);
    _area->browse();
    settle();
    EXPECT_TRUE(_area->browsing());
    EXPECT_TRUE(sourceShows());
    EXPECT_EQ(firstSourceLine(), 1);
    EXPECT_EQ(_area->srcViewer().canvasHeight(), Lines + 1);
}

TEST_F(RptAreaTest, AFunctionIsShownFromTheLineAboveIt)
{
    report(RptByFunction, 1);
    _area->browse();
    settle();
    EXPECT_EQ(firstSourceLine(), 100);
}

TEST_F(RptAreaTest, AFunctionOnTheFirstLineLeavesTheSourceAsItWas)
{
    report(RptByFunction, 2);
    _area->browse();
    settle();
    EXPECT_EQ(firstSourceLine(), 50);
    select(0);
    _area->browse();
    settle();
    EXPECT_EQ(firstSourceLine(), 50);
}

TEST_F(RptAreaTest, AFunctionOnTheFirstLineOpensAnEmptySource)
{
    report(RptByFunction, 0);
    _area->browse();
    settle();
    EXPECT_TRUE(_area->browsing());
    EXPECT_TRUE(sourceShows());
}

TEST_F(RptAreaTest, DirectoriesAndClassesAreNotBrowsed)
{
    for (const RptType type : {RptByDirectory, RptByClass}) {
        report(type, 0);
        _area->browse();
        _area->browseToggle();
        EXPECT_FALSE(_area->browsing());
        EXPECT_EQ(_area->srcViewer().baseWidget(), nullptr);
    }
}

TEST_F(RptAreaTest, WithoutASelectionNothingIsBrowsed)
{
    _area->report();
    settle();
    const RptViewer& viewer = _area->rptViewer();
    XInput::click(display(), XtWindow(viewer.clientArea()), 50, 5 * viewer.rowPixels(), 2);
    ASSERT_TRUE(waitFor([&] { return viewer.selection() == -1; }));
    settle();
    EXPECT_FALSE(_area->browsing());
}

TEST_F(RptAreaTest, TheToggleHidesTheSourceAndShowsItAgain)
{
    report(RptByFile, 0);
    _area->browseToggle();
    settle();
    EXPECT_TRUE(sourceShows());
    _area->browseToggle();
    settle();
    EXPECT_FALSE(_area->browsing());
    EXPECT_FALSE(sourceShows());
    _area->browseToggle();
    settle();
    EXPECT_TRUE(_area->browsing());
    EXPECT_TRUE(sourceShows());
}

TEST_F(RptAreaTest, AReportTakesTheOpenSourceAlong)
{
    report(RptByFile, 1);
    _area->browse();
    _area->reportType(RptByFunction);
    _area->sortBy("f");
    _area->report();
    settle();
    // A::first begins on line 1 and leaves the source; the next report selects another function.
    EXPECT_EQ(firstSourceLine(), 1);
    _area->addFilter('f', "B::only");
    _area->report();
    settle();
    EXPECT_EQ(firstSourceLine(), 50);
}

TEST_F(RptAreaTest, SortingAloneLeavesTheOpenSource)
{
    report(RptByFunction, 2);
    _area->browse();
    settle();
    _area->sortBy("f");
    _area->sortAndView();
    settle();
    EXPECT_EQ(firstSourceLine(), 50);
}

TEST_F(RptAreaTest, RowsOfTheLastReportAreFreedBeforeTheyAreReplaced)
{
    for (int i = 0; i < 20; ++i) {
        report(i % 4, 0);
        _area->sortBy(i % 2 == 0 ? "%" : "dF");
        _area->sortAndView();
        settle();
    }
}

TEST_F(RptAreaTest, ADoubleClickBrowsesOnItsSecondRelease)
{
    report(RptByFunction, 0);
    const RptViewer& viewer = _area->rptViewer();
    XInput::moveTo(display(), XtWindow(viewer.clientArea()), 50, 2 * viewer.rowPixels() + 8);
    waitOutDoubleClick();
    XInput::press(display());
    ASSERT_TRUE(waitFor([&] { return viewer.selection() == 2; }));
    XInput::release(display());
    XInput::press(display());
    settle();
    EXPECT_FALSE(_area->browsing());
    XInput::release(display());
    EXPECT_TRUE(waitFor([&] { return _area->browsing(); }));
    EXPECT_EQ(firstSourceLine(), 50);
}

TEST_F(RptAreaTest, TheLeastHeightOfTheReportShowsTwoRowsAndTheScrollBar)
{
    report(RptByFile, 0);
    const RptViewer& viewer = _area->rptViewer();
    Dimension least = 0;
    XtVaGetValues(viewer.baseWidget(), XmNpaneMinimum, &least, nullptr);
    resizeWindow(400, least);
    EXPECT_EQ(heightOf(viewer.baseWidget()), least);
    EXPECT_EQ(viewer.view()._dy, 2);
    // Two rows between the frame's edges, which are two pixels wide.
    EXPECT_EQ(heightOf(viewer.clientArea()), 2 * viewer.rowPixels() + 4);
    Widget bar = findWidget(viewer.baseWidget(), "rptViewer_hsb");
    Position y = 0;
    XtVaGetValues(bar, XmNy, &y, nullptr);
    EXPECT_EQ(y + heightOf(bar), least);
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "area-least");
}

TEST_F(RptAreaTest, ANullLogIsNoLogAndSaysNothing)
{
    StdErr err;
    EXPECT_EQ(_area->processFile(nullptr), -11);
    std::cerr << "still there\n";
    EXPECT_EQ(err.text(), "still there\n");
    _area->report();
    EXPECT_EQ(_area->table()._nItems, 3);
}

TEST_F(RptAreaTest, AFirstBrowseShowsLinesOfTheSource)
{
    report(RptByFile, 0);
    _area->browse();
    settle();
    const int row = _area->srcViewer().rowPixels();
    EXPECT_GE(heightOf(_area->srcViewer().clientArea()), 8 * row);
    EXPECT_GE(heightOf(_area->rptViewer().clientArea()), 2 * _area->rptViewer().rowPixels());
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "area-browse");
}

TEST_F(RptAreaTest, ABrowseInASmallWindowShowsBothPanes)
{
    resizeWindow(400, 120);
    report(RptByFile, 0);
    _area->browse();
    settle();
    EXPECT_GE(heightOf(_area->srcViewer().clientArea()), 3 * _area->srcViewer().rowPixels());
    EXPECT_GE(heightOf(_area->rptViewer().baseWidget()), _area->rptViewer().rowPixels());
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "area-browse-small");
}

TEST_F(RptAreaTest, PanesFillAWindowOfTheWholeScreen)
{
    report(RptByFile, 0);
    _area->browse();
    settle();
    resizeWindow(1270, 2400);
    const int panes =
        heightOf(_area->srcViewer().baseWidget()) + heightOf(_area->rptViewer().baseWidget());
    EXPECT_GE(panes, 2400 - 40);
}

TEST_F(RptAreaTest, TogglingDoesNotMoveAWindowThatTheUserHasSized)
{
    report(RptByFile, 0);
    _area->browseToggle();
    settle();
    resizeWindow(700, 800);
    const int source = heightOf(_area->srcViewer().baseWidget());
    for (int i = 0; i < 3; ++i) {
        _area->browseToggle();
        settle();
        EXPECT_EQ(heightOf(_window->baseWidget()), 800);
        _area->browseToggle();
        settle();
        EXPECT_EQ(heightOf(_window->baseWidget()), 800);
        EXPECT_EQ(heightOf(_area->srcViewer().baseWidget()), source);
    }
}

TEST_F(RptAreaTest, AWindowTooSmallForTheSourceGrowsOnce)
{
    report(RptByFile, 0);
    const int before = heightOf(_window->baseWidget());
    _area->browseToggle();
    settle();
    const int grown = heightOf(_window->baseWidget());
    EXPECT_GT(grown, before);
    for (int i = 0; i < 4; ++i) {
        _area->browseToggle();
        settle();
        EXPECT_EQ(heightOf(_window->baseWidget()), grown);
    }
}

// Shows what the status bar was told last.
class RecordingStatusBar : public ZEMStsBar
{
public:
    RecordingStatusBar() : ZEMStsBar("statusBar") {}
    std::string shown() const { return _shown; }

protected:
    // Takes no memory: it is called where there is none.
    void showMessage(const char* text) override { snprintf(_shown, sizeof _shown, "%s", text); }

private:
    char _shown[128] = "";
};

TEST_F(RptAreaTest, WithoutMemoryForAReportTheOldOneStaysAndTheStatusBarSaysSo)
{
    RecordingStatusBar bar;
    CellWindow barWindow(bar);
    barWindow.open();
    theStatusBar = &bar;
    report(RptByFile, 0);
    const std::string shown = _area->table()._view[0]->_label;
    ASSERT_EQ(bar.shown(), "Report: by file, Sort keys: ");
    for (const RptType type : {RptByDirectory, RptByFile, RptByFunction, RptByClass}) {
        _area->reportType(type);
        _area->manglingLevel(0); // readable names end the program without memory
        long n = 1;
        while (FailingNew::run(n, FailingNew::FromThen, [this] { _area->report(); }) &&
               _area->isOutdated()) {
            EXPECT_EQ(bar.shown(), "Out of memory: this report is out of date!") << type << n;
            EXPECT_EQ(_area->table()._nItems, 3) << type << n;
            EXPECT_EQ(_area->table()._view[0]->_label, shown) << type << n;
            // A file's row, whatever was asked for.
            _area->browse();
            EXPECT_EQ(firstSourceLine(), 1) << type << n;
            _area->browseToggle();
            _area->sortAndView();
            EXPECT_EQ(bar.shown(), "Out of memory: this report is out of date!") << type << n;
            ++n;
        }
        EXPECT_GT(n, 3) << type;
        _area->reportType(RptByFile);
        _area->report();
        EXPECT_EQ(bar.shown(), "Report: by file, Sort keys: ") << type;
        settle();
    }
    theStatusBar = nullptr;
}

// Whoever loads a log of another build sees that its counts are not all there.
TEST_F(RptAreaTest, ALogThatDoesNotFitIsToldOnce)
{
    RecordingStatusBar bar;
    CellWindow barWindow(bar);
    barWindow.open();
    theStatusBar = &bar;
    _area->report();
    EXPECT_EQ(bar.shown(), "Report: by file, Sort keys: ");
    const std::string log =
        logFile({{"other.cpp", _dir.path("p.map"), {1}}}).write(_dir.path("other.log"));
    ASSERT_EQ(_area->processFile(log.c_str()), 0);
    _area->report();
    EXPECT_EQ(bar.shown(), "A log does not fit its maps: counts are wrong or missing!");
    EXPECT_EQ(_area->processFile(_log.c_str()), 0);
    _area->report();
    EXPECT_EQ(bar.shown(), "Report: by file, Sort keys: ");
    settle();
    theStatusBar = nullptr;
}

} // namespace
