#include "tests/support/gtest_x.h"

#include "qip/Base/qipWindow.h"
#include "qip/Support/ListIterator.h"
#include "tests/support/Pixels.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"

#include <X11/Shell.h>
#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <Xm/DrawingA.h>
#include <Xm/MainW.h>
#include <Xm/Protocols.h>
#include <Xm/Xm.h>

namespace {

// Its work area is a plain area of 200 x 100 pixels, left unmanaged.
class PlainWindow : public qipWindow
{
public:
    explicit PlainWindow(const char* name) : qipWindow(name) {}

    Widget createWorkArea(Widget parent) override
    {
        ++timesCreated;
        if (noWorkArea) {
            return nullptr;
        }
        return XtVaCreateWidget("area", xmDrawingAreaWidgetClass, parent, XmNwidth, 200, XmNheight,
                                100, nullptr);
    }

    Widget mainWidget() const { return _main; }
    Widget workArea() const { return _workArea; }

    int timesCreated = 0;
    bool noWorkArea = false;
};

bool isRegistered(qipApplication& application, qipWindow* window)
{
    ListIterator<qipWindow*> windows(application.windows());
    return windows.find(window) >= 0;
}

class qipWindowTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (!HasFatalFailure()) {
            XtRealizeWidget(appShell());
        }
    }

    void show(qipWindow& window)
    {
        window.manage();
        EXPECT_TRUE(waitFor([&] { return isViewable(window.baseWidget()); }));
        settle();
    }

    Window topWindow() const
    {
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned count = 0;
        XQueryTree(display(), DefaultRootWindow(display()), &root, &parent, &children, &count);
        const Window top = count == 0 ? 0 : children[count - 1];
        XFree(children);
        return top;
    }
};

using qipWindowDeathTest = qipWindowTest;

TEST_F(qipWindowTest, IsInTheApplicationsListForItsLife)
{
    auto* first = new PlainWindow("first");
    PlainWindow second("second");
    EXPECT_EQ(_application->windows().length(), 2);
    EXPECT_TRUE(isRegistered(*_application, first));
    EXPECT_TRUE(isRegistered(*_application, &second));
    delete first;
    EXPECT_EQ(_application->windows().length(), 1);
    EXPECT_TRUE(isRegistered(*_application, &second));
}

TEST_F(qipWindowDeathTest, WindowBeforeTheApplicationIsABug)
{
    EXPECT_DEATH(
        {
            theApplication = nullptr;
            PlainWindow window("window");
        },
        "qip/Base/qipWindow.cpp:.*Assertion `theApplication != 0' failed");
}

TEST_F(qipWindowTest, InitializeMakesShellMainWindowAndWorkArea)
{
    PlainWindow window("window");
    EXPECT_EQ(window.baseWidget(), nullptr);
    window.initialize();
    EXPECT_EQ(window.timesCreated, 1);
    EXPECT_EQ(widgetTree(window.baseWidget()), "window TopLevelShell\n"
                                               "  aWindow XmMainWindow\n"
                                               "    Separator1 XmSeparatorGadget\n"
                                               "    Separator2 XmSeparatorGadget\n"
                                               "    Separator3 XmSeparatorGadget\n"
                                               "    area XmDrawingArea\n");
    EXPECT_EQ(XtParent(window.baseWidget()), appShell());
    Widget workWindow = nullptr;
    XtVaGetValues(window.mainWidget(), XmNworkWindow, &workWindow, nullptr);
    EXPECT_EQ(workWindow, window.workArea());
    EXPECT_STREQ(window.className(), "qipWindow");
}

TEST_F(qipWindowTest, ShellMayBeResizedByItsContentsAndSurvivesItsClosing)
{
    PlainWindow window("window");
    window.initialize();
    Boolean allowed = False;
    unsigned char response = XmDESTROY;
    XtVaGetValues(window.baseWidget(), XmNallowShellResize, &allowed, XmNdeleteResponse, &response,
                  nullptr);
    EXPECT_EQ(allowed, True);
    EXPECT_EQ(response, XmDO_NOTHING);
}

TEST_F(qipWindowDeathTest, WindowWithoutWorkAreaIsABug)
{
    PlainWindow window("window");
    window.noWorkArea = true;
    EXPECT_DEATH(window.initialize(), "qipWindow.cpp:.*Assertion `_workArea != 0' failed");
}

TEST_F(qipWindowDeathTest, OperationsBeforeInitializeAreBugs)
{
    PlainWindow window("window");
    EXPECT_DEATH(window.manage(), "qipWindow.cpp:.*Assertion `_base != 0' failed");
    EXPECT_DEATH(window.unmanage(), "qipWindow.cpp:.*Assertion `_base != 0' failed");
    EXPECT_DEATH(window.close(), "qipWindow.cpp:.*Assertion `_base != 0' failed");
    EXPECT_DEATH(window.iconify(), "qipWindow.cpp:.*Assertion `_base != 0' failed");
}

// A shell of the toolkit's own class instead of Motif's dies here: the libraries' order counts.
TEST_F(qipWindowTest, ManagePopsUpAtTheSizeOfTheWorkArea)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    const Pixels pixels(display(), XtWindow(window.baseWidget()));
    EXPECT_EQ(pixels.width(), 200);
    EXPECT_EQ(pixels.height(), 100);
}

TEST_F(qipWindowTest, ManagingAnOpenWindowRaisesIt)
{
    PlainWindow below("below");
    below.initialize();
    show(below);
    PlainWindow above("above");
    above.initialize();
    show(above);

    EXPECT_EQ(topWindow(), XtWindow(above.baseWidget()));
    below.manage();
    settle();
    EXPECT_EQ(topWindow(), XtWindow(below.baseWidget()));
}

TEST_F(qipWindowTest, ClosedWindowIsHiddenStaysRegisteredAndComesBack)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    window.close();
    settle();
    EXPECT_FALSE(isViewable(window.baseWidget()));
    EXPECT_TRUE(isRegistered(*_application, &window));
    show(window);
    EXPECT_EQ(window.timesCreated, 1);
}

TEST_F(qipWindowTest, ForgetsItsWidgetsWhenTheShellIsDestroyed)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    XtDestroyWidget(window.baseWidget());
    EXPECT_EQ(window.baseWidget(), nullptr);
    EXPECT_EQ(window.mainWidget(), nullptr);
    EXPECT_EQ(window.workArea(), nullptr);
    EXPECT_TRUE(isRegistered(*_application, &window));
}

class qipWindowManagedTest : public qipWindowTest
{
protected:
    void SetUp() override
    {
        qipWindowTest::SetUp();
        if (!HasFatalFailure()) {
            startWindowManager();
        }
    }

    // NormalState, IconicState, or WithdrawnState.
    long stateOf(Widget shell) const
    {
        const Atom state = XInternAtom(display(), "WM_STATE", False);
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display(), XtWindow(shell), state, 0, 1, False, state, &type, &format,
                           &count, &left, &data);
        const long value =
            data != nullptr && count == 1 ? *reinterpret_cast<long*>(data) : WithdrawnState;
        if (data != nullptr) {
            XFree(data);
        }
        return value;
    }
    bool waitForState(Widget shell, long state)
    {
        return waitFor([=] { return stateOf(shell) == state; });
    }
};

TEST_F(qipWindowManagedTest, IsDecoratedAndOffersToBeClosed)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    ASSERT_TRUE(waitForState(window.baseWidget(), NormalState));
    Atom* protocols = nullptr;
    int count = 0;
    ASSERT_NE(XGetWMProtocols(display(), XtWindow(window.baseWidget()), &protocols, &count), 0);
    const Atom deleteWindow = XInternAtom(display(), "WM_DELETE_WINDOW", False);
    EXPECT_THAT(std::vector<Atom>(protocols, protocols + count), ::testing::Contains(deleteWindow));
    XFree(protocols);
    saveScreenshot(display(), DefaultRootWindow(display()), "window-under-window-manager");
}

TEST_F(qipWindowManagedTest, CloseOfTheWindowManagerHidesTheWindow)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    ASSERT_TRUE(waitForState(window.baseWidget(), NormalState));
    XInput::closeWindow(display(), XtWindow(window.baseWidget()));
    EXPECT_TRUE(waitForState(window.baseWidget(), WithdrawnState));
    ASSERT_NE(window.baseWidget(), nullptr);
    show(window);
    EXPECT_TRUE(waitForState(window.baseWidget(), NormalState));
}

// The main window ends the program instead of closing.
TEST_F(qipWindowManagedTest, SubclassDecidesWhatTheUsersCloseDoes)
{
    class Asked : public PlainWindow
    {
    public:
        using PlainWindow::PlainWindow;
        void closeRequested() override { ++timesAsked; }
        int timesAsked = 0;
    };
    Asked window("window");
    window.initialize();
    show(window);
    ASSERT_TRUE(waitForState(window.baseWidget(), NormalState));
    XInput::closeWindow(display(), XtWindow(window.baseWidget()));
    EXPECT_TRUE(waitFor([&] { return window.timesAsked == 1; }));
    EXPECT_TRUE(isViewable(window.baseWidget()));
}

TEST_F(qipWindowManagedTest, ClosingAWindowWhoseCellIsGoneCallsNobody)
{
    auto* window = new PlainWindow("window");
    window->initialize();
    show(*window);
    Widget shell = window->baseWidget();
    ASSERT_TRUE(waitForState(shell, NormalState));
    delete window;
    XInput::closeWindow(display(), XtWindow(shell));
    settle();
    EXPECT_TRUE(isViewable(shell));
}

TEST_F(qipWindowManagedTest, IconifiedWindowComesBackByManage)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    ASSERT_TRUE(waitForState(window.baseWidget(), NormalState));
    window.iconify();
    ASSERT_TRUE(waitForState(window.baseWidget(), IconicState));
    EXPECT_FALSE(isViewable(window.baseWidget()));
    window.manage();
    EXPECT_TRUE(waitForState(window.baseWidget(), NormalState));
    EXPECT_TRUE(waitFor([&] { return isViewable(window.baseWidget()); }));
}

TEST_F(qipWindowManagedTest, WindowClosedAsAnIconComesBackOpen)
{
    PlainWindow window("window");
    window.initialize();
    show(window);
    ASSERT_TRUE(waitForState(window.baseWidget(), NormalState));
    window.iconify();
    ASSERT_TRUE(waitForState(window.baseWidget(), IconicState));
    window.close();
    ASSERT_TRUE(waitForState(window.baseWidget(), WithdrawnState));
    show(window);
    EXPECT_TRUE(waitForState(window.baseWidget(), NormalState));
}

TEST_F(qipWindowManagedTest, WindowIconifiedBeforeItIsShownStartsAsAnIcon)
{
    PlainWindow window("window");
    window.initialize();
    window.iconify();
    XtPopup(window.baseWidget(), XtGrabNone);
    EXPECT_TRUE(waitForState(window.baseWidget(), IconicState));
}

} // namespace
