// SPDX-License-Identifier: MIT
#include "qip/Base/qipWindow.h"

#include "qip/Base/qipApplication.h"
#include "qip/Support/qipAssert.h"

#include <X11/Shell.h>
#include <Xm/MainW.h>
#include <Xm/Protocols.h>
#include <Xm/Xm.h>

namespace {

Atom deleteWindow(Widget shell)
{
    return XInternAtom(XtDisplay(shell), "WM_DELETE_WINDOW", False);
}

} // namespace

qipWindow::qipWindow(const char* name) : qipVCell(name), _main(nullptr), _workArea(nullptr)
{
    qipAssertAs(theApplication != nullptr, "theApplication != 0");
    theApplication->registerWindow(this);
}

qipWindow::~qipWindow()
{
    if (theApplication != nullptr) {
        theApplication->unregisterWindow(this);
    }
    if (_base != nullptr) {
        XmRemoveWMProtocolCallback(_base, deleteWindow(_base), closeRequested_cbk, this);
    }
}

void qipWindow::initialize()
{
    _base = XtCreatePopupShell(_name, topLevelShellWidgetClass, theApplication->baseWidget(),
                               nullptr, 0);
    installDestroyHandler();
    // The delete response would be to destroy the widgets under an object that still holds them.
    XtVaSetValues(_base, XmNallowShellResize, True, XmNdeleteResponse, XmDO_NOTHING, nullptr);
    XmAddWMProtocolCallback(_base, deleteWindow(_base), closeRequested_cbk, this);

    _main = XtCreateManagedWidget("aWindow", xmMainWindowWidgetClass, _base, nullptr, 0);
    _workArea = createWorkArea(_main);
    qipAssertAs(_workArea != nullptr, "_workArea != 0");
    XtVaSetValues(_main, XmNworkWindow, _workArea, nullptr);
    if (!XtIsManaged(_workArea)) {
        XtManageChild(_workArea);
    }
}

void qipWindow::manage()
{
    qipAssertAs(_base != nullptr, "_base != 0");
    XtPopup(_base, XtGrabNone);
    if (XtIsRealized(_base)) {
        XMapRaised(XtDisplay(_base), XtWindow(_base));
    }
}

void qipWindow::unmanage()
{
    qipAssertAs(_base != nullptr, "_base != 0");
    XtPopdown(_base);
}

void qipWindow::close()
{
    unmanage();
}

void qipWindow::iconify()
{
    qipAssertAs(_base != nullptr, "_base != 0");
    XtVaSetValues(_base, XmNiconic, True, nullptr);
    if (XtIsRealized(_base)) {
        XIconifyWindow(XtDisplay(_base), XtWindow(_base), 0);
    }
}

void qipWindow::closeRequested()
{
    close();
}

const char* qipWindow::className() const
{
    return "qipWindow";
}

void qipWindow::destroyed()
{
    _main = nullptr;
    _workArea = nullptr;
    qipVCell::destroyed();
}

void qipWindow::closeRequested_cbk(Widget, XtPointer window, XtPointer)
{
    static_cast<qipWindow*>(window)->closeRequested();
}
