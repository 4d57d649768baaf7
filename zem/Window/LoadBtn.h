// SPDX-License-Identifier: MIT
//
// The command that loads a log file, which the user picks in a dialog. In the menu and the tool
// bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class LoadBtn : public QuenzilBtn
{
public:
    // For the menu, and for the tool bar.
    LoadBtn();
    LoadBtn(const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Takes the dialog down, merges the log file `name` and shows the report.
    virtual void processSelectedFile(const char* name);

private:
    static void ok_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void cancel_cbk(Widget dialog, XtPointer button, XtPointer callData);

    Widget _dialogBox;    // the last one made; none is ever destroyed
    static bool _clicked; // a dialog is up, whichever button it belongs to
};
