// SPDX-License-Identifier: MIT
#include "tests/widget/zem/ViewerFixture.h"

#include <X11/Xutil.h>

namespace {

constexpr int FrameWidth = 2; // of the canvas, where its cells start

} // namespace

ViewerFixture::~ViewerFixture() = default;

void ViewerFixture::show(qipCanvas& canvas)
{
    _window = std::make_unique<CellWindow>(canvas);
    _window->open();
    ASSERT_TRUE(waitFor([&] { return isViewable(canvas.clientArea()); }));
    settle();
}

int ViewerFixture::count(const qipCanvas& canvas, int x, int y, int width, int height,
                         Pixel color) const
{
    return Pixels(display(), XtWindow(canvas.clientArea())).count(x, y, width, height, color);
}

std::string ViewerFixture::text(const qipCanvas& canvas, int row, int column, int length,
                                Pixel color) const
{
    XFontStruct* font = XLoadQueryFont(display(), "Fixed");
    const int width = font->max_bounds.width;
    const int height = font->ascent + font->descent;
    const int y = FrameWidth + row * canvas.rowPixels() + (canvas.rowPixels() - height) / 2;

    // Every character of the font, side by side.
    const Pixmap glyphs =
        XCreatePixmap(display(), XtWindow(canvas.clientArea()), static_cast<unsigned>(256 * width),
                      static_cast<unsigned>(height), 1);
    XGCValues values = {};
    values.font = font->fid;
    const GC gc = XCreateGC(display(), glyphs, GCFont, &values);
    XSetForeground(display(), gc, 0);
    XFillRectangle(display(), glyphs, gc, 0, 0, static_cast<unsigned>(256 * width),
                   static_cast<unsigned>(height));
    XSetForeground(display(), gc, 1);
    for (int c = 32; c < 256; ++c) {
        const char byte = static_cast<char>(c);
        XDrawString(display(), glyphs, gc, c * width, font->ascent, &byte, 1);
    }
    XImage* known = XGetImage(display(), glyphs, 0, 0, static_cast<unsigned>(256 * width),
                              static_cast<unsigned>(height), AllPlanes, ZPixmap);
    XImage* seen = XGetImage(display(), XtWindow(canvas.clientArea()), FrameWidth + column * width,
                             y, static_cast<unsigned>(length * width),
                             static_cast<unsigned>(height), AllPlanes, ZPixmap);
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
    XFreePixmap(display(), glyphs);
    XFreeGC(display(), gc);
    XFreeFont(display(), font);
    return result;
}

Pixel ViewerFixture::color(const char* name) const
{
    XColor exact = {};
    XColor screen = {};
    XAllocNamedColor(display(), DefaultColormap(display(), 0), name, &screen, &exact);
    return screen.pixel;
}
