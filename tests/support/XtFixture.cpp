// SPDX-License-Identifier: MIT
#include "tests/support/XtFixture.h"

#include <chrono>
#include <poll.h>

namespace {

constexpr int Patience = 10000; // milliseconds

XtFixture* current = nullptr; // the toolkit's handlers are plain functions

} // namespace

std::unique_ptr<qipApplication> XtFixture::makeApplication()
{
    return std::make_unique<qipApplication>("zem");
}

void XtFixture::SetUp()
{
    current = this;
    // A forked child would talk on its parent's connection; a process of its own has its own.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    _server = std::make_unique<XServer>();
    ASSERT_TRUE(_server->started()) << _server->problem();
    _application = makeApplication();
    XtSetErrorHandler(failed);
    XtSetWarningHandler(warned);
    int argc = 1;
    char name[] = "zem";
    char* argv[] = {name, nullptr};
    _application->initialize(argc, argv);
    XtAppSetWarningHandler(_application->appContext(), warned);
    XtAppSetErrorHandler(_application->appContext(), failed);
    XSetErrorHandler(serverError);
}

void XtFixture::TearDown()
{
    if (_application && _application->display() != nullptr) {
        settle();
    }
    current = nullptr;
}

void XtFixture::startWindowManager()
{
    ASSERT_TRUE(_server->startWindowManager()) << "mwm does not come up";
}

bool XtFixture::waitFor(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(Patience);
    for (;;) {
        while (XtAppPending(_application->appContext()) != 0) {
            XtAppProcessEvent(_application->appContext(), XtIMAll);
        }
        XFlush(display());
        if (condition()) {
            return true;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        // Wakes up for the server's events, and now and then for the toolkit's timers.
        struct pollfd waiting = {ConnectionNumber(display()), POLLIN, 0};
        poll(&waiting, 1, 5);
    }
}

void XtFixture::settle()
{
    // Some rounds: what the events of the first one ask for, and what is answered to that.
    for (int round = 0; round < 3; ++round) {
        XSync(display(), False);
        _server->settleWindowManager();
        XSync(display(), False);
        while (XtAppPending(_application->appContext()) != 0) {
            XtAppProcessEvent(_application->appContext(), XtIMAll);
        }
    }
    XSync(display(), False);
}

bool XtFixture::isViewable(Widget widget) const
{
    XWindowAttributes attributes;
    return widget != nullptr && XtIsRealized(widget) &&
           XGetWindowAttributes(display(), XtWindow(widget), &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

void XtFixture::warned(String message)
{
    if (current == nullptr) {
        return;
    }
    current->_warnings.emplace_back(message);
    if (!current->_expectsWarnings) {
        ADD_FAILURE() << "toolkit warning: " << message;
    }
}

void XtFixture::failed(String message)
{
    ADD_FAILURE() << "toolkit error: " << message;
    std::exit(1);
}

int XtFixture::serverError(Display* display, XErrorEvent* event)
{
    char text[256];
    XGetErrorText(display, event->error_code, text, sizeof text);
    ADD_FAILURE() << "X error: " << text << ", request " << static_cast<int>(event->request_code);
    return 0;
}
