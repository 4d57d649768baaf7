// SPDX-License-Identifier: MIT
#include "zem/Rows/ZEMRptTable.h"

#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

const char* ZEMRptTable::sortKeyList = nullptr;

namespace {

// a - b, held at the ends of the range where it does not fit.
int difference(int a, int b)
{
    const long long exact = static_cast<long long>(a) - b;
    return static_cast<int>(std::clamp<long long>(exact, INT_MIN, INT_MAX));
}

} // namespace

ZEMRptTable::ZEMRptTable() : _view(nullptr), _nItems(0), _isWhole(true) {}

ZEMRptTable::~ZEMRptTable() = default;

bool ZEMRptTable::reserve(size_t nRows)
{
    _view = nRows == 0 ? nullptr : new (std::nothrow) ZEMView*[nRows];
    _isWhole = nRows == 0 || _view != nullptr;
    return _view != nullptr;
}

void ZEMRptTable::giveUp()
{
    deleteRows();
    _isWhole = false;
}

void ZEMRptTable::deleteRows()
{
    for (int i = 0; i < _nItems; ++i) {
        delete _view[i];
    }
    delete[] _view;
    _view = nullptr;
    _nItems = 0;
    _isWhole = true;
}

void ZEMRptTable::sort(const char* keys)
{
    sortKeyList = keys;
    if (_view != nullptr && _nItems > 0 && keys != nullptr && keys[0] != '\0') {
        qsort(_view, static_cast<size_t>(_nItems), sizeof(ZEMView*), qsortElements);
    }
}

int ZEMRptTable::qsortElements(const void* a, const void* b)
{
    // qsort gives away its elements as constant; qsort_cbk only reads them.
    return qsort_cbk(static_cast<const ZEMView**>(const_cast<void*>(a)),
                     static_cast<const ZEMView**>(const_cast<void*>(b)));
}

int ZEMRptTable::qsort_cbk(const ZEMView** a, const ZEMView** b)
{
    return compareViews(*a, *b, sortKeyList);
}

int ZEMRptTable::compareViews(const ZEMView* a, const ZEMView* b, const char* keys)
{
    if (keys == nullptr) {
        return 0;
    }
    for (; *keys != '\0'; ++keys) {
        int result;
        switch (*keys) {
        case 'd':
            result = strcmp(a->directory(), b->directory());
            break;
        case 'F':
            result = strcmp(a->filename(), b->filename());
            break;
        case 'f':
        case 'n':
            result = strcmp(a->funcname(), b->funcname());
            break;
        case '%':
            result = difference(a->coverage(), b->coverage());
            break;
        case '#':
            result = difference(a->hits(), b->hits());
            break;
        case 'b':
            result = difference(a->blocks(), b->blocks());
            break;
        default:
            return 0;
        }
        if (result != 0) {
            return result;
        }
    }
    return 0;
}

int ZEMRptTable::longestLabel() const
{
    if (_view == nullptr) {
        return 0;
    }
    size_t longest = 0;
    for (int i = 0; i < _nItems; ++i) {
        if (_view[i]->_label != nullptr) {
            longest = std::max(longest, strlen(_view[i]->_label));
        }
    }
    return static_cast<int>(std::min<size_t>(longest, INT_MAX));
}

int ZEMRptTable::maxBlocks() const
{
    if (_view == nullptr) {
        return 0;
    }
    int most = 0;
    for (int i = 0; i < _nItems; ++i) {
        most = std::max(most, _view[i]->blocks());
    }
    return most;
}
