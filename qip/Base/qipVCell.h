// SPDX-License-Identifier: MIT
//
// Base of every visual component: a named object with one widget tree, whose root is `_base`.
// A subclass makes its widgets in install(), under the client area of the cell that it is given,
// and calls installDestroyHandler() so that the cell learns when Xt destroys them.
//
// Life cycle: named > install() > manage() and unmanage(), any number of times > widget destroyed,
// the cell forgets it > deleted by its owner. Deleting a cell does not destroy its widget.
#pragma once

#include <X11/Intrinsic.h>

class qipVCell
{
public:
    // Keeps a copy of `name`, which is also the widget's name. REQUIRES: name is not null.
    explicit qipVCell(const char* name);

    // A copy has its own name and shares the widgets, but is not told when they are destroyed.
    qipVCell(const qipVCell& other);
    qipVCell& operator=(const qipVCell& other);

    // Called when the base widget is gone: the cell forgets widgets and name. An override forgets
    // its own widgets and calls this.
    virtual void destroyed();

    // Called when the user asks for help on this component.
    virtual void helpRequested() const;

    virtual ~qipVCell();

    // Creates the widgets under the client area of `parent`. Does nothing here.
    virtual void install(qipVCell* parent);

    // Show and hide the base widget. REQUIRES: there is one; for manage() also that the destroy
    // handler is installed.
    virtual void manage();
    virtual void unmanage();

    virtual const char* className() const;

    // Hooks for resources that a subclass wants to set or read; nothing here.
    virtual void setDefaultResources(Widget widget, const String* resources);
    virtual void getResources(const XtResource* resources, int count);

    // Have destroyed() or helpRequested() called. A widget without a help callback list (a shell)
    // takes no help handler. REQUIRES: there is a base widget.
    void installDestroyHandler() const;
    void installHelpHandler() const;

    // Renames the component; its own text is allowed. The widget keeps its name.
    // REQUIRES: name is not null.
    void name(const char* name) { setName(name); }

    const char* name() const { return _name; } // null once the widget has been destroyed
    Widget baseWidget() const { return _base; }
    Widget clientArea() const { return _clientArea; }

protected:
    void setName(const char* name);

    char* _name;        // owned
    Widget _base;       // root of the widget tree, owned by Xt; null before and after its life
    Widget _clientArea; // where children go

private:
    static void destroyed_cbk(Widget widget, XtPointer cell, XtPointer callData);
    static void helpRequested_cbk(Widget widget, XtPointer cell, XtPointer callData);
};
