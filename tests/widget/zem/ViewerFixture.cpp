// SPDX-License-Identifier: MIT
#include "tests/widget/zem/ViewerFixture.h"

#include <Xm/Form.h>
#include <Xm/Xm.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int FrameWidth = 2; // of the canvas, where its cells start

int failOnError(Display* display, XErrorEvent* error)
{
    char text[200];
    XGetErrorText(display, error->error_code, text, sizeof text);
    ADD_FAILURE() << "X error: " << text << ", request " << int(error->request_code);
    return 0;
}

void failOnWarning(String message)
{
    ADD_FAILURE() << "Toolkit warning: " << message;
}

// A window that holds one canvas.
class CanvasWindow : public qipWindow
{
public:
    explicit CanvasWindow(qipCanvas& canvas) : qipWindow("window"), _canvas(canvas) {}

    Widget createWorkArea(Widget parent) override
    {
        _clientArea = XtVaCreateManagedWidget("workarea", xmFormWidgetClass, parent, nullptr);
        _canvas.install(this);
        XtVaSetValues(_canvas.baseWidget(), XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment,
                      XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                      XmATTACH_FORM, nullptr);
        return _clientArea;
    }

private:
    qipCanvas& _canvas;
};

// Starts a server that writes the number of its display to a pipe. Returns its process.
pid_t startServer(std::string& display)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return 0;
    }
    const pid_t server = fork();
    if (server == 0) {
        ::close(ends[0]);
        // A test that crashes must not leave a server that holds its output open.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int nowhere = ::open("/dev/null", O_RDWR);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        const std::string fd = std::to_string(ends[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x1024x24",
               "-nolisten", "tcp", nullptr);
        _exit(127);
    }
    ::close(ends[1]);
    char c = 0;
    while (read(ends[0], &c, 1) == 1 && c != '\n') {
        display += c;
    }
    ::close(ends[0]);
    return server;
}

} // namespace

ViewerFixture::~ViewerFixture() = default;

void ViewerFixture::SetUp()
{
    std::string number;
    _server = startServer(number);
    ASSERT_FALSE(number.empty()) << "no virtual display";
    setenv("DISPLAY", (":" + number).c_str(), 1);
    _app = std::make_unique<qipApplication>("zem");
    int argc = 1;
    char name[] = "zem";
    char* argv[] = {name, nullptr};
    _app->initialize(argc, argv);
    XSetErrorHandler(failOnError);
    XtAppSetWarningHandler(_app->appContext(), failOnWarning);
}

void ViewerFixture::TearDown()
{
    if (_app != nullptr && _app->display() != nullptr) {
        settle();
    }
    if (_server > 0) {
        // The connection is not closed first: the objects of the test still refer to it.
        kill(_server, SIGTERM);
        waitpid(_server, nullptr, 0);
    }
}

void ViewerFixture::show(qipCanvas& canvas)
{
    _window = std::make_unique<CanvasWindow>(canvas);
    _window->initialize();
    _window->manage();
    waitFor([&] {
        XWindowAttributes attributes = {};
        const Window window = XtWindow(canvas.clientArea());
        return window != 0 && XGetWindowAttributes(_app->display(), window, &attributes) != 0 &&
               attributes.map_state == IsViewable;
    });
    settle();
    canvas.render();
    settle();
}

void ViewerFixture::settle()
{
    do {
        XSync(_app->display(), False);
        while (XtAppPending(_app->appContext()) != 0) {
            XtAppProcessEvent(_app->appContext(), XtIMAll);
        }
        XSync(_app->display(), False);
    } while (XPending(_app->display()) > 0);
}

void ViewerFixture::waitFor(const std::function<bool()>& done)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
        ASSERT_LT(std::chrono::steady_clock::now(), end) << "nothing happened";
        settle();
    }
}

Pixel ViewerFixture::pixel(const qipCanvas& canvas, int x, int y) const
{
    XImage* image =
        XGetImage(_app->display(), XtWindow(canvas.clientArea()), x, y, 1, 1, AllPlanes, ZPixmap);
    const Pixel value = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return value;
}

int ViewerFixture::count(const qipCanvas& canvas, int x, int y, int width, int height,
                         Pixel color) const
{
    XImage* image =
        XGetImage(_app->display(), XtWindow(canvas.clientArea()), x, y,
                  static_cast<unsigned>(width), static_cast<unsigned>(height), AllPlanes, ZPixmap);
    int found = 0;
    for (int i = 0; i < width * height; ++i) {
        found += XGetPixel(image, i % width, i / width) == color ? 1 : 0;
    }
    XDestroyImage(image);
    return found;
}

std::string ViewerFixture::text(const qipCanvas& canvas, int row, int column, int length,
                                Pixel color) const
{
    Display* display = _app->display();
    XFontStruct* font = XLoadQueryFont(display, "Fixed");
    const int width = font->max_bounds.width;
    const int height = font->ascent + font->descent;
    const int y = FrameWidth + row * canvas.rowPixels() + (canvas.rowPixels() - height) / 2;

    // Every character of the font, side by side.
    const Pixmap glyphs =
        XCreatePixmap(display, XtWindow(canvas.clientArea()), static_cast<unsigned>(256 * width),
                      static_cast<unsigned>(height), 1);
    XGCValues values = {};
    values.font = font->fid;
    const GC gc = XCreateGC(display, glyphs, GCFont, &values);
    XSetForeground(display, gc, 0);
    XFillRectangle(display, glyphs, gc, 0, 0, static_cast<unsigned>(256 * width),
                   static_cast<unsigned>(height));
    XSetForeground(display, gc, 1);
    for (int c = 32; c < 256; ++c) {
        const char byte = static_cast<char>(c);
        XDrawString(display, glyphs, gc, c * width, font->ascent, &byte, 1);
    }
    XImage* known = XGetImage(display, glyphs, 0, 0, static_cast<unsigned>(256 * width),
                              static_cast<unsigned>(height), AllPlanes, ZPixmap);
    XImage* seen = XGetImage(display, XtWindow(canvas.clientArea()), FrameWidth + column * width, y,
                             static_cast<unsigned>(length * width), static_cast<unsigned>(height),
                             AllPlanes, ZPixmap);
    std::string result;
    for (int i = 0; i < length; ++i) {
        char match = ' ';
        for (int c = 33; c < 256 && match == ' '; ++c) {
            bool same = true;
            for (int p = 0; p < width * height && same; ++p) {
                const int px = p % width;
                const int py = p / width;
                same = (XGetPixel(known, c * width + px, py) != 0) ==
                       (XGetPixel(seen, i * width + px, py) == color);
            }
            match =
                same && c != 127 && c != 160 && (c < 127 || c > 160) ? static_cast<char>(c) : ' ';
        }
        result += match;
    }
    XDestroyImage(known);
    XDestroyImage(seen);
    XFreePixmap(display, glyphs);
    XFreeGC(display, gc);
    XFreeFont(display, font);
    return result;
}

Pixel ViewerFixture::color(const char* name) const
{
    XColor exact = {};
    XColor screen = {};
    XAllocNamedColor(_app->display(), DefaultColormap(_app->display(), 0), name, &screen, &exact);
    return screen.pixel;
}
