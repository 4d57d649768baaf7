#include "tests/support/gtest_x.h"

#include "qip/Base/qipApplication.h"
#include "qip/Base/qipWindow.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "tests/support/XServer.h"
#include "tests/support/XtFixture.h"

#include <X11/Xresource.h>
#include <Xm/DrawingA.h>
#include <Xm/MessageB.h>
#include <Xm/Xm.h>

#include <cstdlib>

namespace {

std::string calls; // of the windows below, in their order

class RecordingWindow : public qipWindow
{
public:
    explicit RecordingWindow(const char* name) : qipWindow(name) {}

    Widget createWorkArea(Widget parent) override
    {
        return XtVaCreateWidget("area", xmDrawingAreaWidgetClass, parent, XmNwidth, 100, XmNheight,
                                50, nullptr);
    }
    void initialize() override
    {
        calls += std::string("initialize ") + name() + "\n";
        qipWindow::initialize();
    }
    void manage() override
    {
        calls += std::string("manage ") + name() + "\n";
        qipWindow::manage();
    }
    void unmanage() override
    {
        calls += std::string("unmanage ") + name() + "\n";
        qipWindow::unmanage();
    }
    void iconify() override { calls += std::string("iconify ") + name() + "\n"; }
};

TEST(qipApplicationTest, LastOneBuiltIsTheApplication)
{
    EXPECT_EQ(theApplication, nullptr);
    qipApplication first("first");
    EXPECT_EQ(theApplication, &first);
    {
        qipApplication second("second");
        EXPECT_EQ(theApplication, &second);
    }
    EXPECT_EQ(theApplication, nullptr);
}

TEST(qipApplicationTest, StartsWithoutDisplayContextAndWindows)
{
    const qipApplication application("zem");
    EXPECT_STREQ(application.name(), "zem");
    EXPECT_STREQ(application.className(), "qipApplication");
    EXPECT_EQ(application.display(), nullptr);
    EXPECT_EQ(application.appContext(), nullptr);
    EXPECT_EQ(application.baseWidget(), nullptr);
    EXPECT_EQ(application.windows().length(), 0);
}

TEST(qipApplicationTest, UsageIsTheApplicationsOwn)
{
    class Helpful : public qipApplication
    {
    public:
        Helpful() : qipApplication("helpful") {}
        void usageHelp() override { ++nUsages; }
        int nUsages = 0;
    };
    Helpful application;
    usage();
    EXPECT_EQ(application.nUsages, 1);
}

TEST(qipApplicationTest, DefaultUsageAsksForAnother)
{
    qipApplication application("generic");
    const StdOut out;
    usage();
    EXPECT_EQ(out.text(), "generic\n"
                          "    Usage:\n"
                          "\n"
                          "            This is the default qipApplication::usage() method\n"
                          "            You need to write your own!\n");
}

TEST(qipApplicationTest, LeavesItsWindowsWhenItGoes)
{
    auto application = std::make_unique<qipApplication>("zem");
    RecordingWindow window("window");
    EXPECT_EQ(application->windows().length(), 1);
    application.reset();
    EXPECT_STREQ(window.name(), "window");
}

// Starts the toolkit itself, with words of its own.
class qipApplicationStartTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(_server.started()) << _server.problem(); }

    // Returns the words that the toolkit leaves, joined by blanks.
    std::string start(std::vector<std::string> words)
    {
        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        int argc = static_cast<int>(words.size());
        application.initialize(argc, argv.data());
        std::string left;
        for (int i = 1; i < argc; ++i) {
            left += std::string(i > 1 ? " " : "") + argv[static_cast<size_t>(i)];
        }
        return left;
    }

    std::string resource(const char* name) const
    {
        char* type = nullptr;
        XrmValue value = {};
        XrmDatabase database = XtScreenDatabase(XtScreen(application.baseWidget()));
        return XrmGetResource(database, name, name, &type, &value) ? value.addr : "";
    }

    qipApplication application{"zem"};

private:
    XServer _server;
};

TEST_F(qipApplicationStartTest, ToolkitTakesItsOwnOptions)
{
    EXPECT_EQ(start({"zem", "-xrm", "*color: blue", "-df", "a.log", "-sdFf", "-"}),
              "-df a.log -sdFf -");
    EXPECT_EQ(resource("zem.color"), "blue");
}

TEST_F(qipApplicationStartTest, ClassIsTheApplicationsNameAndInstanceTheProgramsOwn)
{
    start({"/usr/bin/other"});
    String name = nullptr;
    String className = nullptr;
    XtGetApplicationNameAndClass(application.display(), &name, &className);
    EXPECT_STREQ(name, "other");
    EXPECT_STREQ(className, "zem");
    EXPECT_EQ(application.display(), XtDisplay(application.baseWidget()));
    EXPECT_NE(application.appContext(), nullptr);
}

TEST_F(qipApplicationStartTest, DefaultsDoNotReplaceWhatTheUserHasSet)
{
    const TempDir folder;
    setenv("XENVIRONMENT", folder.write("user", "*first: of the user\n").c_str(), 1);
    start({"zem"});
    application.addDefaults(
        folder.write("defaults", "*first: of the program\n*second: of the program\n").c_str());
    EXPECT_EQ(resource("zem.first"), "of the user");
    EXPECT_EQ(resource("zem.second"), "of the program");
}

TEST_F(qipApplicationStartTest, DefaultsThatCannotBeReadChangeNothing)
{
    const TempDir folder;
    start({"zem", "-xrm", "*first: here"});
    application.addDefaults(folder.path("missing").c_str());
    application.addDefaults(folder.path().c_str());
    EXPECT_EQ(resource("zem.first"), "here");
}

class qipApplicationRunTest : public XtFixture
{
protected:
    // Has the event loop return after the events that are there.
    void endLoopSoon()
    {
        XtAppAddTimeOut(
            _application->appContext(), 1,
            [](XtPointer context, XtIntervalId*) {
                XtAppSetExitFlag(static_cast<XtAppContext>(context));
            },
            _application->appContext());
    }
};

TEST_F(qipApplicationRunTest, ShellStaysUnseenInTheMiddleOfTheScreen)
{
    XtRealizeWidget(appShell());
    settle();
    Position x = 0;
    Position y = 0;
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(appShell(), XmNx, &x, XmNy, &y, XmNwidth, &width, XmNheight, &height, nullptr);
    EXPECT_EQ(x, XServer::Width / 2);
    EXPECT_EQ(y, XServer::Height / 2);
    EXPECT_EQ(width, 1);
    EXPECT_EQ(height, 1);
    EXPECT_TRUE(XtIsRealized(appShell()));
    EXPECT_FALSE(isViewable(appShell()));
    EXPECT_EQ(XtHasCallbacks(appShell(), XmNdestroyCallback), XtCallbackHasSome);
}

TEST_F(qipApplicationRunTest, DialogsAppearInTheMiddleOfTheScreen)
{
    startWindowManager();
    XtRealizeWidget(appShell());
    char name[] = "dialog";
    Widget dialog = XmCreateInformationDialog(appShell(), name, nullptr, 0);
    XtManageChild(dialog);
    ASSERT_TRUE(waitFor([&] { return isViewable(dialog); }));
    settle();
    int x = 0;
    int y = 0;
    Window child = 0;
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(dialog, XmNwidth, &width, XmNheight, &height, nullptr);
    XTranslateCoordinates(display(), XtWindow(dialog), DefaultRootWindow(display()), width / 2,
                          height / 2, &x, &y, &child);
    // Give or take the window manager's frame.
    EXPECT_NEAR(x, XServer::Width / 2, 40);
    EXPECT_NEAR(y, XServer::Height / 2, 40);
}

TEST_F(qipApplicationRunTest, AppMainStartsEachWindowRealisesTheShellAndRuns)
{
    RecordingWindow first("first");
    RecordingWindow second("second");
    calls.clear();
    endLoopSoon();
    int argc = 0;
    EXPECT_EQ(_application->appMain(argc, nullptr), 0);
    EXPECT_EQ(calls, "initialize first\nmanage first\ninitialize second\nmanage second\n");
    EXPECT_TRUE(XtIsRealized(appShell()));
    settle();
    EXPECT_TRUE(isViewable(first.baseWidget()));
    EXPECT_TRUE(isViewable(second.baseWidget()));
}

TEST_F(qipApplicationRunTest, OperationsReachEveryWindowInOrder)
{
    RecordingWindow first("first");
    RecordingWindow second("second");
    first.initialize();
    second.initialize();
    calls.clear();
    _application->manage();
    _application->unmanage();
    _application->iconify();
    EXPECT_EQ(calls, "manage first\nmanage second\nunmanage first\nunmanage second\n"
                     "iconify first\niconify second\n");
}

} // namespace
