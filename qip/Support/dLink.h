// SPDX-License-Identifier: MIT
//
// One node of a circular, doubly linked ring. dList keeps the ring and its sentinel; dLinkT adds a
// datum. A link owns nothing. A fresh link is a ring of its own: both neighbours are the link.
#pragma once

#include <iosfwd>

class dLink
{
public:
    dLink() : _next(this), _prev(this) {}

    // The neighbours are addresses of other links, so a copy would be in a ring that does not know
    // it.
    dLink(const dLink&) = delete;
    dLink& operator=(const dLink&) = delete;

    // Inserts `x` right before this link; null does nothing. `x` keeps its place in no other ring:
    // the caller takes it out first.
    void join(dLink* x);

    dLink* _next;
    dLink* _prev;
};

// Writes "next:POINTER, prev:POINTER", without a newline.
std::ostream& operator<<(std::ostream& out, const dLink& link);
