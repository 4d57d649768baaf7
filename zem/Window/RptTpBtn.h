// SPDX-License-Identifier: MIT
//
// The command that chooses the kind of report in a dialog. In the menu and the tool bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class RptTpBtn : public QuenzilBtn
{
public:
    // For the menu, and for the tool bar.
    RptTpBtn();
    RptTpBtn(const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Shows the report that is called "Directory", "Function" or "Class"; that by file for any
    // other text.
    virtual void reportType(const char* text);

private:
    static void ok_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void cancel_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void noMatch_cbk(Widget dialog, XtPointer button, XtPointer callData);
    static void close_cbk(Widget shell, XtPointer button, XtPointer callData);

    Widget _dialogBox;    // the last one made; none is ever destroyed
    static bool _clicked; // a dialog is up, whichever button it belongs to
};
