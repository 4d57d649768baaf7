// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMClassView.h"

ZEMClassView::ZEMClassView() : _classname(nullptr) {}

ZEMClassView::~ZEMClassView()
{
    // The base would free the label, which is the name.
    _label = nullptr;
    delete[] _classname;
}

const char* ZEMClassView::classname() const
{
    return _classname == nullptr ? "" : _classname;
}

void ZEMClassView::classname(const char* name)
{
    setLabelledName(_classname, name);
}

const char* ZEMClassView::filename() const
{
    return "";
}

const char* ZEMClassView::funcname() const
{
    return "";
}

void ZEMClassView::setLabel()
{
    _label = _classname;
}
