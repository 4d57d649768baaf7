// SPDX-License-Identifier: MIT
//
// A test with a display of its own and the toolkit started on it. Any warning or error of the
// toolkit or the server fails the test. Use in a file that includes tests/support/gtest_x.h first.
//
// One toolkit start is all that a process bears, so each case runs in its own process: run one case
// at a time by hand, with --gtest_filter.
#pragma once

#include "tests/support/gtest_x.h"

#include "qip/Base/qipApplication.h"
#include "tests/support/XServer.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class XtFixture : public ::testing::Test
{
public:
    // Lets warnings pass from now on: a test that provokes one looks at them itself.
    void expectWarnings() { _expectsWarnings = true; }
    const std::vector<std::string>& warnings() const { return _warnings; }

protected:
    void SetUp() override;
    void TearDown() override;

    // Makes the application object; one named "zem" here.
    virtual std::unique_ptr<qipApplication> makeApplication();

    // Starts the window manager. Called by a test or a SetUp() that needs one.
    void startWindowManager();

    // Handles events until `condition` holds, at most ten seconds. Returns whether it does.
    bool waitFor(const std::function<bool()>& condition);

    // Handles all events that there are, and those that they cause here and in the window manager.
    void settle();

    // Whether the widget's window is on the screen, whatever lies above it.
    bool isViewable(Widget widget) const;

    Display* display() const { return _application->display(); }
    Widget appShell() const { return _application->baseWidget(); }
    XServer& server() { return *_server; }

    std::unique_ptr<qipApplication> _application;

private:
    static void warned(String message);
    static void failed(String message) _X_NORETURN;
    static int serverError(Display* display, XErrorEvent* event);

    std::unique_ptr<XServer> _server;
    bool _expectsWarnings = false;
    std::vector<std::string> _warnings;
};
