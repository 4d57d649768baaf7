// SPDX-License-Identifier: MIT
//
// The command that chooses the kind of report in a dialog. In the menu and the tool bar.
#pragma once

#include "zem/Window/DialogBtn.h"

class RptTpBtn : public DialogBtn
{
public:
    // For the menu, and for the tool bar.
    RptTpBtn();
    RptTpBtn(const char* const* image, const char* const* image2);

    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Shows the report that is called "Directory", "Function" or "Class"; that by file for any
    // other text.
    virtual void reportType(const char* text);

protected:
    // No dialog is ever destroyed.
    Widget createDialog(Widget parent) override;
    void accepted(const char* text) override;
    void cancelled() override;
    void closed() override;

private:
    static void noMatch_cbk(Widget dialog, XtPointer button, XtPointer callData);

    static bool _clicked; // a dialog is up, whichever button it belongs to
};
