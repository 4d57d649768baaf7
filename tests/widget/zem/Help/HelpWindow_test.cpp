// SPDX-License-Identifier: MIT
#include "tests/widget/zem/ViewerFixture.h"

#include "zem/Help/HelpWindow.h"

#include "qip/Support/ListIterator.h"
#include "zem/Reports/RptViewer.h"
#include "zem/Source/SrcViewer.h"
#include "zem/Status/ZEMStsBar.h"

#include <X11/Intrinsic.h>
#include <Xm/Xm.h>

#include <cstdlib>

class HelpWindowTest : public ViewerFixture
{
protected:
    void SetUp() override
    {
        unsetenv("VORANDEL");
        ViewerFixture::SetUp();
    }

    void ask(const char* topic)
    {
        HelpWindow::showHelpOn(topic);
        settle();
    }
    static HelpWindow& window() { return *HelpWindow::theWindow(); }
    bool isShown() const
    {
        return HelpWindow::theWindow() != nullptr && isViewable(window().baseWidget());
    }
    static std::string file()
    {
        const char* name = window().viewer().browser().filename();
        return name == nullptr ? "" : name;
    }
    int windows() const
    {
        int n = 0;
        ListIterator<qipWindow*> it(_application->windows());
        while (it.next() != nullptr) {
            ++n;
        }
        return n;
    }
};

TEST_F(HelpWindowTest, TopicOpensTheWindowWithItsText)
{
    EXPECT_EQ(HelpWindow::theWindow(), nullptr);
    ask("overview");
    ASSERT_TRUE(isShown());
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/overview.hlp");
    EXPECT_GT(window().viewer().browser().nLines(), 10);
    EXPECT_STREQ(window().className(), "HelpWindow");
    EXPECT_STREQ(window().name(), "Help");
    saveScreenshot(display(), XtWindow(window().baseWidget()), "help-window");
}

TEST_F(HelpWindowTest, SecondRequestReusesTheWindow)
{
    ask("overview");
    const HelpWindow* first = HelpWindow::theWindow();
    ask("overview");
    EXPECT_EQ(HelpWindow::theWindow(), first);
    EXPECT_EQ(windows(), 1);
    EXPECT_TRUE(isShown());
    ask("reports");
    EXPECT_EQ(windows(), 1);
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/reports.hlp");
}

TEST_F(HelpWindowTest, NewTopicStartsAtTheTop)
{
    ask("overview");
    const_cast<FileViewer&>(window().viewer()).viewPosition(0, 20);
    EXPECT_EQ(window().viewer().view()._y, 20);
    ask("reports");
    EXPECT_EQ(window().viewer().view()._y, 0);
    EXPECT_EQ(window().viewer().view()._x, 0);
}

TEST_F(HelpWindowTest, ClosedWindowIsHiddenAndShownAgain)
{
    ask("overview");
    window().close();
    settle();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(windows(), 1);
    ask("about");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(windows(), 1);
}

TEST_F(HelpWindowTest, WindowManagersCloseHidesIt)
{
    ask("overview");
    window().closeRequested();
    settle();
    EXPECT_FALSE(isShown());
    ask("overview");
    EXPECT_TRUE(isShown());
}

TEST_F(HelpWindowTest, FirstRequestWithoutATopicShowsNothing)
{
    ask(nullptr);
    ASSERT_NE(HelpWindow::theWindow(), nullptr);
    EXPECT_FALSE(isShown());
    ask("");
    EXPECT_FALSE(isShown());
    ask("overview");
    EXPECT_TRUE(isShown());
}

TEST_F(HelpWindowTest, RequestWithoutATopicLeavesAnOpenWindowOpen)
{
    ask("overview");
    ask("");
    ask(nullptr);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/overview.hlp");
}

TEST_F(HelpWindowTest, UnknownTopicShowsAnEmptyWindow)
{
    ask("overview");
    ask("no such topic");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(file(), "");
    EXPECT_EQ(window().viewer().canvasHeight(), 1);
}

TEST_F(HelpWindowTest, HomeDirectoryIsTakenFromTheVariable)
{
    const std::string help = _files.write("zem/help/own.hlp", "own text\n");
    setenv("VORANDEL", _files.path().c_str(), 1);
    ask("own");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(file(), help);
    setenv("VORANDEL", "", 1);
    ask("own");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(file(), "");
}

TEST_F(HelpWindowTest, NoNameOfAFileReachesTheTitleAndNoTextMovesIt)
{
    _files.write("zem\n\x1b]2;owned\x07/zem/help/own.hlp", "\x1b]2;owned\x07\n\x01\xff\r\n");
    setenv("VORANDEL", _files.path("zem\n\x1b]2;owned\x07").c_str(), 1);
    ask("own");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(window().viewer().browser().nLines(), 3);
    char* title = nullptr;
    ASSERT_NE(XFetchName(display(), XtWindow(window().baseWidget()), &title), 0);
    EXPECT_EQ(std::string(title).find("owned"), std::string::npos) << title;
    XFree(title);
}

TEST_F(HelpWindowTest, ViewersAndStatusBarHaveTheirTopics)
{
    const SrcViewer viewer("srcViewer");
    viewer.helpRequested();
    settle();
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/reports.hlp");
    const ZEMStsBar bar("statusBar");
    bar.helpRequested();
    settle();
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/overview.hlp");
    const RptViewer report("rptViewer");
    report.helpRequested();
    settle();
    EXPECT_EQ(file(), ZEM_BINARY_DIR "/share/zem/help/reports.hlp");
}

TEST_F(HelpWindowTest, WidgetsHaveTheirNames)
{
    ask("overview");
    const Widget shell = window().baseWidget();
    for (const char* name : {"*aWindow", "*aWindow.outerframe", "*outerframe.workarea",
                             "*workarea.fileViewer", "*fileViewer_vsb", "*fileViewer_hsb"}) {
        EXPECT_NE(XtNameToWidget(shell, name), nullptr) << name;
    }
}

TEST_F(HelpWindowTest, TextGrowsWithTheWindow)
{
    ask("overview");
    const int columns = window().viewer().view()._dx;
    const int rows = window().viewer().view()._dy;
    EXPECT_EQ(columns, 100);
    EXPECT_EQ(rows, 30);
    XtVaSetValues(window().baseWidget(), XmNwidth, 900, XmNheight, 800, nullptr);
    EXPECT_TRUE(waitFor([&] { return window().viewer().view()._dx > columns; }));
    EXPECT_GT(window().viewer().view()._dy, rows);
}

// A program whose name no help directory has.
class HelpWindowWithoutHomeTest : public HelpWindowTest
{
protected:
    std::unique_ptr<qipApplication> makeApplication() override
    {
        return std::make_unique<qipApplication>("nosuchprogram");
    }
};

TEST_F(HelpWindowWithoutHomeTest, NothingIsShown)
{
    ask("overview");
    EXPECT_FALSE(isShown());
    EXPECT_EQ(windows(), 1);
}
