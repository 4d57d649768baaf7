// SPDX-License-Identifier: MIT
//
// A top-level window: a popup shell with a Motif main window, whose work area a subclass makes. It
// is in the application's window list from construction to destruction.
//
// The window manager's Close never destroys the shell: it calls closeRequested().
#pragma once

#include "qip/Base/qipVCell.h"

class qipWindow : public qipVCell
{
public:
    // Registers with the application. REQUIRES: there is one.
    explicit qipWindow(const char* name);
    qipWindow(const qipWindow&) = delete;
    qipWindow& operator=(const qipWindow&) = delete;
    ~qipWindow() override;

    // Pops the window up; one that is up is raised.
    void manage() override;
    void unmanage() override;

    const char* className() const override;

    // Called once by initialize(): makes the work area under the main window `parent` and returns
    // it; not null.
    virtual Widget createWorkArea(Widget parent) = 0;

    // Creates the widgets. REQUIRES: the application's toolkit is initialised.
    virtual void initialize();

    // Hides the window; it can be shown again.
    virtual void close();

    virtual void iconify();

    // Called when the user closes the window through the window manager: close() here.
    virtual void closeRequested();

protected:
    void destroyed() override;

    Widget _main;     // the Motif main window "aWindow"
    Widget _workArea; // what createWorkArea() made

private:
    static void closeRequested_cbk(Widget widget, XtPointer window, XtPointer callData);
};
