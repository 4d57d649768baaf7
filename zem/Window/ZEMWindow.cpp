// SPDX-License-Identifier: MIT
#include "zem/Window/ZEMWindow.h"

#include "zem/Reports/RptArea.h"
#include "zem/Window/ZEMStsBar.h"

#include <Xm/Form.h>
#include <Xm/Frame.h>
#include <Xm/Xm.h>

#include <cstdlib>

ZEMWindow::ZEMWindow(const char* name) : qipWindow(name) {}

ZEMWindow::~ZEMWindow() = default;

const char* ZEMWindow::className() const
{
    return "ZEMWindow";
}

Widget ZEMWindow::createWorkArea(Widget parent)
{
    _clientArea = _main;
    constructBorder(parent);
    Widget reportArea = constructReportArea();
    Widget statusBar = constructStatusbar();
    XtVaSetValues(reportArea, XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_WIDGET,
                  XmNbottomWidget, statusBar, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                  XmATTACH_FORM, nullptr);
    XtVaSetValues(statusBar, XmNtopAttachment, XmATTACH_NONE, XmNbottomAttachment, XmATTACH_FORM,
                  XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    manage();
    return _workArea;
}

Widget ZEMWindow::constructBorder(Widget parent)
{
    _workArea = XtVaCreateManagedWidget("outerframe", xmFrameWidgetClass, parent, XmNmarginHeight,
                                        5, XmNmarginWidth, 5, XmNshadowType, XmSHADOW_OUT, nullptr);
    _clientArea = XtVaCreateManagedWidget("workarea", xmFormWidgetClass, _workArea, nullptr);
    return _clientArea;
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
    std::exit(0);
}
