// SPDX-License-Identifier: MIT
//
// One allocation after the other fails in the commands of a window that is up: the numbers that are
// shown afterwards are right, or the status bar says that they are out of date.
#include "tests/support/gtest_x.h"

#include "tests/support/FailingNew.h"
#include "tests/support/StdErr.h"
#include "tests/widget/zem/Window/MainWindowFixture.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Rows/ZEMView.h"

#include <X11/IntrinsicP.h>
#include <Xm/SelectioB.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

class CommandsWithoutMemoryTest : public MainWindowFixture
{
protected:
    void SetUp() override
    {
        unsetenv("VORANDEL");
        MainWindowFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        _dir.write("src/list.cpp", "one\ntwo\n");
        theReportContainer->manglingLevel(0); // readable names end the program without memory
        load();
        _log = _dir.path("p.log");
        _loads = 1;
        theReportContainer->report();
        // What is made once is there: without memory for a part of a window the program ends.
        theReportContainer->browseToggle();
        HelpWindow::showHelpOn("overview");
        settle();
    }

    // The widget behind a tool.
    Widget tool(const char* name) const
    {
        return findWidget(findWidget(findWidget(widget("workarea"), "toolbar"), name), "_button");
    }

    // As a click calls it. Takes no memory of the program's own.
    static void press(Widget tool) { XtCallCallbacks(tool, XmNactivateCallback, nullptr); }

    // Answers the dialog of this name that is up, if one is; "*" stands before the name. Takes no
    // memory of the program's own.
    void answer(const char* name, const char* text)
    {
        Widget box = nullptr;
        for (Cardinal i = 0; i < appShell()->core.num_popups; ++i) {
            Widget found = XtNameToWidget(appShell()->core.popup_list[i], name);
            box = found != nullptr && XtIsManaged(found) ? found : box;
        }
        if (box == nullptr) {
            return;
        }
        ++_answered;
        XmSelectionBoxCallbackStruct call = {};
        call.value = XmStringCreateLocalized(const_cast<char*>(text));
        XtUnmanageChild(box);
        XtCallCallbacks(box, XmNokCallback, &call);
        XmStringFree(call.value);
    }

    void loadAgain()
    {
        _loads += theReportContainer->processFile(_log.c_str()) == 0 ? 1 : 0;
        theReportContainer->report();
    }

    // What the rows of the shown report say together, and the status bar.
    void judge(const std::string& what)
    {
        settle();
        const ZEMRptTable& table = theReportContainer->table();
        int hits = 0;
        int blocks = 0;
        for (int i = 0; i < table._nItems; ++i) {
            hits += table._view[i]->hits();
            blocks += table._view[i]->blocks();
        }
        EXPECT_EQ(blocks, 5) << what;
        const std::string message = labelText("msgLbl");
        if (theReportContainer->isOutdated()) {
            EXPECT_EQ(message, "Out of memory: this report is out of date!") << what;
        } else {
            EXPECT_EQ(hits, 8 * _loads) << what << ": " << message;
        }
    }

    // Lets each allocation of the command fail in turn.
    void sweep(const char* name, const std::function<void()>& command)
    {
        StdErr quiet; // a log that could not be loaded
        const long total = FailingNew::count(command);
        for (const FailingNew::Mode mode : {FailingNew::Once, FailingNew::FromThen}) {
            for (long n = 1; n <= total; ++n) {
                (void)FailingNew::run(n, mode, command);
                judge(name + std::string(" ") + std::to_string(mode) + " " + std::to_string(n) +
                      " of " + std::to_string(total));
                ++_faults;
            }
        }
    }

    std::string _log;
    int _loads = 0;
    int _faults = 0;
    int _answered = 0; // dialogs
};

TEST_F(CommandsWithoutMemoryTest, TheNumbersAreRightOrTheWindowSaysSo)
{
    Widget types = tool("rptTpBtn");
    Widget sort = tool("sortBtn");
    Widget load = tool("selectBtn");
    sweep("browse", [] {
        theReportContainer->browseToggle();
        theReportContainer->browseToggle();
    });
    sweep("report by function", [] {
        theReportContainer->reportType(RptByFunction);
        theReportContainer->report();
    });
    sweep("report by directory, by its dialog", [this, types] {
        press(types);
        answer("*rptType", "Directory");
    });
    sweep("report by file, by its dialog", [this, types] {
        press(types);
        answer("*rptType", "File");
    });
    sweep("sort", [] {
        theReportContainer->sortBy("bF");
        theReportContainer->sortAndView();
        theReportContainer->sortBy("n");
        theReportContainer->sortAndView();
    });
    sweep("sort by its dialog", [this, sort] {
        press(sort);
        answer("*Select sorting criteria", "Fb");
    });
    sweep("load", [this] { loadAgain(); });
    sweep("load dialog", [this, load] {
        press(load);
        answer("*fileSelection", "");
    });
    sweep("help", [] {
        HelpWindow::showHelpOn("toolbar");
        HelpWindow::showHelpOn("reports");
    });
    // With memory everything is as it should be.
    loadAgain();
    judge("the end");
    EXPECT_FALSE(theReportContainer->isOutdated());
    EXPECT_GT(_answered, 40);
    std::printf("%d faults under zem\n", _faults);
}

} // namespace
