// SPDX-License-Identifier: MIT
#include "zem/Window/ZEMWindow.h"

#include "qip/Base/qipApplication.h"
#include "qip/Components/qipQuitCommand.h"
#include "qip/Drawing/setWindowIcon.h"
#include "zem/Icons/browse.xpm"
#include "zem/Icons/exit.xpm"
#include "zem/Icons/help.xpm"
#include "zem/Icons/load.xpm"
#include "zem/Icons/report.xpm"
#include "zem/Icons/sort.xpm"
#include "zem/Reports/RptArea.h"
#include "zem/Status/ZEMStsBar.h"

#include <Xm/Form.h>
#include <Xm/Frame.h>
#include <Xm/Xm.h>

namespace {

// Pixels that window managers put around a window, at most, in all.
constexpr int FrameWidth = 30;
constexpr int FrameHeight = 50;

} // namespace

ZEMWindow::Menus::Menus()
    : file("File", 'F', "File"), help("Help", 'H', "Help"), overview("overview", "Overview"),
      onToolbar("toolbar", "On toolbar"), onReports("reports", "On reports")
{
    file.addButton(&load, 'L');
    file.addButton(&browse, 'B');
    file.addButton(&reportType, 'R');
    file.addButton(&sort, 'S');
    file.addSeparator();
    file.addButton(&exit, 'x');

    help.addButton(&overview, 'O');
    help.addSeparator();
    help.addButton(&onToolbar, 't');
    help.addButton(&onReports, 'r');
    help.addSeparator();
    help.addButton(&about, 'A');
}

ZEMWindow::Tools::Tools(ZEMWindow* window)
    : toolGroup("toolGroup"), load(load_xpm, load_xpm), browse(browse_xpm, browse_xpm),
      reportType(report_xpm, report_xpm), sort(sort_xpm, sort_xpm), helpGroup("helpGroup"),
      help(window, help_xpm, help_xpm), exit(exit_xpm, exit_xpm)
{
    toolGroup.addTool(&load);
    toolGroup.addTool(&browse);
    toolGroup.addTool(&reportType);
    toolGroup.addTool(&sort);
    helpGroup.addTool(&help);
    helpGroup.addTool(&exit);
}

ZEMWindow::ZEMWindow(const char* name)
    : qipWindow(name), _menuBar("menu"), _toolbar("toolbar"), _tools(this)
{}

ZEMWindow::~ZEMWindow() = default;

const char* ZEMWindow::className() const
{
    return "ZEMWindow";
}

Widget ZEMWindow::createWorkArea(Widget parent)
{
    const char* geometry = theApplication->geometry();
    if (geometry != nullptr) {
        XtVaSetValues(_base, XmNgeometry, geometry, nullptr);
    }
    _clientArea = _main;
    constructMenubar();
    constructBorder(parent);
    Widget toolbar = constructToolbar();
    Widget reportArea = constructReportArea();
    Widget statusBar = constructStatusbar();
    XtVaSetValues(toolbar, XmNtopAttachment, XmATTACH_FORM, nullptr);
    XtVaSetValues(reportArea, XmNtopAttachment, XmATTACH_WIDGET, XmNtopWidget, toolbar,
                  XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget, statusBar,
                  XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    XtVaSetValues(statusBar, XmNtopAttachment, XmATTACH_NONE, XmNbottomAttachment, XmATTACH_FORM,
                  XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    // A size that the user asked for is taken to the letter, as far as the screen goes.
    placeOnScreen(geometry != nullptr ? 0 : FrameWidth, geometry != nullptr ? 0 : FrameHeight);
    setWindowIcon(_base, report_xpm);
    manage();
    return _workArea;
}

void ZEMWindow::constructMenubar()
{
    _menuBar.addPane(&_menus.file);
    _menuBar.addPane(&_menus.help);
    _menuBar.install(this);
}

Widget ZEMWindow::constructBorder(Widget parent)
{
    _workArea = XtVaCreateManagedWidget("outerframe", xmFrameWidgetClass, parent, XmNmarginHeight,
                                        5, XmNmarginWidth, 5, XmNshadowType, XmSHADOW_OUT, nullptr);
    _clientArea = XtVaCreateManagedWidget("workarea", xmFormWidgetClass, _workArea, nullptr);
    return _clientArea;
}

Widget ZEMWindow::constructToolbar()
{
    _toolbar.install(this);
    _toolbar.addGroup(&_tools.toolGroup);
    _toolbar.addHelpGroup(&_tools.helpGroup);
    return _toolbar.baseWidget();
}

Widget ZEMWindow::constructReportArea()
{
    theReportContainer->install(this);
    return theReportContainer->baseWidget();
}

Widget ZEMWindow::constructStatusbar()
{
    theStatusBar->install(this);
    return theStatusBar->baseWidget();
}

void ZEMWindow::closeRequested()
{
    if (theQuitCommand != nullptr) {
        theQuitCommand->execute();
    }
}
