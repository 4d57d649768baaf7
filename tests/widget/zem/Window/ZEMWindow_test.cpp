#include "tests/support/gtest_x.h"

#include "tests/support/CellWindow.h"
#include "tests/support/Golden.h"
#include "tests/support/Pixels.h"
#include "tests/support/StdErr.h"
#include "tests/support/WidgetTree.h"
#include "tests/widget/zem/Window/MainWindowFixture.h"
#include "zem/Rows/ZEMView.h"

#include <Xm/Label.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

namespace {

class ZEMWindowTest : public MainWindowFixture
{};

TEST_F(ZEMWindowTest, WidgetTree)
{
    EXPECT_TRUE(matchesGolden("window/tree.txt", widgetTree(_window->baseWidget())));
}

TEST_F(ZEMWindowTest, TitleAndIconAreCalledZem)
{
    char* title = nullptr;
    ASSERT_NE(XFetchName(display(), XtWindow(_window->baseWidget()), &title), 0);
    EXPECT_STREQ(title, "zem");
    XFree(title);
    ASSERT_NE(XGetIconName(display(), XtWindow(_window->baseWidget()), &title), 0);
    EXPECT_STREQ(title, "zem");
    XFree(title);
}

// Whatever the files are called, the title is the program's own, a row is one row, and a message is
// one line that shows what it names.
TEST_F(ZEMWindowTest, HostileNamesForgeNeitherTitleNorRowNorMessage)
{
    const std::string path = "src/a\n\x1b]2;owned\x07.cpp";
    const std::string huge = "src/" + std::string(60000, 'x');
    const std::string map = mapFile({{path, {{"f\n\tg", 2, 9, {{2, 4}}}}},
                                     {huge, {{std::string(60000, 'y'), 2, 9, {{2, 4}}}}}})
                                .write(_dir.path("p\n.map"));
    const std::string log =
        logFile({{path, map, {4}}, {huge, map, {0}}}).write(_dir.path("p\x1b[2J.log"));
    const Box before = box("statusbar_work");
    ASSERT_EQ(theReportContainer->processFile(log.c_str()), 0);
    for (const RptType type : {RptByDirectory, RptByClass, RptByFunction, RptByFile}) {
        theReportContainer->reportType(type);
        theReportContainer->report();
        settle();
    }
    EXPECT_EQ(theReportContainer->table()._nItems, 2);
    theReportContainer->browse();
    settle();
    EXPECT_EQ(labelText("msgLbl"), "Could not open src/a\\x0a\\x1b]2;owned\\x07.cpp!");
    theStatusBar->displayMessage(("Could not open " + huge + "!").c_str());
    settle();
    expectStatusBarInOrder();
    EXPECT_EQ(box("statusbar_work").height, before.height);
    EXPECT_GT(box("statFrame").width, 100) << "the beginning of the message is seen";
    EXPECT_EQ(labelText("msgLbl"), ("Could not open " + huge).substr(0, 2000) + "...");
    for (const auto getName : {XFetchName, XGetIconName}) {
        char* title = nullptr;
        ASSERT_NE(getName(display(), XtWindow(_window->baseWidget()), &title), 0);
        EXPECT_STREQ(title, "zem");
        XFree(title);
    }
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "window-hostile-names");
}

// By what docks and task bars know its windows: the desktop entry names this class, too.
TEST_F(ZEMWindowTest, DocksGetItsClassAndItsIcon)
{
    Window window = XtWindow(_window->baseWidget());
    XClassHint hint = {};
    ASSERT_NE(XGetClassHint(display(), window, &hint), 0);
    EXPECT_STREQ(hint.res_class, "zem");
    XFree(hint.res_name);
    XFree(hint.res_class);
    int nProperties = 0;
    Atom* properties = XListProperties(display(), window, &nProperties);
    const Atom icon = XInternAtom(display(), "_NET_WM_ICON", False);
    EXPECT_EQ(std::count(properties, properties + nProperties, icon), 1);
    XFree(properties);
}

TEST_F(ZEMWindowTest, TheApplicationShellIsNeverSeen)
{
    EXPECT_FALSE(mapped(appShell()));
    Dimension width = 0;
    Position x = 0;
    XtVaGetValues(appShell(), XmNwidth, &width, XmNx, &x, nullptr);
    EXPECT_EQ(width, 1);
    EXPECT_EQ(x, XServer::Width / 2);
}

TEST_F(ZEMWindowTest, FirstSizeShowsTheWholeCanvas)
{
    const Box canvas = box("rptViewer");
    EXPECT_GE(canvas.width, 600);
    EXPECT_GE(canvas.height, 7 * 26);
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "window-empty");
}

TEST_F(ZEMWindowTest, SummaryStartsAtNothing)
{
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 0 tested, 0 untested, 0% coverage");
    EXPECT_EQ(labelText("msgLbl"), "");
}

TEST_F(ZEMWindowTest, ReportTellsTheStatusBar)
{
    load();
    theReportContainer->sortBy("dF");
    theReportContainer->report();
    settle();
    EXPECT_EQ(labelText("msgLbl"), "Report: by file, Sort keys: dF");
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 4 tested, 1 untested, 80% coverage");
    EXPECT_EQ(theReportContainer->table()._nItems, 2);
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "window-report");
}

TEST_F(ZEMWindowTest, TypesAreNamedInTheHeader)
{
    load();
    const std::pair<RptType, const char*> types[] = {{RptByDirectory, "directory"},
                                                     {RptByFunction, "function"},
                                                     {RptByClass, "class"},
                                                     {RptByFile, "file"},
                                                     {7, "file"}};
    for (const auto& type : types) {
        theReportContainer->reportType(type.first);
        theReportContainer->report();
        EXPECT_EQ(labelText("msgLbl"), std::string("Report: by ") + type.second + ", Sort keys: ");
    }
}

TEST_F(ZEMWindowTest, EmptyAndNullSortKeysKeepTheOld)
{
    load();
    theReportContainer->sortBy("dF");
    const char* kept = theReportContainer->info().sortKeys();
    theReportContainer->sortBy("");
    theReportContainer->sortBy(nullptr);
    theReportContainer->sortBy("dF");
    EXPECT_EQ(theReportContainer->info().sortKeys(), kept);
    theReportContainer->sortBy("%");
    EXPECT_STREQ(theReportContainer->info().sortKeys(), "%");
}

TEST_F(ZEMWindowTest, SortingBeforeAnyReportShowsTheEmptyTable)
{
    theReportContainer->sortBy("%");
    theReportContainer->sortAndView();
    EXPECT_EQ(labelText("msgLbl"), "Report: by file, Sort keys: %");
}

TEST_F(ZEMWindowTest, SortAndViewSortsWithoutLoading)
{
    load();
    theReportContainer->report();
    EXPECT_STREQ(theReportContainer->table()._view[0]->_label, "src/list.cpp");
    theReportContainer->sortBy("b");
    theReportContainer->sortAndView();
    EXPECT_STREQ(theReportContainer->table()._view[0]->_label, "src/main.cpp");
}

TEST_F(ZEMWindowTest, AFailedLogIsOneLineAndKeepsTheReport)
{
    load();
    theReportContainer->report();
    StdErr err;
    EXPECT_EQ(theReportContainer->processFile("/nonexistent/x.log"), -1);
    EXPECT_EQ(err.text(),
              " *** RptArea::report: Error processing /nonexistent/x.log: fopen failed\n");
    theReportContainer->report();
    EXPECT_EQ(theReportContainer->table()._nItems, 2);
}

TEST_F(ZEMWindowTest, BrowseWithoutRowsAndOfDirectoriesDoesNothing)
{
    theReportContainer->browse();
    load();
    theReportContainer->reportType(RptByDirectory);
    theReportContainer->report();
    theReportContainer->browse();
    EXPECT_EQ(findWidget(_window->baseWidget(), "srcViewer"), nullptr);
}

using Clock = std::chrono::system_clock; // the one that the toolkit's timers look at

TEST_F(ZEMWindowTest, MessagesGoBackToTheReportAfterTheirTime)
{
    load();
    theReportContainer->report();
    const auto start = Clock::now();
    theStatusBar->displayMessage("Could not open x!");
    EXPECT_EQ(labelText("msgLbl"), "Could not open x!");
    ASSERT_TRUE(waitFor([this] { return labelText("msgLbl") != "Could not open x!"; }));
    EXPECT_EQ(labelText("msgLbl"), "Report: by file, Sort keys: ");
    // No sooner than it should; how much later is the machine's business.
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(2990));
}

TEST_F(ZEMWindowTest, ASecondMessageHasItsOwnThreeSeconds)
{
    theStatusBar->displayMessage("first");
    const auto start = Clock::now();
    ASSERT_TRUE(waitFor([&] { return Clock::now() - start > std::chrono::milliseconds(2000); }));
    theStatusBar->displayMessage("second");
    const auto second = Clock::now();
    ASSERT_TRUE(waitFor([this] { return labelText("msgLbl") != "second"; }));
    EXPECT_EQ(labelText("msgLbl"), "");
    EXPECT_GE(Clock::now() - second, std::chrono::milliseconds(2990));
}

TEST_F(ZEMWindowTest, NullMessagesAreIgnored)
{
    theStatusBar->reportInfo("kept");
    theStatusBar->displayMessage(nullptr);
    theStatusBar->setPermanent(nullptr);
    theStatusBar->refresh();
    EXPECT_EQ(labelText("msgLbl"), "kept");
}

TEST_F(ZEMWindowTest, ControlBytesDoNotBreakTheStatusBar)
{
    theStatusBar->reportInfo("plain");
    settle();
    const Box before = box("statusbar_work");
    const Box report = box("rptArea");
    const struct
    {
        const char* message;
        const char* shown;
    } cases[] = {{"Could not open a\nb\nc!", "Could not open a\\x0ab\\x0ac!"},
                 {"\x01\x02\t\x7f", "\\x01\\x02\\x09\\x7f"},
                 {"na\xc3\xafve \xff\xfe", "na\xc3\xafve \\xff\\xfe"}};
    for (const auto& each : cases) {
        theStatusBar->displayMessage(each.message);
        settle();
        EXPECT_EQ(labelText("msgLbl"), each.shown);
        EXPECT_EQ(box("statusbar_work").height, before.height);
        EXPECT_EQ(box("rptArea").height, report.height);
        expectStatusBarInOrder();
    }
}

TEST_F(ZEMWindowTest, ThePermanentMessageSetBeforeWaitsForARefresh)
{
    theStatusBar->setPermanent("later");
    EXPECT_EQ(labelText("msgLbl"), "");
    theStatusBar->refresh();
    EXPECT_EQ(labelText("msgLbl"), "later");
}

TEST_F(ZEMWindowTest, SummaryDividesBeforeItMultiplies)
{
    theStatusBar->coverageSummary(71, 100);
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 29 tested, 71 untested, 28% coverage");
    theStatusBar->coverageSummary(0, 7);
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 7 tested, 0 untested, 100% coverage");
    theStatusBar->coverageSummary(3000000000L, 5000000000L);
    EXPECT_EQ(labelText("coverageSummary"),
              " Blocks: 2000000000 tested, 3000000000 untested, 40% coverage");
    expectStatusBarInOrder();
}

TEST_F(ZEMWindowTest, LongMessagesAreClippedBeforeTheSummary)
{
    const Box before = box("aWindow");
    theStatusBar->displayMessage(std::string(400, 'm').c_str());
    settle();
    expectStatusBarInOrder();
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "window-long-message");
    EXPECT_EQ(box("aWindow").width, before.width);
    theStatusBar->displayMessage("short");
    settle();
    EXPECT_LT(box("statFrame").width, 100);
}

TEST_F(ZEMWindowTest, TheFramesNeverOverlapHoweverNarrowTheWindowIs)
{
    theStatusBar->coverageSummary(71, 100);
    theStatusBar->reportInfo("Report: by function, Sort keys: dFf");
    settle();
    const Box whole = box("covFrame");
    const Box message = box("statFrame");
    ASSERT_GT(message.width, 150);
    for (const int width : {700, 400, 320, 280, 200}) {
        resize(width, 300);
        expectStatusBarInOrder();
        saveScreenshot(display(), XtWindow(_window->baseWidget()),
                       "window-narrow-" + std::to_string(width));
        // Another summary is fitted as well.
        theStatusBar->coverageSummary(1234567, 7654321);
        settle();
        expectStatusBarInOrder();
        theStatusBar->coverageSummary(71, 100);
    }
    resize(900, 300);
    EXPECT_EQ(box("covFrame").width, whole.width);
    EXPECT_EQ(box("statFrame").width, message.width);
}

// A status bar in a window of its own, which the window manager leaves alone: it has a least size.
class LoneStatusBarTest : public ZEMWindowTest
{
protected:
    void SetUp() override
    {
        ZEMWindowTest::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        _bar = new (_memory) ZEMStsBar("lone");
        _lone = std::make_unique<CellWindow>(*_bar);
        _lone->initialize();
        XtVaSetValues(_lone->baseWidget(), XmNoverrideRedirect, True, nullptr);
        _lone->manage();
        ASSERT_TRUE(waitFor([&] { return isViewable(_lone->baseWidget()); }));
        settle();
        _base = _bar->baseWidget();
    }

    void TearDown() override
    {
        if (_bar != nullptr) {
            _bar->~ZEMStsBar();
        }
        ZEMWindowTest::TearDown();
    }

    static int widthOf(Widget widget)
    {
        Dimension width = 0;
        XtVaGetValues(widget, XmNwidth, &width, nullptr);
        return width;
    }

    static int leftOf(Widget widget)
    {
        Position x = 0;
        XtVaGetValues(widget, XmNx, &x, nullptr);
        return x;
    }

    void resizeBar(int width)
    {
        XtVaSetValues(_lone->baseWidget(), XmNwidth, width, nullptr);
        ASSERT_TRUE(waitFor([&] { return widthOf(_base) == width; }));
        settle();
    }

    // Its bytes can be looked at when it is gone.
    alignas(ZEMStsBar) unsigned char _memory[sizeof(ZEMStsBar)];
    ZEMStsBar* _bar = nullptr;
    Widget _base = nullptr;
    std::unique_ptr<CellWindow> _lone;
};

TEST_F(LoneStatusBarTest, ItsFramesNeverOverlap)
{
    Widget message = findWidget(_base, "statFrame");
    Widget summary = findWidget(_base, "covFrame");
    _bar->reportInfo("Report: by function, Sort keys: dFf");
    for (const int width : {300, 100, 40, 20, 12, 11, 10, 9, 8, 7, 6, 5, 3, 1}) {
        resizeBar(width);
        EXPECT_EQ(leftOf(summary) + widthOf(summary), width);
        if (isViewable(message)) {
            EXPECT_EQ(leftOf(message), 0);
            EXPECT_LE(widthOf(message), leftOf(summary)) << width;
        } else {
            EXPECT_LT(width, 10) << "there is room for both";
        }
    }
    EXPECT_FALSE(isViewable(message));
    resizeBar(300);
    EXPECT_TRUE(isViewable(message));
}

TEST_F(LoneStatusBarTest, OnceDeletedItDoesNotHearOfItsWidgets)
{
    Widget message = findWidget(_base, "msgLbl");
    unsigned char living[sizeof _memory];
    std::memcpy(living, _memory, sizeof _memory);
    _bar->~ZEMStsBar();
    _bar = nullptr;
    // A handler that is still called works on what looks like the living object.
    std::memcpy(_memory, living, sizeof _memory);
    XtVaSetValues(message, XmNrecomputeSize, True, nullptr);
    resizeBar(345);
    Boolean recompute = False;
    XtVaGetValues(message, XmNrecomputeSize, &recompute, nullptr);
    EXPECT_TRUE(recompute) << "the message has been fitted";
}

TEST_F(ZEMWindowTest, TheReportTakesTheHeightThatTheStatusBarLeaves)
{
    load();
    theReportContainer->report();
    for (const auto& size : {std::pair<int, int>{1200, 900}, {400, 200}, {700, 500}}) {
        resize(size.first, size.second);
        const Box report = box("rptArea");
        const Box bar = box("statusbar_work");
        const Box area = box("workarea");
        EXPECT_EQ(bar.y + bar.height, area.y + area.height);
        EXPECT_EQ(report.y + report.height, bar.y);
        EXPECT_EQ(report.x, area.x);
        EXPECT_EQ(report.width, area.width);
        EXPECT_LT(bar.height, 40);
        expectStatusBarInOrder();
        saveScreenshot(display(), XtWindow(_window->baseWidget()),
                       "window-" + std::to_string(size.first) + "x" + std::to_string(size.second));
    }
}

TEST_F(ZEMWindowTest, ShrinkingKeepsTheCanvasFrameWhole)
{
    load();
    theReportContainer->report();
    resize(900, 600);
    resize(500, 300);
    Widget canvas = findWidget(_window->baseWidget(), "rptViewer");
    canvas = findWidget(canvas, "rptViewer");
    // The inner one of the two widgets of that name is the drawing area.
    WidgetList children = nullptr;
    Cardinal nChildren = 0;
    XtVaGetValues(canvas, XmNchildren, &children, XmNnumChildren, &nChildren, nullptr);
    Widget area = nullptr;
    for (Cardinal i = 0; i < nChildren; ++i) {
        if (std::string(XtName(children[i])) == "rptViewer") {
            area = children[i];
        }
    }
    ASSERT_NE(area, nullptr);
    Pixel bottomShadow = 0;
    XtVaGetValues(area, XmNbottomShadowColor, &bottomShadow, nullptr);
    const Pixels picture(display(), XtWindow(area));
    EXPECT_EQ(picture.runDown(picture.width() - 1, 1, bottomShadow), picture.height() - 1);
    EXPECT_EQ(picture.runRight(1, picture.height() - 1, bottomShadow), picture.width() - 1);
}

TEST_F(ZEMWindowTest, DestroyedWidgetsAreForgotten)
{
    theStatusBar->displayMessage("pending");
    XtDestroyWidget(_window->baseWidget());
    settle();
    EXPECT_EQ(theStatusBar->baseWidget(), nullptr);
    theStatusBar->displayMessage("nobody sees it");
    theStatusBar->coverageSummary(1, 2);
    theStatusBar->refresh();
}

} // namespace
