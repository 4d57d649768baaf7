// SPDX-License-Identifier: MIT
//
// What the dialogs of the commands share.
#pragma once

#include <Xm/Xm.h>

class CommandDialog
{
public:
    CommandDialog() = delete;

    // Calls `cancel` with `data` when the window manager closes the dialog, which then stays as it
    // is: `cancel` takes it down. Without this a closed dialog would tell nobody.
    static void cancelOnClose(Widget dialog, XtCallbackProc cancel, XtPointer data);

    // Pops the dialog's shell up without a grab, or down.
    static void popUp(Widget dialog);
    static void popDown(Widget dialog);

    // Sets a resource that is a compound string.
    static void setText(Widget dialog, const char* resource, const char* text);

    // The text of a compound string, for the caller to free with XtFree(); null when it cannot be
    // converted.
    static char* textOf(XmString string);
};
