// SPDX-License-Identifier: MIT
//
// The two lists of a file-selection dialog, folders and files, side by side in equal width. The
// dialog itself gives the files what their longest name needs and the folders the rest, which may
// be a few characters, and grows with each long name. This keeps both at half of its width, however
// wide the user makes it.
#pragma once

#include <X11/Intrinsic.h>

class FileLists
{
public:
    // From now on, for the dialog's whole life. REQUIRES: not managed yet.
    static void keepEven(Widget dialog);

private:
    static void changed(Widget list, XtPointer dialog, XEvent* event, Boolean* goOn);
    static void share(Widget dialog);
};
