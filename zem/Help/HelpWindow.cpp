// SPDX-License-Identifier: MIT
#include "zem/Help/HelpWindow.h"

#include "qip/Base/qipApplication.h"
#include "qip/Drawing/setWindowIcon.h"
#include "zem/Icons/close.xpm"
#include "zem/Icons/report.xpm"
#include "zem/Share/find_vorandel_home.h"

#include <Xm/Form.h>
#include <Xm/Frame.h>
#include <Xm/Xm.h>

#include <new>
#include <string>

namespace {

constexpr int Margin = 5; // pixels around what is in the window

// The file of a topic. Returns false when the topic or the help is missing.
bool helpFile(const char* topic, std::string& path)
{
    std::string home;
    if (topic == nullptr || topic[0] == '\0' || !find_vorandel_home(theApplication->name(), home)) {
        return false;
    }
    path = home + "/" + theApplication->name() + "/help/" + topic + ".hlp";
    return true;
}

} // namespace

HelpWindow* HelpWindow::_theHelpWindow = nullptr;

HelpWindow::HelpWindow(const char* title)
    : qipWindow(title), _menubar("menu"), _toolbar("toolBar"), _viewer("fileViewer"),
      _closeGroup("closeGroup"), _closeBtn(this, close_xpm)
{}

bool HelpWindow::initializeInstance()
{
    if (_theHelpWindow == nullptr) {
        _theHelpWindow = new (std::nothrow) HelpWindow("Help");
        if (_theHelpWindow != nullptr) {
            _theHelpWindow->initialize();
        }
    }
    return _theHelpWindow != nullptr;
}

void HelpWindow::showHelpOn(const char* topic)
{
    const bool wasThere = _theHelpWindow != nullptr;
    if (!initializeInstance()) {
        return;
    }
    std::string path;
    bool found = false;
    try {
        found = helpFile(topic, path);
    } catch (const std::bad_alloc&) {
        // As if the topic were missing.
    }
    if (!found) {
        // Making the window has put it up. It is taken down before anybody sees it.
        if (!wasThere) {
            _theHelpWindow->unmanage();
        }
        return;
    }
    _theHelpWindow->manage();
    _theHelpWindow->_viewer.display(path.c_str(), 1);
}

Widget HelpWindow::createWorkArea(Widget parent)
{
    _clientArea = parent;
    const Widget form = constructBorder(parent);
    const Widget toolbar = constructToolbar();
    const Widget text = constructTextArea(form);
    XtVaSetValues(text, XmNtopAttachment, XmATTACH_WIDGET, XmNtopWidget, toolbar,
                  XmNbottomAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM,
                  XmNrightAttachment, XmATTACH_FORM, nullptr);
    manage();
    setWindowIcon(_base, report_xpm);
    return _workArea;
}

Widget HelpWindow::constructBorder(Widget parent)
{
    _workArea = XtVaCreateManagedWidget("outerframe", xmFrameWidgetClass, parent, XmNmarginHeight,
                                        0, XmNmarginWidth, 0, XmNshadowType, XmSHADOW_OUT, nullptr);
    _clientArea = XtVaCreateManagedWidget("workarea", xmFormWidgetClass, _workArea, XmNmarginHeight,
                                          Margin, XmNmarginWidth, Margin, nullptr);
    return _clientArea;
}

Widget HelpWindow::constructToolbar()
{
    _toolbar.install(this);
    _closeGroup.addTool(&_closeBtn);
    _toolbar.addHelpGroup(&_closeGroup);
    return _toolbar.baseWidget();
}

Widget HelpWindow::constructTextArea(Widget)
{
    _viewer.install(this);
    return _viewer.baseWidget();
}

void HelpWindow::manage()
{
    qipWindow::manage();
    Time time = XtLastTimestampProcessed(XtDisplay(_main));
    XtCallAcceptFocus(_main, &time);
    XmProcessTraversal(_main, XmTRAVERSE_CURRENT);
}

const char* HelpWindow::className() const
{
    return "HelpWindow";
}
