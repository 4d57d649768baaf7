// SPDX-License-Identifier: MIT
#pragma once

#include <X11/Intrinsic.h>

// The pixel of the colour called `name` (a name of X's colour table, or #rrggbb) in the default
// colour map of the widget's display. When the server does not know the name or its colour map is
// full, a toolkit warning says so and the result is the screen's black pixel when `black` is not 0,
// else its white one.
Pixel makeColorPixel(Widget widget, const char* name, int black);
