// SPDX-License-Identifier: MIT
#include "tests/support/XServer.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int StartTime = 20000; // milliseconds

// Starts a program that ends with this process; its output is dropped.
pid_t start(const std::vector<const char*>& words, int keptDescriptor)
{
    const pid_t pid = fork();
    if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int null = open("/dev/null", O_RDWR);
        dup2(null, STDIN_FILENO);
        dup2(null, STDOUT_FILENO);
        dup2(null, STDERR_FILENO);
        if (keptDescriptor >= 0) {
            dup2(keptDescriptor, 3);
        }
        std::vector<char*> argv;
        for (const char* word : words) {
            argv.push_back(const_cast<char*>(word));
        }
        argv.push_back(nullptr);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    return pid;
}

void end(pid_t& pid)
{
    if (pid > 0) {
        ::kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        pid = 0;
    }
}

// The first line from a pipe; empty when none comes in time.
std::string readLine(int fd)
{
    std::string line;
    struct pollfd waiting = {fd, POLLIN, 0};
    char c = 0;
    while (poll(&waiting, 1, StartTime) > 0 && read(fd, &c, 1) == 1) {
        if (c == '\n') {
            return line;
        }
        line += c;
    }
    return "";
}

bool hasProperty(Display* display, Atom property)
{
    Atom type = None;
    int format = 0;
    unsigned long nItems = 0;
    unsigned long nLeft = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display, DefaultRootWindow(display), property, 0, 1, False, AnyPropertyType,
                       &type, &format, &nItems, &nLeft, &data);
    if (data != nullptr) {
        XFree(data);
    }
    return type != None;
}

} // namespace

XServer::XServer(int width, int height)
    : _server(0), _windowManager(0), _connection(nullptr), _probe(0), _probeX(0)
{
    int fds[2];
    if (pipe(fds) != 0) {
        _problem = "no pipe to be had";
        return;
    }
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    _server = start(
        {"Xvfb", "-displayfd", "3", "-screen", "0", screen.c_str(), "-nolisten", "tcp", "-noreset"},
        fds[1]);
    ::close(fds[1]);
    const std::string number = readLine(fds[0]);
    ::close(fds[0]);
    if (number.empty()) {
        _problem = "Xvfb does not start; is the package xvfb installed?";
        return;
    }
    _display = ":" + number;
    setenv("DISPLAY", _display.c_str(), 1);
    // Nothing of the user's own settings reaches a test.
    setenv("HOME", "/nonexistent", 1);
    unsetenv("XENVIRONMENT");
    unsetenv("XAPPLRESDIR");
    unsetenv("XFILESEARCHPATH");
    unsetenv("XUSERFILESEARCHPATH");
    unsetenv("RESOURCE_NAME");
}

XServer::~XServer()
{
    kill();
}

void XServer::kill()
{
    close();
    end(_windowManager);
    end(_server);
}

void XServer::close()
{
    if (_connection != nullptr) {
        XCloseDisplay(_connection);
        _connection = nullptr;
    }
}

bool XServer::startWindowManager()
{
    _connection = XOpenDisplay(_display.c_str());
    if (_connection == nullptr) {
        return false;
    }
    // A Motif window manager announces itself in a property of the root window.
    const Window root = DefaultRootWindow(_connection);
    const Atom info = XInternAtom(_connection, "_MOTIF_WM_INFO", False);
    XSelectInput(_connection, root, PropertyChangeMask);
    XSync(_connection, False);
    _windowManager = start({"mwm"}, -1);
    const bool up = waitFor([&] { return hasProperty(_connection, info); });
    XSelectInput(_connection, root, NoEventMask);
    _probe = XCreateSimpleWindow(_connection, root, 0, 0, 1, 1, 0, 0, 0);
    XSelectInput(_connection, _probe, StructureNotifyMask);
    return up;
}

void XServer::settleWindowManager()
{
    if (_connection == nullptr) {
        return;
    }
    // A window that wants to move is the window manager's to move, once it comes to it.
    XMoveWindow(_connection, _probe, ++_probeX, 0);
    XEvent event;
    waitFor([&] {
        return XCheckTypedWindowEvent(_connection, _probe, ConfigureNotify, &event) != 0 &&
               event.xconfigure.x == _probeX;
    });
}

bool XServer::waitFor(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(StartTime);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        struct pollfd waiting = {ConnectionNumber(_connection), POLLIN, 0};
        poll(&waiting, 1, 100);
        XEventsQueued(_connection, QueuedAfterReading);
    }
    return true;
}
