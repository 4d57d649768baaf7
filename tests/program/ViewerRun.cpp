// SPDX-License-Identifier: MIT
#include "tests/program/ViewerRun.h"

#include "tests/support/Program.h"

#include <X11/Xutil.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int Patience = 20000; // milliseconds
constexpr int Left = 10;        // pixels: a picture can only be taken of what is on the screen
constexpr int Top = 40;
constexpr int LookAgain = 20; // milliseconds between two looks at what sends no event

// Windows of a program that is just starting or ending may be gone at the next request.
int ignoreError(Display*, XErrorEvent*)
{
    return 0;
}

int fileFor(const std::string& path)
{
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
}

} // namespace

ViewerRun::ViewerRun(int screenWidth, int screenHeight)
    : _server(screenWidth, screenHeight), _display(nullptr), _program(0), _status(0)
{
    if (_server.started()) {
        XSetErrorHandler(ignoreError);
        _display = XOpenDisplay(_server.display().c_str());
    }
}

ViewerRun::~ViewerRun()
{
    stop();
    if (_display != nullptr) {
        XCloseDisplay(_display);
    }
}

void ViewerRun::start(const std::vector<std::string>& words)
{
    startProgram("zem", words);
}

void ViewerRun::startProgram(const std::string& name, const std::vector<std::string>& words)
{
    stop();
    const std::string program = builtProgram(name);
    const int out = fileFor(_dir.path("out"));
    const int err = fileFor(_dir.path("err"));
    _program = fork();
    if (_program == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        std::vector<char*> argv = {const_cast<char*>(name.c_str())};
        for (const std::string& word : words) {
            argv.push_back(const_cast<char*>(word.c_str()));
        }
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(out);
    close(err);
}

bool ViewerRun::waitFor(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(Patience);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        poll(nullptr, 0, LookAgain);
    }
    return true;
}

// Under a window manager a window has a frame around it; its properties are on the window itself.
Window ViewerRun::find(const std::function<bool(Window)>& isIt)
{
    std::vector<Window> left = {DefaultRootWindow(_display)};
    while (!left.empty()) {
        const Window window = left.back();
        left.pop_back();
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned nChildren = 0;
        if (XQueryTree(_display, window, &root, &parent, &children, &nChildren) == 0) {
            continue;
        }
        left.insert(left.end(), children, children + nChildren);
        if (children != nullptr) {
            XFree(children);
        }
        XWindowAttributes attributes;
        if (isIt(window) && XGetWindowAttributes(_display, window, &attributes) != 0 &&
            attributes.map_state == IsViewable && attributes.width > 1) {
            return window;
        }
    }
    return 0;
}

Window ViewerRun::findMain()
{
    return find([this](Window window) {
        XClassHint hint = {};
        if (XGetClassHint(_display, window, &hint) == 0) {
            return false;
        }
        const bool named = std::strcmp(hint.res_name, "zem") == 0;
        XFree(hint.res_name);
        XFree(hint.res_class);
        return named;
    });
}

Window ViewerRun::titled(const std::string& title)
{
    return find([&](Window window) {
        char* name = nullptr;
        if (XFetchName(_display, window, &name) == 0) {
            return false;
        }
        const bool named = title == name;
        XFree(name);
        // The frame of a window manager may have the name, too; only a client's says how to close.
        Atom* protocols = nullptr;
        int nProtocols = 0;
        const bool isClient =
            named && XGetWMProtocols(_display, window, &protocols, &nProtocols) != 0;
        if (protocols != nullptr) {
            XFree(protocols);
        }
        return isClient;
    });
}

Window ViewerRun::mainWindow()
{
    Window window = 0;
    waitFor([&] {
        window = findMain();
        return window != 0 || !running();
    });
    return window;
}

int ViewerRun::shownWindows()
{
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned nChildren = 0;
    int nShown = 0;
    if (XQueryTree(_display, DefaultRootWindow(_display), &root, &parent, &children, &nChildren) ==
        0) {
        return 0;
    }
    for (unsigned i = 0; i < nChildren; ++i) {
        XWindowAttributes attributes;
        nShown += XGetWindowAttributes(_display, children[i], &attributes) != 0 &&
                          attributes.map_state == IsViewable
                      ? 1
                      : 0;
    }
    if (children != nullptr) {
        XFree(children);
    }
    return nShown;
}

bool ViewerRun::waitUntilIdle()
{
    const std::string folder = "/proc/" + std::to_string(_program);
    std::string before;
    return waitFor([&] {
        // The time that it has used so far, and its state behind its name.
        const std::string now = TempDir::read(folder + "/schedstat");
        const std::string state = TempDir::read(folder + "/stat");
        const bool isAsleep = state.find(") S") != std::string::npos;
        const bool isIdle = isAsleep && now == before;
        before = isAsleep ? now : "";
        return isIdle || !running();
    });
}

std::string ViewerRun::picture(Window window, unsigned long color)
{
    std::string previous;
    std::string current;
    bool found = false;
    const auto settled = [&] {
        XImage* image = XGetImage(_display, window, 0, 0, static_cast<unsigned>(width(window)),
                                  static_cast<unsigned>(height(window)), AllPlanes, ZPixmap);
        if (image == nullptr) {
            return !running();
        }
        found = color == 0;
        for (int y = 0; y < image->height && !found; ++y) {
            for (int x = 0; x < image->width && !found; ++x) {
                found = XGetPixel(image, x, y) == color;
            }
        }
        previous = current;
        current.assign(image->data, static_cast<size_t>(image->bytes_per_line) *
                                        static_cast<size_t>(image->height));
        XDestroyImage(image);
        poll(nullptr, 0, 5 * LookAgain);
        return found && current == previous;
    };
    return waitFor(settled) && found ? current : "";
}

unsigned long ViewerRun::color(const char* name)
{
    XColor exact;
    XColor screen = {};
    XAllocNamedColor(_display, DefaultColormap(_display, DefaultScreen(_display)), name, &screen,
                     &exact);
    return screen.pixel;
}

int ViewerRun::width(Window window)
{
    XWindowAttributes attributes = {};
    XGetWindowAttributes(_display, window, &attributes);
    return attributes.width;
}

int ViewerRun::height(Window window)
{
    XWindowAttributes attributes = {};
    XGetWindowAttributes(_display, window, &attributes);
    return attributes.height;
}

int ViewerRun::left(Window window)
{
    int x = 0;
    int y = 0;
    Window child = 0;
    XTranslateCoordinates(_display, window, DefaultRootWindow(_display), 0, 0, &x, &y, &child);
    return x;
}

int ViewerRun::top(Window window)
{
    int x = 0;
    int y = 0;
    Window child = 0;
    XTranslateCoordinates(_display, window, DefaultRootWindow(_display), 0, 0, &x, &y, &child);
    return y;
}

XWindowAttributes ViewerRun::frameOf(Window window)
{
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned nChildren = 0;
    while (XQueryTree(_display, window, &root, &parent, &children, &nChildren) != 0) {
        if (children != nullptr) {
            XFree(children);
        }
        if (parent == root) {
            break;
        }
        window = parent;
    }
    XWindowAttributes attributes = {};
    XGetWindowAttributes(_display, window, &attributes);
    return attributes;
}

int ViewerRun::frameRight(Window window)
{
    const XWindowAttributes frame = frameOf(window);
    return frame.x + frame.width + 2 * frame.border_width;
}

int ViewerRun::frameBottom(Window window)
{
    const XWindowAttributes frame = frameOf(window);
    return frame.y + frame.height + 2 * frame.border_width;
}

void ViewerRun::resize(Window window, int newWidth, int newHeight)
{
    XMoveResizeWindow(_display, window, Left, Top, static_cast<unsigned>(newWidth),
                      static_cast<unsigned>(newHeight));
    waitFor([&] { return width(window) == newWidth && height(window) == newHeight; });
}

void ViewerRun::loseDisplay()
{
    XCloseDisplay(_display);
    _display = nullptr;
    _server.kill();
}

bool ViewerRun::running()
{
    if (_program > 0 && waitpid(_program, &_status, WNOHANG) == _program) {
        _program = 0;
    }
    return _program > 0;
}

int ViewerRun::end()
{
    if (!waitFor([this] { return !running(); })) {
        return -1;
    }
    return WIFEXITED(_status) ? WEXITSTATUS(_status) : 128 + WTERMSIG(_status);
}

std::string ViewerRun::out() const
{
    return TempDir::read(_dir.path("out"));
}

std::string ViewerRun::err() const
{
    return TempDir::read(_dir.path("err"));
}

void ViewerRun::stop()
{
    if (running()) {
        kill(_program, SIGKILL);
        waitpid(_program, &_status, 0);
        _program = 0;
    }
}
