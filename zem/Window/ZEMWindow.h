// SPDX-License-Identifier: MIT
//
// The main window: menu bar, tool bar, the report area, and the status bar below it.
//
//   "zem" (shell) > "aWindow" > "menu"
//                             > "outerframe" > "workarea" > "toolbar", report area,
//                                                           "statusbar_work"
//
// The report area takes all height that tool bar and status bar leave.
#pragma once

#include "qip/Base/qipWindow.h"
#include "qip/Components/qipHelpMenuPane.h"
#include "qip/Components/qipMenuBar.h"
#include "qip/Components/qipMenuPane.h"
#include "qip/Components/qipToolBar.h"
#include "qip/Components/qipToolGroup.h"
#include "zem/Window/AboutBtn.h"
#include "zem/Window/ExitBtn.h"
#include "zem/Window/HMenuBtn.h"
#include "zem/Window/HelpBtn.h"
#include "zem/Window/LoadBtn.h"
#include "zem/Window/RptTpBtn.h"
#include "zem/Window/SortBtn.h"
#include "zem/Window/SrcBtn.h"

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
    // What stands in the menu bar.
    struct Menus
    {
        Menus();

        qipMenuPane file;
        LoadBtn load;
        SrcBtn browse;
        RptTpBtn reportType;
        SortBtn sort;
        ExitBtn exit;

        qipHelpMenuPane help;
        HMenuBtn overview;
        HMenuBtn onToolbar;
        HMenuBtn onReports;
        AboutBtn about;
    };

    // What stands in the tool bar.
    struct Tools
    {
        explicit Tools(ZEMWindow* window);

        qipToolGroup toolGroup;
        LoadBtn load;
        SrcBtn browse;
        RptTpBtn reportType;
        SortBtn sort;

        qipToolGroup helpGroup;
        HelpBtn help;
        ExitBtn exit;
    };

    void constructMenubar();
    // Each returns the widget that it made.
    Widget constructBorder(Widget parent);
    Widget constructToolbar();
    Widget constructReportArea();
    Widget constructStatusbar();

    qipMenuBar _menuBar;
    qipToolBar _toolbar;
    Menus _menus;
    Tools _tools;
};
