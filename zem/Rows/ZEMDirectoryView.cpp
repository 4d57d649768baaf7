// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMDirectoryView.h"

ZEMDirectoryView::ZEMDirectoryView() : _directory(nullptr) {}

ZEMDirectoryView::~ZEMDirectoryView()
{
    delete[] _directory;
}

const char* ZEMDirectoryView::directory() const
{
    return _directory == nullptr ? "" : _directory;
}

void ZEMDirectoryView::directory(const char* name)
{
    setLabelledName(_directory, name);
}

void ZEMDirectoryView::setLabel()
{
    _label = _directory;
}

void ZEMDirectoryView::setLabelledName(char*& field, const char* value)
{
    const bool isLabel = _label != nullptr && _label == field;
    setName(field, value);
    if (isLabel) {
        _label = field;
    }
}
