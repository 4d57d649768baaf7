// SPDX-License-Identifier: MIT
//
// Times a program from its start until its window shows a colour: until a report's bars, or the
// background of an empty window, stand on the display. Prints the seconds of the quickest of
// several runs. The program is ended each time as soon as the colour is there.
//
//   timeWindow TIMES COLOUR COMMAND ...
//
// Needs a display of its own without a window manager, where windows come up at the top left.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The part of the display that is looked at. Small, so that looking costs the program little.
constexpr int Left = 240;
constexpr int Top = 110;
constexpr unsigned int Width = 200;
constexpr unsigned int Height = 100;
constexpr int EnoughPixels = 2000; // more than an icon has
constexpr double LongestWait = 60; // seconds

double now()
{
    const std::chrono::duration<double> time = std::chrono::steady_clock::now().time_since_epoch();
    return time.count();
}

bool shows(Display* display, unsigned long pixel)
{
    XImage* image = XGetImage(display, DefaultRootWindow(display), Left, Top, Width, Height,
                              AllPlanes, ZPixmap);
    if (image == nullptr) {
        return false;
    }
    int found = 0;
    for (int y = 0; y < image->height; ++y) {
        for (int x = 0; x < image->width; ++x) {
            found += XGetPixel(image, x, y) == pixel ? 1 : 0;
        }
    }
    XDestroyImage(image);
    return found >= EnoughPixels;
}

// Waits until the colour is there, or gone. False when that takes too long.
bool waitUntil(bool there, Display* display, unsigned long pixel)
{
    const double end = now() + LongestWait;
    while (shows(display, pixel) != there) {
        if (now() > end) {
            return false;
        }
        usleep(500);
    }
    return true;
}

pid_t start(char** command)
{
    const pid_t pid = fork();
    if (pid == 0) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDOUT_FILENO);
        execvp(command[0], command);
        std::perror(command[0]);
        _exit(127);
    }
    return pid;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s TIMES COLOUR COMMAND ...\n", argv[0]);
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    XColor colour;
    XColor exact;
    if (display == nullptr ||
        XAllocNamedColor(display, DefaultColormap(display, DefaultScreen(display)), argv[2],
                         &colour, &exact) == 0) {
        std::fprintf(stderr, "%s: no display, or no colour %s\n", argv[0], argv[2]);
        return 1;
    }
    double best = LongestWait;
    for (int times = std::max(std::atoi(argv[1]), 1); times > 0; --times) {
        const double begin = now();
        const pid_t pid = start(argv + 3);
        const bool seen = pid > 0 && waitUntil(true, display, colour.pixel);
        best = std::min(best, now() - begin);
        if (pid > 0) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
        if (!seen || !waitUntil(false, display, colour.pixel)) {
            std::fprintf(stderr, "%s: %s never showed %s\n", argv[0], argv[3], argv[2]);
            return 1;
        }
    }
    XCloseDisplay(display);
    std::printf("%.6f\n", best);
    return 0;
}
