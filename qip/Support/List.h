// SPDX-License-Identifier: MIT
//
// A typed list of pointers. It owns its nodes and never the objects that they point to: whoever
// puts an object in deletes it, usually by walking the list, deleting each datum and letting the
// list go.
//
// Iteration, while nothing is taken out:
//
//     ListIterator<Thing*> it(things);
//     while (Thing* thing = it.next()) { ... }
#pragma once

#include "qip/Support/dLinkT.h"
#include "qip/Support/dList.h"

#include <new>

template <class T> class ListIterator;

template <class T> class List : public dList
{
public:
    // Deletes every node, head to tail, never a datum.
    ~List() override
    {
        while (_nil._next != &_nil) {
            dLink* link = _nil._next;
            _nil._next = link->_next;
            delete static_cast<dLinkT<T>*>(link);
        }
    }

    // Put `datum` behind the last or before the first element. Return the new length; without
    // memory for the node nothing is inserted and the length stays.
    int append(const T datum)
    {
        auto* link = new (std::nothrow) dLinkT<T>(datum);
        return link == nullptr ? _length : dList::append(link);
    }
    int prepend(const T datum)
    {
        auto* link = new (std::nothrow) dLinkT<T>(datum);
        return link == nullptr ? _length : dList::prepend(link);
    }

    // Takes out the first node whose datum is `datum` (the same pointer) and deletes the node, not
    // the datum. Returns 0, or -1 when there is none.
    int remove(const T datum)
    {
        for (dLink* link = _nil._next; link != &_nil; link = link->_next) {
            if (static_cast<dLinkT<T>*>(link)->_datum == datum) {
                dList::remove(link);
                delete static_cast<dLinkT<T>*>(link);
                return 0;
            }
        }
        return -1;
    }

    // The datum of the first or last element; null for an empty list.
    T first() { return datumOf(dList::first()); }
    T last() { return datumOf(dList::last()); }

    // The untyped operations on links stay usable.
    using dList::append;
    using dList::prepend;
    using dList::remove;

private:
    static T datumOf(dLink* link)
    {
        return link == nullptr ? nullptr : static_cast<dLinkT<T>*>(link)->_datum;
    }
};
