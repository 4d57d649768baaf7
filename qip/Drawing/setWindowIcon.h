// SPDX-License-Identifier: MIT
//
// The picture by which docks, task bars and window managers show a window.
#pragma once

#include <X11/Intrinsic.h>

// Gives a shell the XPM picture `data` as its icon: as pixels with transparency for desktops
// (_NET_WM_ICON, in its own size and doubled), and as a pixmap with a mask for older window
// managers. Data that is no picture leaves the window without. REQUIRES: the shell is realised.
void setWindowIcon(Widget shell, const char* const* data);
