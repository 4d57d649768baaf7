// SPDX-License-Identifier: MIT
#include "qip/Drawing/setWindowIcon.h"

#include "qip/Support/qipAssert.h"

#include <X11/Xatom.h>
#include <X11/xpm.h>
#include <Xm/Xm.h>

#include <cstring>
#include <new>
#include <vector>

namespace {

constexpr unsigned long Opaque = 0xff000000UL;

// Alpha, red, green and blue, eight bits each; 0 is transparent.
unsigned long argbOf(Widget shell, const char* name)
{
    XColor color = {};
    const Colormap colors = DefaultColormapOfScreen(XtScreen(shell));
    if (name == nullptr || std::strcmp(name, "None") == 0 ||
        XParseColor(XtDisplay(shell), colors, name, &color) == 0) {
        return 0;
    }
    return Opaque | (color.red >> 8) * 0x10000UL | (color.green >> 8) * 0x100UL | color.blue >> 8;
}

// Appends width, height and pixels, each pixel of the picture `factor` times in both directions.
// Pixels of 32 bits travel in longs, whatever the size of a long.
void append(std::vector<unsigned long>& icon, const XpmImage& image,
            const std::vector<unsigned long>& colors, unsigned factor)
{
    icon.push_back(image.width * factor);
    icon.push_back(image.height * factor);
    for (unsigned y = 0; y < image.height * factor; ++y) {
        const unsigned* row = image.data + y / factor * image.width;
        for (unsigned x = 0; x < image.width * factor; ++x) {
            icon.push_back(colors[row[x / factor]]);
        }
    }
}

void setPixels(Widget shell, const XpmImage& image)
{
    try {
        std::vector<unsigned long> colors;
        for (unsigned i = 0; i < image.ncolors; ++i) {
            colors.push_back(argbOf(shell, image.colorTable[i].c_color));
        }
        std::vector<unsigned long> icon;
        append(icon, image, colors, 1);
        append(icon, image, colors, 2);
        XChangeProperty(XtDisplay(shell), XtWindow(shell),
                        XInternAtom(XtDisplay(shell), "_NET_WM_ICON", False), XA_CARDINAL, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(icon.data()),
                        static_cast<int>(icon.size()));
    } catch (const std::bad_alloc&) {
        // A window without an icon is one all the same.
    }
}

} // namespace

void setWindowIcon(Widget shell, const char* const* data)
{
    qipAssert(XtIsRealized(shell));
    XpmImage image = {};
    if (XpmCreateXpmImageFromData(const_cast<char**>(data), &image, nullptr) != XpmSuccess) {
        return;
    }
    setPixels(shell, image);
    XpmFreeXpmImage(&image);

    Pixmap picture = None;
    Pixmap mask = None;
    // The window manager may use them as long as the program runs, so they are not freed.
    if (XpmCreatePixmapFromData(XtDisplay(shell), RootWindowOfScreen(XtScreen(shell)),
                                const_cast<char**>(data), &picture, &mask, nullptr) >= 0) {
        XtVaSetValues(shell, XmNiconPixmap, picture, XmNiconMask, mask, nullptr);
    }
}
