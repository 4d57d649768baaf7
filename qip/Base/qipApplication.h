// SPDX-License-Identifier: MIT
//
// The program itself: the connection to the display, the toolkit's context, the windows and the
// event loop. There is one; it sets `theApplication`.
//
// Its base widget is the application shell, which is never seen: it stands unmapped, one pixel
// large, in the middle of the screen, so that dialogs are centred there.
//
// Life cycle: built before main > initialize() > appMain(), which ends in the event loop. The
// program ends by exit().
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Support/List.h"

class qipWindow;

class qipApplication : public qipVCell
{
public:
    // `name` is also the class under which X resources are looked up.
    explicit qipApplication(const char* name);
    qipApplication(const qipApplication&) = delete;
    qipApplication& operator=(const qipApplication&) = delete;
    ~qipApplication() override;

    // Call the operation of that name of every window, in the order of their making.
    void manage() override;
    void unmanage() override;
    void iconify();

    const char* className() const override;

    // Opens the display and takes the toolkit's own options out of the arguments. Without a display
    // the toolkit says so and ends the program.
    virtual void initialize(int& argc, char** argv);

    // Runs the event loop; does not return.
    virtual void handleEvents();

    // Prints how the program is used.
    virtual void usageHelp();

    // Initialises and shows every window and runs the event loop. Returns 0 if that ever ends.
    virtual int appMain(int& argc, char** argv);

    // Adds the resources of the file `path` to the display's where they say nothing. To be called
    // after initialize() and before the first widget that they are for. A file that cannot be read
    // changes nothing.
    void addDefaults(const char* path);

    // Called by qipWindow. The list does not own the windows.
    void registerWindow(const qipWindow* window);
    void unregisterWindow(const qipWindow* window);

    Display* display() const { return _display; }           // null before initialize()
    XtAppContext appContext() const { return _appContext; } // null before initialize()
    const List<qipWindow*>& windows() const { return _windows; }

protected:
    Display* _display;
    XtAppContext _appContext;
    List<qipWindow*> _windows;
};

// The application built last; null while there is none.
extern qipApplication* theApplication;

// Prints how the program is used: theApplication->usageHelp().
void usage();
