// SPDX-License-Identifier: MIT
#include "qip/Drawing/makeColorPixel.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

void warnAbout(Widget widget, const char* name)
{
    XtAppContext context = XtWidgetToApplicationContext(widget);
    const size_t size = std::strlen(name) + 256;
    const std::unique_ptr<char[]> message(new (std::nothrow) char[size]);
    if (!message) {
        XtAppWarning(context, "XAllocNamedColor : failed to allocate requested color");
        return;
    }
    std::snprintf(message.get(), size, "Cannot allocate colormap entry for \"%s\"", name);
    XtAppWarning(context, message.get());
}

} // namespace

Pixel makeColorPixel(Widget widget, const char* name, int black)
{
    Display* display = XtDisplayOfObject(widget);
    const int screen = DefaultScreen(display);
    XColor closest;
    XColor exact;
    if (XAllocNamedColor(display, DefaultColormap(display, screen), name, &closest, &exact) != 0) {
        return closest.pixel;
    }
    warnAbout(widget, name);
    return black != 0 ? BlackPixel(display, screen) : WhitePixel(display, screen);
}
