// SPDX-License-Identifier: MIT
//
// The main window: the report area, and the status bar below it.
//
//   "zem" (shell) > "aWindow" > "outerframe" > "workarea" > report area, "statusbar_work"
//
// The report area takes all height that the status bar leaves.
#pragma once

#include "qip/Components/qipWindow.h"

class ZEMWindow : public qipWindow
{
public:
    explicit ZEMWindow(const char* name);
    ~ZEMWindow() override;

    const char* className() const override;

    // Builds everything under the main window `parent` and shows it. Returns the frame.
    // REQUIRES: theReportContainer and theStatusBar exist.
    Widget createWorkArea(Widget parent) override;

    // Ends the program, as Exit does.
    void closeRequested() override;

private:
    // Each returns the widget that it made.
    Widget constructBorder(Widget parent);
    Widget constructReportArea();
    Widget constructStatusbar();
};
