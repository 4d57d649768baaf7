// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMView.h"

#include "qip/Support/qipCString.h"
#include "zem/Rows/clampToInt.h"

ZEMView::ZEMView() : _label(nullptr), _totBlk(0), _covBlk(0), _hits(0), _owner(nullptr) {}

ZEMView::~ZEMView() = default;

int ZEMView::hits() const
{
    return _hits;
}

int ZEMView::blocks() const
{
    return _totBlk;
}

int ZEMView::coverage() const
{
    if (_totBlk == 0) {
        return 0;
    }
    // In 64 bits: the product leaves 32 bits from 21,474,837 covered blocks on.
    const int64_t percent = static_cast<int64_t>(_covBlk) * 100 / _totBlk;
    return clampToInt(percent);
}

void ZEMView::setCounts(ZEMRecord* owner, int64_t total, int64_t covered, int64_t hits)
{
    _owner = owner;
    _totBlk = clampToInt(total);
    _covBlk = clampToInt(covered);
    _hits = clampToInt(hits);
}

const char* ZEMView::directory() const
{
    return "";
}

const char* ZEMView::filename() const
{
    return "";
}

const char* ZEMView::funcname() const
{
    return "";
}

const char* ZEMView::classname() const
{
    return "";
}

void ZEMView::setName(char*& field, const char* value)
{
    if (value != nullptr) {
        qipCString::replace(field, value);
    }
}

void ZEMView::setName(char*& field, const char* value, size_t length)
{
    qipCString::replace(field, value, length);
}
