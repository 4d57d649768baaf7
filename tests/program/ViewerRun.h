// SPDX-License-Identifier: MIT
//
// The built viewer, run on a display of its own and looked at from outside, as a user does.
#pragma once

#include "tests/support/TempDir.h"
#include "tests/support/XServer.h"

#include <X11/Xlib.h>

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

class ViewerRun
{
public:
    // Starts the server, with a screen of this size; check started().
    explicit ViewerRun(int screenWidth = XServer::Width, int screenHeight = XServer::Height);
    // Ends the program and the server.
    ~ViewerRun();
    ViewerRun(const ViewerRun&) = delete;
    ViewerRun& operator=(const ViewerRun&) = delete;

    bool started() const { return _display != nullptr; }
    XServer& server() { return _server; }
    Display* display() const { return _display; }

    // Runs zem with these words, in place of one that still runs.
    void start(const std::vector<std::string>& words);
    // The same for another of the built programs, which starts zem.
    void startProgram(const std::string& name, const std::vector<std::string>& words);

    // The main window, once it is on the screen; 0 when it does not come or the program ends.
    Window mainWindow();

    // The window with this title, if it is on the screen; 0 when it is not.
    Window titled(const std::string& title);

    // The program's process.
    pid_t process() const { return _program; }

    // How many windows lie on the screen side by side or one above the other: one more when a menu
    // or a dialog comes up.
    int shownWindows();

    // Waits until the program has ended or waits for input itself. Returns false when it does not
    // come to that.
    bool waitUntilIdle();

    // Waits, for twenty seconds at most, until `condition` holds. Returns whether it does.
    bool waitFor(const std::function<bool()>& condition);

    // The bytes of the window's picture once it has stopped changing and shows `color`, any picture
    // when that is 0; empty when it does not come to that.
    std::string picture(Window window, unsigned long color = 0);

    // The pixel of a named colour.
    unsigned long color(const char* name);

    // The window's size in pixels.
    int width(Window window);
    int height(Window window);

    // Where the window's upper left corner is on the screen.
    int left(Window window);
    int top(Window window);

    // The first pixels to the right of and below the frame that the window manager has put around
    // the window; of the window itself without one.
    int frameRight(Window window);
    int frameBottom(Window window);

    // Gives the window a size, near the upper left corner of the screen, and waits until it has it.
    void resize(Window window, int width, int height);

    // Kills the server under the program. Nothing can be looked at any more.
    void loseDisplay();

    bool running();

    // Waits for the program's end. Returns its exit status, 128 + the signal that ended it, or -1
    // when it goes on.
    int end();

    // What the program has printed so far.
    std::string out() const;
    std::string err() const;

    // Kills the program.
    void stop();

private:
    // The first window on the screen, from the root down, of which `isIt` holds.
    Window find(const std::function<bool(Window)>& isIt);
    Window findMain();
    XWindowAttributes frameOf(Window window);

    XServer _server;
    TempDir _dir;
    Display* _display;
    pid_t _program;
    int _status; // of waitpid, once the program has ended
};
