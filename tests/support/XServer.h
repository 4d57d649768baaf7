// SPDX-License-Identifier: MIT
//
// A display in memory for one test: a private Xvfb, and a window manager on it when one is asked
// for. Both end with the object, and with the test's process however that ends.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

class XServer
{
public:
    static constexpr int Width = 1280; // pixels
    static constexpr int Height = 1024;

    // Starts the server, with a screen of this size, and sets DISPLAY. Check started().
    explicit XServer(int width = Width, int height = Height);
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    bool started() const { return !_display.empty(); }
    // Why it did not start.
    const std::string& problem() const { return _problem; }
    const std::string& display() const { return _display; } // ":7"

    // Starts the window manager and waits until it manages windows. False when it does not come up.
    bool startWindowManager();

    // Waits until the window manager has handled everything that the server told it so far: clicks
    // that it takes to move the keyboard and then lets through, among others. Does nothing when
    // there is none.
    void settleWindowManager();

    // Kills the server, as if the connection were lost.
    void kill();

private:
    void close();
    bool waitFor(const std::function<bool()>& condition);

    pid_t _server;
    pid_t _windowManager;
    struct _XDisplay* _connection; // to talk with the window manager
    unsigned long _probe;          // a window that is never shown
    int _probeX;
    std::string _display;
    std::string _problem;
};
