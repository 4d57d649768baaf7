// SPDX-License-Identifier: MIT
#include "qip/Support/dList.h"

#include <ostream>

dList::~dList() = default;

int dList::append(dLink* x)
{
    return join(&_nil, x);
}

int dList::prepend(dLink* x)
{
    return join(_nil._next, x);
}

int dList::join(dLink* at, dLink* x)
{
    at->join(x);
    return ++_length;
}

int dList::remove(dLink* x)
{
    x->_prev->_next = x->_next;
    x->_next->_prev = x->_prev;
    return --_length;
}

void dList::abandon()
{
    _nil._next = &_nil;
    _nil._prev = &_nil;
    _length = 0;
}

dLink* dList::find(dLink* x)
{
    for (dLink* link = _nil._next; link != &_nil; link = link->_next) {
        if (link == x) {
            return x;
        }
    }
    return nullptr;
}

dLink* dList::first()
{
    return _nil._next == &_nil ? nullptr : _nil._next;
}

dLink* dList::last()
{
    return _nil._prev == &_nil ? nullptr : _nil._prev;
}

dLink* dList::at(int i)
{
    if (i < 0 || i >= _length) {
        return nullptr;
    }
    dLink* link = _nil._next;
    for (int n = 0; n < i; ++n) {
        link = link->_next;
    }
    return link;
}

std::ostream& operator<<(std::ostream& out, const dList& list)
{
    out << "list: nil(" << static_cast<const void*>(&list._nil) << "):{" << list._nil << "}";
    int index = 0;
    for (const dLink* link = list._nil._next; link != &list._nil; link = link->_next) {
        out << ", " << index++ << "(" << static_cast<const void*>(link) << "):{" << *link << "}";
    }
    return out;
}
