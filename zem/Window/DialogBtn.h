// SPDX-License-Identifier: MIT
//
// Base of the commands that ask something in a dialog: Load, Reports and Sort. Each stands in the
// menu and in the tool bar, and one dialog of a command is up at a time, whichever button opened
// it.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class DialogBtn : public QuenzilBtn
{
public:
    // Shows the topic "toolbar".
    void helpRequested() const override;

protected:
    // `name`, `label` and the pictures as for QuenzilBtn. `isUp` says for all buttons of the
    // command whether a dialog is up.
    DialogBtn(const char* name, const char* label, const char* const* image,
              const char* const* image2, bool& isUp);

    // Opens the dialog and makes it `_dialogBox`. False when one is up already, when there is no
    // report area, and without memory.
    bool openDialog();

    // Makes the dialog under `parent`, not managed; null without memory. Its OK, Cancel and the
    // window manager's close are openDialog()'s.
    virtual Widget createDialog(Widget parent) = 0;

    // Called when OK is pressed, with the text typed; null when it cannot be converted.
    virtual void accepted(const char* text) = 0;
    // Called when Cancel is pressed, and when the window manager closes the dialog.
    virtual void cancelled() = 0;
    virtual void closed();

    // Another dialog may be opened.
    void dialogIsDown() { _isUp = false; }

    Widget _dialogBox; // the last one made, or null

private:
    static void ok_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void cancel_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void close_cbk(Widget shell, XtPointer button, XtPointer callData);

    bool& _isUp;
};
