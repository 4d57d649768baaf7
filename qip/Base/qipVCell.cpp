// SPDX-License-Identifier: MIT
#include "qip/Base/qipVCell.h"

#include "qip/Support/qipAssert.h"

#include <Xm/Xm.h>

namespace {

// A base class and its subclass may both install a handler. It must be in the list once: each entry
// would be called, and the destructor takes one out.
void addOnce(Widget widget, const char* list, XtCallbackProc callback, XtPointer data)
{
    XtRemoveCallback(widget, list, callback, data);
    XtAddCallback(widget, list, callback, data);
}

} // namespace

qipVCell::qipVCell(const char* name) : _base(nullptr), _clientArea(nullptr)
{
    setName(name);
}

qipVCell::qipVCell(const qipVCell& other) = default;

qipVCell& qipVCell::operator=(const qipVCell& other) = default;

qipVCell::~qipVCell()
{
    if (_base != nullptr) {
        XtRemoveCallback(_base, XmNdestroyCallback, destroyed_cbk, this);
        if (XtHasCallbacks(_base, XmNhelpCallback) != XtCallbackNoList) {
            XtRemoveCallback(_base, XmNhelpCallback, helpRequested_cbk, this);
        }
    }
}

void qipVCell::setName(const char* name)
{
    qipAssert(name != 0);
    const bool isSet = _name.set(name);
    qipAssertAs(isSet, "_name != 0");
}

void qipVCell::destroyed()
{
    _base = nullptr;
    _clientArea = nullptr;
    _name.set(nullptr);
}

void qipVCell::helpRequested() const {}

void qipVCell::install(qipVCell*) {}

void qipVCell::manage()
{
    qipAssertAs(_base != nullptr, "_base != (Widget) 0");
    qipAssertAs(XtHasCallbacks(_base, XmNdestroyCallback) == XtCallbackHasSome,
                "XtHasCallbacks( _base, XmNdestroyCallback ) == XtCallbackHasSome");
    XtManageChild(_base);
}

void qipVCell::unmanage()
{
    qipAssertAs(_base != nullptr, "_base != (Widget) 0");
    XtUnmanageChild(_base);
}

const char* qipVCell::className() const
{
    return "qipVCell";
}

void qipVCell::setDefaultResources(Widget, const String*) {}

void qipVCell::getResources(const XtResource*, int) {}

void qipVCell::installDestroyHandler() const
{
    qipAssert(_base != 0);
    addOnce(_base, XmNdestroyCallback, destroyed_cbk, const_cast<qipVCell*>(this));
}

void qipVCell::installHelpHandler() const
{
    qipAssert(_base != 0);
    if (XtHasCallbacks(_base, XmNhelpCallback) != XtCallbackNoList) {
        addOnce(_base, XmNhelpCallback, helpRequested_cbk, const_cast<qipVCell*>(this));
    }
}

void qipVCell::destroyed_cbk(Widget, XtPointer cell, XtPointer)
{
    static_cast<qipVCell*>(cell)->destroyed();
}

void qipVCell::helpRequested_cbk(Widget, XtPointer cell, XtPointer)
{
    static_cast<const qipVCell*>(cell)->helpRequested();
}
