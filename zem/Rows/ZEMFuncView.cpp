// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMFuncView.h"

ZEMFuncView::ZEMFuncView() : _funcname(nullptr) {}

ZEMFuncView::~ZEMFuncView()
{
    // The base would free the label, which is the name.
    _label = nullptr;
    delete[] _funcname;
}

const char* ZEMFuncView::funcname() const
{
    return _funcname == nullptr ? "" : _funcname;
}

void ZEMFuncView::funcname(const char* name)
{
    setLabelledName(_funcname, name);
}

void ZEMFuncView::setLabel()
{
    _label = _funcname;
}
