// SPDX-License-Identifier: MIT
//
// The command that asks for sort keys in a dialog and sorts the report by them. In the menu and the
// tool bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class SortBtn : public QuenzilBtn
{
public:
    // For the menu, and for the tool bar.
    SortBtn();
    SortBtn(const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Sorts by the keys `text` (see ZEMRptTable::compareViews) and destroys the dialog.
    virtual void sortKeys(const char* text);

private:
    void endDialog();
    static void ok_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void help_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void cancel_cbk(Widget dialog, XtPointer button, XtPointer callData);

    Widget _dialogBox;    // null while there is none
    static bool _clicked; // a dialog is up, whichever button it belongs to
};
