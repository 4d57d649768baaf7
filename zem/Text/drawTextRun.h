// SPDX-License-Identifier: MIT
#pragma once

#include <X11/Xlib.h>

// What 16 bits can say of a pixel's place.
constexpr int LargestCoordinate = 32767;

// Draws `text`, `len` characters long, from character `first` on, at the pixel `x` and the base
// line `y`, at most `columns` characters of it: a request has a limited size. Draws nothing
// for a null text, and where `x` is past LargestCoordinate.
void drawTextRun(Display* display, Drawable drawable, GC gc, int x, int y, const char* text,
                 int len, int first, int columns);
