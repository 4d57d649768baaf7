// The commands of menu and tool bar, by real clicks and keys.
#include "tests/support/gtest_x.h"

#include "qip/Components/qipQuitCommand.h"
#include "tests/support/Pixels.h"
#include "tests/support/StdErr.h"
#include "tests/support/XInput.h"
#include "tests/widget/zem/Window/MainWindowFixture.h"
#include "zem/Buttons/CloseBtn.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptViewer.h"
#include "zem/Window/AboutBtn.h"
#include "zem/Window/ExitBtn.h"
#include "zem/Window/HMenuBtn.h"
#include "zem/Window/HelpBtn.h"
#include "zem/Window/LoadBtn.h"
#include "zem/Window/RptTpBtn.h"
#include "zem/Window/SortBtn.h"
#include "zem/Window/SrcBtn.h"

#include <X11/IntrinsicP.h>
#include <X11/keysym.h>
#include <Xm/FileSB.h>
#include <Xm/List.h>
#include <Xm/SelectioB.h>
#include <Xm/TextF.h>

#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Counts instead of ending the test.
class CountingQuit : public qipQuitCommand
{
public:
    CountingQuit() : qipQuitCommand("anotherQuitCommand", 0) {}
    int doit() override
    {
        ++nCalls;
        return 0;
    }
    int nCalls = 0;
};

class CommandsTest : public MainWindowFixture
{
protected:
    void SetUp() override
    {
        unsetenv("VORANDEL");
        MainWindowFixture::SetUp();
        theQuitCommand = &_quit;
        if (!HasFatalFailure()) {
            load();
            theReportContainer->report();
            focus();
        }
    }

    void TearDown() override
    {
        MainWindowFixture::TearDown();
        theQuitCommand = nullptr;
    }

    // Clicks into the middle of a widget or gadget.
    void click(Widget target)
    {
        Widget window = XtIsWidget(target) ? target : XtParent(target);
        Position x = 0;
        Position y = 0;
        Dimension width = 0;
        Dimension height = 0;
        XtVaGetValues(target, XmNx, &x, XmNy, &y, XmNwidth, &width, XmNheight, &height, nullptr);
        const bool inner = window == target;
        XInput::click(display(), XtWindow(window), (inner ? 0 : x) + width / 2,
                      (inner ? 0 : y) + height / 2);
    }

    // Has another process click into the middle of a widget, again and again until it is ended: a
    // click that comes before this process waits for one is lost.
    pid_t startClicking(Widget target)
    {
        const Window window = XtWindow(target);
        const std::string server = DisplayString(display());
        const pid_t process = fork();
        if (process == 0) {
            Display* own = XOpenDisplay(server.c_str());
            for (;;) {
                poll(nullptr, 0, 500);
                XWindowAttributes attributes = {};
                XGetWindowAttributes(own, window, &attributes);
                XInput::click(own, window, attributes.width / 2, attributes.height / 2);
            }
        }
        return process;
    }

    // The pick happens while the press of the help button is still being handled, so that somebody
    // else has to make it.
    void expectContextHelp(Widget target, const char* topic)
    {
        click(tool("helpBtn"));
        const pid_t clicking = startClicking(target);
        EXPECT_TRUE(waitFor([&] { return helpShows(topic); }));
        kill(clicking, SIGKILL);
        waitpid(clicking, nullptr, 0);
    }

    Widget tool(const char* name) const
    {
        return findWidget(findWidget(findWidget(widget("workarea"), "toolbar"), name), "_button");
    }

    void pressTool(const char* name)
    {
        click(tool(name));
        settle();
    }

    // The keyboard goes where a click was.
    void focus()
    {
        // A window that is just going away may still take the first click.
        EXPECT_TRUE(waitFor([&] {
            click(widget("coverageSummary"));
            return hasKeyboard(_window->baseWidget());
        }));
        settle();
    }

    bool hasKeyboard(Widget shell) const
    {
        Window window = 0;
        int revert = 0;
        XGetInputFocus(display(), &window, &revert);
        return window == XtWindow(shell);
    }

    // Opens a menu and takes an entry by their mnemonics.
    void choose(KeySym menu, KeySym entry)
    {
        focus();
        XInput::key(display(), menu, XK_Alt_L);
        Widget shell = findWidget(widget("menu"), "popup_File");
        ASSERT_TRUE(waitFor([&] { return shell == nullptr || isViewable(shell); }));
        XInput::key(display(), entry);
        settle();
    }

    // The dialogs of this name that exist, and the last one.
    int countOf(const std::string& name) const
    {
        int n = 0;
        for (Cardinal i = 0; i < appShell()->core.num_popups; ++i) {
            n += findWidget(appShell()->core.popup_list[i], name) != nullptr ? 1 : 0;
        }
        return n;
    }

    Widget dialog(const std::string& name) const
    {
        Widget last = nullptr;
        for (Cardinal i = 0; i < appShell()->core.num_popups; ++i) {
            Widget found = findWidget(appShell()->core.popup_list[i], name);
            last = found != nullptr ? found : last;
        }
        return last;
    }

    bool isUp(const std::string& name) const
    {
        return dialog(name) != nullptr && isViewable(dialog(name));
    }

    // Waits for a dialog, and for the keyboard to be its.
    Widget opened(const std::string& name)
    {
        EXPECT_TRUE(waitFor([&] { return isUp(name); })) << name;
        EXPECT_TRUE(waitFor([&] { return hasKeyboard(XtParent(dialog(name))); })) << name;
        settle();
        return dialog(name);
    }

    bool closed(const std::string& name)
    {
        return waitFor([&] { return !isUp(name); });
    }

    void closeByWindowManager(const std::string& name)
    {
        XInput::closeWindow(display(), XtWindow(XtParent(dialog(name))));
        EXPECT_TRUE(closed(name));
    }

    static Widget child(Widget box, unsigned char which)
    {
        return XmSelectionBoxGetChild(box, which);
    }

    static void enter(Widget box, const char* text)
    {
        Widget field = child(box, XmDIALOG_TEXT);
        if (XmIsTextField(field)) {
            XmTextFieldSetString(field, const_cast<char*>(text));
        } else {
            XtVaSetValues(field, XmNvalue, text, nullptr);
        }
    }

    void screenshot(const char* name)
    {
        settle();
        saveScreenshot(display(), DefaultRootWindow(display()), name);
    }

    bool helpShows(const std::string& topic) const
    {
        const HelpWindow* help = HelpWindow::theWindow();
        return help != nullptr && isViewable(help->baseWidget()) &&
               help->viewer().browser().filename() != nullptr &&
               std::string(help->viewer().browser().filename()).find("/" + topic + ".hlp") !=
                   std::string::npos;
    }

    CountingQuit _quit;
};

constexpr char LoadName[] = "fileSelection";
constexpr char TypeName[] = "rptType";
constexpr char SortName[] = "Select sorting criteria";

TEST_F(CommandsTest, LoadAddsTheChosenLog)
{
    pressTool("selectBtn");
    Widget box = opened(LoadName);
    screenshot("dialog-load");
    enter(box, _dir.path("p.log").c_str());
    click(child(box, XmDIALOG_OK_BUTTON));
    EXPECT_TRUE(closed(LoadName));
    // The same log twice: twice the blocks.
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 8 tested, 2 untested, 80% coverage");
    pressTool("selectBtn");
    opened(LoadName);
    EXPECT_EQ(countOf(LoadName), 2);
}

TEST_F(CommandsTest, LoadTakesEnterAndEscape)
{
    pressTool("selectBtn");
    enter(opened(LoadName), _dir.path("p.log").c_str());
    XInput::key(display(), XK_Return);
    EXPECT_TRUE(closed(LoadName));
    EXPECT_EQ(labelText("coverageSummary"), " Blocks: 8 tested, 2 untested, 80% coverage");
    pressTool("selectBtn");
    opened(LoadName);
    XInput::key(display(), XK_Escape);
    EXPECT_TRUE(closed(LoadName));
    pressTool("selectBtn");
    opened(LoadName);
}

TEST_F(CommandsTest, LoadOfAnEmptyNameStaysUp)
{
    pressTool("selectBtn");
    Widget box = opened(LoadName);
    enter(box, "");
    click(child(box, XmDIALOG_OK_BUTTON));
    settle();
    EXPECT_TRUE(isUp(LoadName));
    closeByWindowManager(LoadName);
    pressTool("selectBtn");
    opened(LoadName);
}

TEST_F(CommandsTest, LoadOfADirectoryIsReportedAndEnds)
{
    StdErr err;
    pressTool("selectBtn");
    Widget box = opened(LoadName);
    enter(box, _dir.path().c_str());
    click(child(box, XmDIALOG_OK_BUTTON));
    EXPECT_TRUE(closed(LoadName));
    EXPECT_EQ(err.text(),
              " *** RptArea::report: Error processing " + _dir.path() + ": file corrupt\n");
}

TEST_F(CommandsTest, LoadHasItsTitleAndPattern)
{
    pressTool("selectBtn");
    Widget box = opened(LoadName);
    char* title = nullptr;
    ASSERT_NE(XFetchName(display(), XtWindow(XtParent(box)), &title), 0);
    EXPECT_STREQ(title, "Select ZEM log file");
    XFree(title);
    EXPECT_FALSE(XtIsManaged(child(box, XmDIALOG_HELP_BUTTON)));
}

// How many characters of a list can be seen.
int columns(Widget list)
{
    Dimension width = 0;
    Dimension margin = 0;
    Dimension shadow = 0;
    Dimension highlight = 0;
    XmFontList fonts = nullptr;
    XtVaGetValues(list, XmNwidth, &width, XmNlistMarginWidth, &margin, XmNshadowThickness, &shadow,
                  XmNhighlightThickness, &highlight, XmNfontList, &fonts, nullptr);
    XmString letter = XmStringCreateLocalized(const_cast<char*>("m"));
    const int each = XmStringWidth(fonts, letter);
    XmStringFree(letter);
    return (width - 2 * (margin + shadow + highlight)) / each;
}

TEST_F(CommandsTest, LoadsListsShowSixtyCharactersAndKeepTheirWidth)
{
    const std::string longName(120, 'n');
    _dir.write("logs/" + longName + ".log", "");
    _dir.write("empty/none", "");
    _application->addDefaults(ZEM_SOURCE_DIR "/resources/app-defaults/zem");
    pressTool("selectBtn");
    Widget box = opened(LoadName);
    settle();
    Dimension before = 0;
    XtVaGetValues(box, XmNwidth, &before, nullptr);
    EXPECT_LT(before, 1024 - 30);
    for (const char* folder : {"/empty/*.log", "/logs/*.log", "/*"}) {
        XmString mask = XmStringCreateLocalized(const_cast<char*>((_dir.path() + folder).c_str()));
        XmFileSelectionDoSearch(box, mask);
        XmStringFree(mask);
        settle();
        EXPECT_GE(columns(XmFileSelectionBoxGetChild(box, XmDIALOG_DIR_LIST)), 60) << folder;
        EXPECT_GE(columns(child(box, XmDIALOG_LIST)), 60) << folder;
        Dimension after = 0;
        XtVaGetValues(box, XmNwidth, &after, nullptr);
        EXPECT_EQ(after, before) << folder;
        if (std::string(folder) == "/logs/*.log") {
            screenshot("dialog-load-long-names");
        }
    }
    // A user's own width is shared, too.
    XtVaSetValues(XtParent(box), XmNwidth, 500, nullptr);
    settle();
    EXPECT_NEAR(columns(XmFileSelectionBoxGetChild(box, XmDIALOG_DIR_LIST)),
                columns(child(box, XmDIALOG_LIST)), 1);
    // Each heading is as wide as its list.
    const auto width = [](Widget widget) {
        Dimension result = 0;
        XtVaGetValues(widget, XmNwidth, &result, nullptr);
        return result;
    };
    EXPECT_EQ(width(XmFileSelectionBoxGetChild(box, XmDIALOG_DIR_LIST_LABEL)),
              width(XtParent(XmFileSelectionBoxGetChild(box, XmDIALOG_DIR_LIST))));
    EXPECT_EQ(width(XmFileSelectionBoxGetChild(box, XmDIALOG_LIST_LABEL)),
              width(XtParent(XmFileSelectionBoxGetChild(box, XmDIALOG_LIST))));
}

TEST_F(CommandsTest, ADialogThatIsUpIsNotOpenedAgain)
{
    pressTool("sortBtn");
    opened(SortName);
    pressTool("sortBtn");
    choose(XK_f, XK_s);
    EXPECT_EQ(countOf(SortName), 1);
    // Another command's may.
    pressTool("rptTpBtn");
    opened(TypeName);
}

TEST_F(CommandsTest, ReportsShowsTheTypeThatIsPicked)
{
    pressTool("rptTpBtn");
    Widget box = opened(TypeName);
    screenshot("dialog-reports");
    EXPECT_FALSE(XtIsManaged(child(box, XmDIALOG_HELP_BUTTON)));
    EXPECT_FALSE(XtIsManaged(child(box, XmDIALOG_APPLY_BUTTON)));
    XmListSelectPos(child(box, XmDIALOG_LIST), 3, True);
    click(child(box, XmDIALOG_OK_BUTTON));
    EXPECT_TRUE(closed(TypeName));
    EXPECT_EQ(theReportContainer->reportType(), RptByFunction);
    EXPECT_EQ(labelText("msgLbl"), "Report: by function, Sort keys: ");
}

TEST_F(CommandsTest, ReportsTakesTypedNames)
{
    const std::pair<const char*, RptType> types[] = {{"Class", RptByClass},
                                                     {"Directory", RptByDirectory},
                                                     {"Function", RptByFunction},
                                                     {"File", RptByFile}};
    for (const auto& type : types) {
        pressTool("rptTpBtn");
        enter(opened(TypeName), type.first);
        XInput::key(display(), XK_Return);
        EXPECT_TRUE(closed(TypeName));
        EXPECT_EQ(theReportContainer->reportType(), type.second) << type.first;
    }
}

TEST_F(CommandsTest, ReportsRefusesOtherNames)
{
    for (const char* name : {"class", "", "Functions"}) {
        pressTool("rptTpBtn");
        Widget box = opened(TypeName);
        enter(box, name);
        click(child(box, XmDIALOG_OK_BUTTON));
        EXPECT_TRUE(closed(TypeName));
        EXPECT_EQ(labelText("msgLbl"), " Invalid selection!") << name;
        EXPECT_EQ(theReportContainer->reportType(), RptByFile);
    }
}

TEST_F(CommandsTest, ReportsCancelledByAnyWayCanBeOpenedAgain)
{
    pressTool("rptTpBtn");
    click(child(opened(TypeName), XmDIALOG_CANCEL_BUTTON));
    EXPECT_TRUE(closed(TypeName));
    pressTool("rptTpBtn");
    opened(TypeName);
    XInput::key(display(), XK_Escape);
    EXPECT_TRUE(closed(TypeName));
    pressTool("rptTpBtn");
    opened(TypeName);
    closeByWindowManager(TypeName);
    pressTool("rptTpBtn");
    opened(TypeName);
    EXPECT_EQ(theReportContainer->reportType(), RptByFile);
}

TEST_F(CommandsTest, SortTakesTypedKeys)
{
    pressTool("sortBtn");
    opened(SortName);
    screenshot("dialog-sort");
    XInput::type(display(), "bd");
    XInput::key(display(), XK_Return);
    EXPECT_TRUE(closed(SortName));
    EXPECT_EQ(labelText("msgLbl"), "Report: by file, Sort keys: bd");
    EXPECT_EQ(countOf(SortName), 0);
    pressTool("sortBtn");
    opened(SortName);
}

TEST_F(CommandsTest, SortWithoutKeysStaysUp)
{
    pressTool("sortBtn");
    Widget box = opened(SortName);
    click(child(box, XmDIALOG_OK_BUTTON));
    settle();
    EXPECT_TRUE(isUp(SortName));
    click(child(box, XmDIALOG_HELP_BUTTON));
    EXPECT_TRUE(waitFor([&] { return helpShows("toolbar"); }));
    EXPECT_TRUE(isUp(SortName));
}

TEST_F(CommandsTest, SortCancelledByAnyWayIsGone)
{
    pressTool("sortBtn");
    click(child(opened(SortName), XmDIALOG_CANCEL_BUTTON));
    EXPECT_TRUE(closed(SortName));
    pressTool("sortBtn");
    opened(SortName);
    XInput::key(display(), XK_Escape);
    EXPECT_TRUE(closed(SortName));
    pressTool("sortBtn");
    opened(SortName);
    closeByWindowManager(SortName);
    settle();
    EXPECT_EQ(countOf(SortName), 0);
    pressTool("sortBtn");
    opened(SortName);
    EXPECT_EQ(labelText("msgLbl"), "Report: by file, Sort keys: ");
}

TEST_F(CommandsTest, MenusOpenTheSameDialogs)
{
    choose(XK_f, XK_l);
    opened(LoadName);
    closeByWindowManager(LoadName);
    choose(XK_f, XK_r);
    opened(TypeName);
    closeByWindowManager(TypeName);
    choose(XK_f, XK_s);
    opened(SortName);
    closeByWindowManager(SortName);
}

TEST_F(CommandsTest, ExitExecutesTheQuitCommand)
{
    pressTool("exitBtn");
    EXPECT_TRUE(waitFor([&] { return _quit.nCalls == 1; }));
    choose(XK_f, XK_x);
    EXPECT_TRUE(waitFor([&] { return _quit.nCalls == 2; }));
    XInput::closeWindow(display(), XtWindow(_window->baseWidget()));
    EXPECT_TRUE(waitFor([&] { return _quit.nCalls == 3; }));
}

TEST_F(CommandsTest, BrowseTogglesTheSource)
{
    pressTool("srcBtn");
    EXPECT_TRUE(theReportContainer->browsing());
    choose(XK_f, XK_b);
    EXPECT_TRUE(waitFor([&] { return !theReportContainer->browsing(); }));
}

TEST_F(CommandsTest, HelpMenuShowsItsTopics)
{
    choose(XK_h, XK_o);
    EXPECT_TRUE(waitFor([&] { return helpShows("overview"); }));
    screenshot("help-overview");
    HelpWindow::theWindow()->close();
    settle();
    choose(XK_h, XK_t);
    EXPECT_TRUE(waitFor([&] { return helpShows("toolbar"); }));
    HelpWindow::theWindow()->close();
    settle();
    choose(XK_h, XK_r);
    EXPECT_TRUE(waitFor([&] { return helpShows("reports"); }));
    HelpWindow::theWindow()->close();
    settle();
    choose(XK_h, XK_a);
    EXPECT_TRUE(waitFor([&] { return helpShows("about"); }));
    EXPECT_EQ(labelText("File"), "File");
    EXPECT_EQ(labelText("Help"), "Help");
    EXPECT_EQ(labelText("overview"), "Overview");
    EXPECT_EQ(labelText("toolbar"), "On toolbar");
    EXPECT_EQ(labelText("reports"), "On reports");
    EXPECT_EQ(labelText("aboutBtn"), "About zem...");
}

TEST_F(CommandsTest, CommandsAndPartsOfTheWindowKnowTheirClasses)
{
    EXPECT_STREQ(AboutBtn().className(), "AboutBtn");
    EXPECT_STREQ(CloseBtn(_window.get(), nullptr).className(), "CloseBtn");
    EXPECT_STREQ(ExitBtn().className(), "ExitBtn");
    EXPECT_STREQ(HMenuBtn("about", "About").className(), "HMenuBtn");
    EXPECT_STREQ(HelpBtn(_window.get(), nullptr, nullptr).className(), "HelpBtn");
    EXPECT_STREQ(LoadBtn().className(), "LoadBtn");
    EXPECT_STREQ(RptTpBtn().className(), "RptTpBtn");
    EXPECT_STREQ(SortBtn().className(), "SortBtn");
    EXPECT_STREQ(SrcBtn().className(), "SrcBtn");
    EXPECT_STREQ(_window->className(), "ZEMWindow");
    EXPECT_STREQ(theReportContainer->className(), "RptArea");
    EXPECT_STREQ(theReportContainer->rptViewer().className(), "RptViewer");
    EXPECT_STREQ(theStatusBar->className(), "ZEMStsBar");
}

TEST_F(CommandsTest, CloseButtonHidesTheHelpUntilTheNextRequest)
{
    HelpWindow::showHelpOn("overview");
    ASSERT_TRUE(waitFor([&] { return helpShows("overview"); }));
    settle();
    Widget help = HelpWindow::theWindow()->baseWidget();
    click(findWidget(findWidget(help, "closeBtn"), "_button"));
    EXPECT_TRUE(waitFor([&] { return !isViewable(help); }));
    HelpWindow::showHelpOn("about");
    EXPECT_TRUE(waitFor([&] { return helpShows("about"); }));
}

TEST_F(CommandsTest, ContextHelpOverTheStatusBarIsTheOverview)
{
    expectContextHelp(widget("coverageSummary"), "overview");
}

TEST_F(CommandsTest, ContextHelpOverAToolIsOnTheToolBarAndDoesNotPressIt)
{
    expectContextHelp(tool("sortBtn"), "toolbar");
    EXPECT_EQ(countOf(SortName), 0);
}

TEST_F(CommandsTest, ContextHelpOverTheReportIsOnReports)
{
    expectContextHelp(widget("rptViewer_vsb"), "reports");
}

TEST_F(CommandsTest, HelpKeyOverAButtonShowsItsTopic)
{
    XmProcessTraversal(tool("srcBtn"), XmTRAVERSE_CURRENT);
    settle();
    XInput::key(display(), XK_F1);
    EXPECT_TRUE(waitFor([&] { return helpShows("toolbar"); }));
}

TEST_F(CommandsTest, MenusLookRight)
{
    XInput::key(display(), XK_f, XK_Alt_L);
    settle();
    screenshot("menu-file");
    XInput::key(display(), XK_Escape);
    settle();
    XInput::key(display(), XK_h, XK_Alt_L);
    settle();
    screenshot("menu-help");
    XInput::key(display(), XK_Escape);
    settle();
}

} // namespace
