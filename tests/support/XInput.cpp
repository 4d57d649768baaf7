// SPDX-License-Identifier: MIT
#include "tests/support/XInput.h"

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

void XInput::moveTo(Display* display, Window window, int x, int y)
{
    int rootX = 0;
    int rootY = 0;
    Window child = 0;
    XTranslateCoordinates(display, window, DefaultRootWindow(display), x, y, &rootX, &rootY,
                          &child);
    XTestFakeMotionEvent(display, DefaultScreen(display), rootX, rootY, CurrentTime);
    XSync(display, False);
}

void XInput::press(Display* display, unsigned button)
{
    XTestFakeButtonEvent(display, button, True, CurrentTime);
    XSync(display, False);
}

void XInput::release(Display* display, unsigned button)
{
    XTestFakeButtonEvent(display, button, False, CurrentTime);
    XSync(display, False);
}

void XInput::click(Display* display, Window window, int x, int y, int times, unsigned button)
{
    moveTo(display, window, x, y);
    // All at once: a machine that is busy between two clicks must not make them two single ones.
    for (int i = 0; i < times; ++i) {
        XTestFakeButtonEvent(display, button, True, CurrentTime);
        XTestFakeButtonEvent(display, button, False, CurrentTime);
    }
    XSync(display, False);
}

void XInput::key(Display* display, KeySym key, KeySym modifier)
{
    const KeyCode code = XKeysymToKeycode(display, key);
    const KeyCode held = modifier == 0 ? 0 : XKeysymToKeycode(display, modifier);
    if (held != 0) {
        XTestFakeKeyEvent(display, held, True, CurrentTime);
    }
    XTestFakeKeyEvent(display, code, True, CurrentTime);
    XTestFakeKeyEvent(display, code, False, CurrentTime);
    if (held != 0) {
        XTestFakeKeyEvent(display, held, False, CurrentTime);
    }
    XSync(display, False);
}

void XInput::type(Display* display, const std::string& text)
{
    for (const char c : text) {
        const bool shifted = c >= 'A' && c <= 'Z';
        key(display, static_cast<KeySym>(static_cast<unsigned char>(c)), shifted ? XK_Shift_L : 0);
    }
}

void XInput::closeWindow(Display* display, Window window)
{
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, window, False, NoEventMask, &event);
    XSync(display, False);
}
