// SPDX-License-Identifier: MIT
#include "zem/Text/drawTextRun.h"

#include <algorithm>

void drawTextRun(Display* display, Drawable drawable, GC gc, int x, int y, const char* text,
                 int len, int first, int columns)
{
    first = std::max(first, 0);
    if (text == nullptr || first >= len || columns <= 0 || x > LargestCoordinate) {
        return;
    }
    XDrawString(display, drawable, gc, x, y, text + first, std::min(len - first, columns));
}
