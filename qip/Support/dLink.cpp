// SPDX-License-Identifier: MIT
#include "qip/Support/dLink.h"

#include <ostream>

void dLink::join(dLink* x)
{
    if (x == nullptr) {
        return;
    }
    x->_prev = _prev;
    x->_next = this;
    _prev->_next = x;
    _prev = x;
}

std::ostream& operator<<(std::ostream& out, const dLink& link)
{
    return out << "next:" << static_cast<const void*>(link._next)
               << ", prev:" << static_cast<const void*>(link._prev);
}
