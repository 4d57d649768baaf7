// SPDX-License-Identifier: MIT
//
// The command that loads a log file, which the user picks in a dialog. In the menu and the tool
// bar.
#pragma once

#include "zem/Window/DialogBtn.h"

class LoadBtn : public DialogBtn
{
public:
    // For the menu, and for the tool bar.
    LoadBtn();
    LoadBtn(const char* const* image, const char* const* image2);

    const char* className() const override;

    // Opens the dialog, unless one is open.
    void triggered() override;

    // Takes the dialog down, merges the log file `name` and shows the report.
    virtual void processSelectedFile(const char* name);

protected:
    // No dialog is ever destroyed.
    Widget createDialog(Widget parent) override;
    // An empty text leaves the dialog up.
    void accepted(const char* text) override;
    void cancelled() override;

private:
    static bool _clicked; // a dialog is up, whichever button it belongs to
};
