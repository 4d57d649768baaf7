// SPDX-License-Identifier: MIT
//
// A cursor over a dList. It stands on a link or on the sentinel, which means "before the first" as
// well as "past the last". It borrows the list, which must outlive it; removing the link on which
// it stands leaves it dangling.
#pragma once

#include "qip/Support/dList.h"

class dListIter
{
public:
    // Starts on the sentinel.
    explicit dListIter(dList& list) : _list(&list), _elem(&list._nil) {}
    virtual ~dListIter();

    // The cursor's position: 0 on the first element, -1 on the sentinel. REQUIRES: the cursor
    // stands in its own list; the walk has no other end.
    int index() const;

    // Moves the cursor to the first element and then `i` links on, the sentinel counting as one
    // link of the ring: `i` <= 0 is the first element, `i` == length the sentinel, and a larger `i`
    // goes round again. There is no clamp; pinned by dListIterTest.IndexGoesRoundTheRing.
    void index(int i);

protected:
    // The sentinel, for subclasses that step the cursor.
    dLink* nil() const { return &_list->_nil; }
    int length() const { return _list->_length; }

    dList* _list;
    dLink* _elem;
};
