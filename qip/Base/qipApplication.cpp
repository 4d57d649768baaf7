// SPDX-License-Identifier: MIT
#include "qip/Base/qipApplication.h"

#include "qip/Base/qipWindow.h"
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipAssert.h"

#include <X11/Shell.h>
#include <X11/Xresource.h>
#include <Xm/Xm.h>

#include <iostream>

qipApplication* theApplication = nullptr;

qipApplication::qipApplication(const char* name)
    : qipVCell(name), _display(nullptr), _appContext(nullptr)
{
    theApplication = this;
}

qipApplication::~qipApplication()
{
    if (theApplication == this) {
        theApplication = nullptr;
    }
}

void qipApplication::registerWindow(const qipWindow* window)
{
    _windows.append(const_cast<qipWindow*>(window));
}

void qipApplication::unregisterWindow(const qipWindow* window)
{
    _windows.remove(const_cast<qipWindow*>(window));
}

void qipApplication::manage()
{
    ListIterator<qipWindow*> windows(_windows);
    while (qipWindow* window = windows.next()) {
        window->manage();
    }
}

void qipApplication::unmanage()
{
    ListIterator<qipWindow*> windows(_windows);
    while (qipWindow* window = windows.next()) {
        window->unmanage();
    }
}

void qipApplication::iconify()
{
    ListIterator<qipWindow*> windows(_windows);
    while (qipWindow* window = windows.next()) {
        window->iconify();
    }
}

const char* qipApplication::className() const
{
    return "qipApplication";
}

void qipApplication::initialize(int& argc, char** argv)
{
    _base = XtAppInitialize(&_appContext, _name, nullptr, 0, &argc, argv, nullptr, nullptr, 0);
    _display = XtDisplay(_base);
    installDestroyHandler();
    const int screen = DefaultScreen(_display);
    // Motif maps a shell without a size as an empty stray window.
    XtVaSetValues(_base, XmNx, static_cast<Position>(DisplayWidth(_display, screen) / 2), XmNy,
                  static_cast<Position>(DisplayHeight(_display, screen) / 2), XmNwidth,
                  static_cast<Dimension>(1), XmNheight, static_cast<Dimension>(1),
                  XmNmappedWhenManaged, False, nullptr);
}

void qipApplication::addDefaults(const char* path)
{
    qipAssertAs(_base != nullptr, "_base != 0");
    XrmDatabase database = XtScreenDatabase(XtScreen(_base));
    XrmCombineFileDatabase(path, &database, False);
}

void qipApplication::handleEvents()
{
    XtAppMainLoop(_appContext);
}

void qipApplication::usageHelp()
{
    std::cout << _name << "\n"
              << "    Usage:\n\n"
              << "            This is the default qipApplication::usage() method\n"
              << "            You need to write your own!\n"
              << std::flush;
}

int qipApplication::appMain(int&, char**)
{
    ListIterator<qipWindow*> windows(_windows);
    while (qipWindow* window = windows.next()) {
        window->initialize();
        window->manage();
    }
    XtRealizeWidget(_base);
    handleEvents();
    return 0;
}

void usage()
{
    theApplication->usageHelp();
}
