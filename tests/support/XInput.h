// SPDX-License-Identifier: MIT
//
// Real input: the server makes the events, so that they take the way of a user's hand.
#pragma once

#include <X11/Xlib.h>

#include <string>

namespace XInput {

// Moves the pointer to (x, y) of the window.
void moveTo(Display* display, Window window, int x, int y);

// Presses and lets go a button where the pointer is.
void press(Display* display, unsigned button = 1);
void release(Display* display, unsigned button = 1);

// Moves and clicks, `times` quickly in a row.
void click(Display* display, Window window, int x, int y, int times = 1, unsigned button = 1);

// Presses and lets go a key, with `modifier` held when it is not 0.
void key(Display* display, KeySym key, KeySym modifier = 0);

// Types letters, digits, blanks, "/" and ".".
void type(Display* display, const std::string& text);

// Asks the window manager's Close of a window: what it sends to a client that takes part.
void closeWindow(Display* display, Window window);

} // namespace XInput
