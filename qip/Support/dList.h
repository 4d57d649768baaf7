// SPDX-License-Identifier: MIT
//
// The untyped core of every list: a ring of links around a sentinel. The links are the caller's;
// List<T> is the typed list that makes and deletes its own.
//
// Positions count from 0 at the first element. Every change returns the new length.
#pragma once

#include "qip/Support/dLink.h"

#include <iosfwd>

class dList
{
public:
    dList() : _length(0) {}
    // Frees nothing.
    virtual ~dList();

    // The neighbours of the sentinel point at it, so a list stays where it was built.
    dList(const dList&) = delete;
    dList& operator=(const dList&) = delete;

    // Puts `x` behind the last element. REQUIRES: x is not null.
    int append(dLink* x);
    // Puts `x` before the first element. REQUIRES: x is not null.
    int prepend(dLink* x);
    // Puts `x` right before `at`, which is a link of this list. REQUIRES: neither is null.
    int join(dLink* at, dLink* x);

    // Unlinks `x`, which must be in this list (this is not checked). `x` keeps its own pointers and
    // is not freed.
    int remove(dLink* x);

    // `x` when it is in this list, else null. Walks the list.
    dLink* find(dLink* x);

    // Null for an empty list.
    dLink* first();
    dLink* last();

    // The link at position `i`, or null when there is none. Walks the list.
    dLink* at(int i);

    // Empties the list and leaves its links alone: for links in memory that is freed as a whole.
    void abandon();

    int length() const { return _length; }

protected:
    friend class dListIter;
    friend std::ostream& operator<<(std::ostream& out, const dList& list);

    int _length;
    dLink _nil;
};

// Writes "list: nil(ADDRESS):{LINK}" and ", INDEX(ADDRESS):{LINK}" for each element, without a
// newline.
std::ostream& operator<<(std::ostream& out, const dList& list);
