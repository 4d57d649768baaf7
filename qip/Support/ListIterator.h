// SPDX-License-Identifier: MIT
//
// A typed cursor over a List<T>.
#pragma once

#include "qip/Support/List.h"
#include "qip/Support/dListIter.h"

template <class T> class ListIterator : public dListIter
{
public:
    // Starts before the first element.
    explicit ListIterator(List<T>& list) : dListIter(list) {}
    // For walking a list that the caller may only read.
    explicit ListIterator(const List<T>& list) : dListIter(const_cast<List<T>&>(list)) {}

    // Puts the cursor before the first element again.
    void reset() { _elem = nil(); }

    // Steps on and returns the datum; null at the end, where the cursor stands on the sentinel and
    // the next step starts over.
    T next()
    {
        _elem = _elem->_next;
        return current();
    }

    // The datum under the cursor; null on the sentinel.
    T current() const { return _elem == nil() ? nullptr : static_cast<dLinkT<T>*>(_elem)->_datum; }

    // Puts the cursor on the first element whose datum is `x` (the same pointer) and returns its
    // position. When there is none the cursor is on the first element (the sentinel of an empty
    // list) and the result is -1. The stored length bounds the search.
    int find(const T x)
    {
        _elem = nil()->_next;
        for (int i = 0; i < length(); ++i) {
            if (static_cast<dLinkT<T>*>(_elem)->_datum == x) {
                return i;
            }
            _elem = _elem->_next;
        }
        _elem = nil()->_next;
        return -1;
    }
};
