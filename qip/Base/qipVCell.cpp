// SPDX-License-Identifier: MIT
#include "qip/Base/qipVCell.h"

#include "qip/Support/qipAssert.h"

#include <Xm/Xm.h>

#include <cstring>
#include <new>

qipVCell::qipVCell(const char* name) : _name(nullptr), _base(nullptr), _clientArea(nullptr)
{
    setName(name);
}

qipVCell::qipVCell(const qipVCell& other)
    : _name(nullptr), _base(other._base), _clientArea(other._clientArea)
{
    if (other._name != nullptr) {
        setName(other._name);
    }
}

qipVCell& qipVCell::operator=(const qipVCell& other)
{
    if (this != &other) {
        if (other._name != nullptr) {
            setName(other._name);
        } else {
            delete[] _name;
            _name = nullptr;
        }
        _base = other._base;
        _clientArea = other._clientArea;
    }
    return *this;
}

qipVCell::~qipVCell()
{
    if (_base != nullptr) {
        XtRemoveCallback(_base, XmNdestroyCallback, destroyed_cbk, this);
        if (XtHasCallbacks(_base, XmNhelpCallback) != XtCallbackNoList) {
            XtRemoveCallback(_base, XmNhelpCallback, helpRequested_cbk, this);
        }
    }
    delete[] _name;
}

void qipVCell::setName(const char* name)
{
    qipAssertAs(name != nullptr, "name != 0");
    // The new name may be the old one's own text, so the old one goes last.
    char* const old = _name;
    const size_t size = std::strlen(name) + 1;
    _name = new (std::nothrow) char[size];
    qipAssertAs(_name != nullptr, "_name != 0");
    std::memcpy(_name, name, size);
    delete[] old;
}

void qipVCell::destroyed()
{
    _base = nullptr;
    _clientArea = nullptr;
    delete[] _name;
    _name = nullptr;
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
    qipAssertAs(_base != nullptr, "_base != 0");
    XtAddCallback(_base, XmNdestroyCallback, destroyed_cbk, const_cast<qipVCell*>(this));
}

void qipVCell::installHelpHandler() const
{
    qipAssertAs(_base != nullptr, "_base != 0");
    if (XtHasCallbacks(_base, XmNhelpCallback) != XtCallbackNoList) {
        XtAddCallback(_base, XmNhelpCallback, helpRequested_cbk, const_cast<qipVCell*>(this));
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
