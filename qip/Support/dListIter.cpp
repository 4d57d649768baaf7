// SPDX-License-Identifier: MIT
#include "qip/Support/dListIter.h"

dListIter::~dListIter() = default;

int dListIter::index() const
{
    int position = -1;
    for (const dLink* link = nil(); link != _elem; link = link->_next) {
        ++position;
    }
    return position;
}

void dListIter::index(int i)
{
    _elem = nil()->_next;
    for (int n = 0; n < i; ++n) {
        _elem = _elem->_next;
    }
}
