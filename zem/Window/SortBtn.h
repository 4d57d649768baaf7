// SPDX-License-Identifier: MIT
//
// The command that asks for sort keys in a dialog and sorts the report by them. In the menu and the
// tool bar.
#pragma once

#include "zem/Window/DialogBtn.h"

class SortBtn : public DialogBtn
{
public:
    // For the menu, and for the tool bar.
    SortBtn();
    SortBtn(const char* const* image, const char* const* image2);

    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Sorts by the keys `text` (see ZEMRptTable::compareViews) and destroys the dialog.
    virtual void sortKeys(const char* text);

protected:
    // A dialog is destroyed when it ends.
    Widget createDialog(Widget parent) override;
    // An empty text leaves the dialog up.
    void accepted(const char* text) override;
    void cancelled() override;

private:
    void endDialog();
    static void help_cbk(Widget dialog, XtPointer button, XtPointer callData);

    static bool _clicked; // a dialog is up, whichever button it belongs to
};
