// SPDX-License-Identifier: MIT
#include "qip/Base/qipWindow.h"

#include "qip/Base/qipApplication.h"
#include "qip/Support/qipAssert.h"

#include <X11/Shell.h>
#include <Xm/MainW.h>
#include <Xm/Protocols.h>
#include <Xm/Xm.h>

#include <algorithm>

namespace {

Atom deleteWindow(Widget shell)
{
    return XInternAtom(XtDisplay(shell), "WM_DELETE_WINDOW", False);
}

// Top and bottom on the screen of a shell's window, with the frame that a window manager has put
// around it.
struct Extent
{
    int top;
    int bottom;
};

Extent extentOf(Widget shell)
{
    Display* display = XtDisplay(shell);
    Window window = XtWindow(shell);
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned nChildren = 0;
    while (XQueryTree(display, window, &root, &parent, &children, &nChildren) != 0) {
        if (children != nullptr) {
            XFree(children);
        }
        if (parent == root) {
            break;
        }
        window = parent;
    }
    XWindowAttributes frame = {};
    XGetWindowAttributes(display, window, &frame);
    return {frame.y, frame.y + frame.height + 2 * frame.border_width};
}

int clampTo(int value, int least, int most)
{
    return std::max(std::min(value, most), least);
}

} // namespace

qipWindow::qipWindow(const char* name) : qipVCell(name), _main(nullptr), _workArea(nullptr)
{
    qipAssert(theApplication != 0);
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
    qipAssert(_workArea != 0);
    XtVaSetValues(_main, XmNworkWindow, _workArea, nullptr);
    if (!XtIsManaged(_workArea)) {
        XtManageChild(_workArea);
    }
}

void qipWindow::manage()
{
    qipAssert(_base != 0);
    XtPopup(_base, XtGrabNone);
    if (XtIsRealized(_base)) {
        XMapRaised(XtDisplay(_base), XtWindow(_base));
    }
}

void qipWindow::unmanage()
{
    qipAssert(_base != 0);
    XtPopdown(_base);
}

void qipWindow::close()
{
    unmanage();
}

void qipWindow::iconify()
{
    qipAssert(_base != 0);
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

void qipWindow::makeHigher(Widget inside, int pixels)
{
    Widget shell = inside;
    while (!XtIsShell(shell)) {
        shell = XtParent(shell);
    }
    if (!XtIsRealized(shell) || pixels <= 0) {
        return;
    }
    const Extent extent = extentOf(shell);
    const int below = std::max(HeightOfScreen(XtScreen(shell)) - extent.bottom, 0);
    const int up = clampTo(pixels - below, 0, std::max(extent.top, 0));
    const int growth = std::min(pixels, below + up);
    Dimension height = 0;
    XtVaGetValues(shell, XmNheight, &height, nullptr);
    if (up > 0) {
        // A window manager takes this as the place of its frame.
        XtVaSetValues(shell, XmNy, static_cast<Position>(extent.top - up), nullptr);
    }
    if (growth > 0) {
        XtVaSetValues(shell, XmNheight, static_cast<Dimension>(height + growth), nullptr);
    }
}

void qipWindow::placeOnScreen(int frameWidth, int frameHeight)
{
    XtRealizeWidget(_base);
    Position x = 0;
    Position y = 0;
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(_base, XmNx, &x, XmNy, &y, XmNwidth, &width, XmNheight, &height, nullptr);
    const int roomX = std::max(WidthOfScreen(XtScreen(_base)) - frameWidth, 1);
    const int roomY = std::max(HeightOfScreen(XtScreen(_base)) - frameHeight, 1);
    const int newWidth = std::min<int>(width, roomX);
    const int newHeight = std::min<int>(height, roomY);
    XtVaSetValues(_base, XmNx, static_cast<Position>(clampTo(x, 0, roomX - newWidth)), XmNy,
                  static_cast<Position>(clampTo(y, 0, roomY - newHeight)), XmNwidth,
                  static_cast<Dimension>(newWidth), XmNheight, static_cast<Dimension>(newHeight),
                  nullptr);
}

void qipWindow::closeRequested_cbk(Widget, XtPointer window, XtPointer)
{
    static_cast<qipWindow*>(window)->closeRequested();
}
