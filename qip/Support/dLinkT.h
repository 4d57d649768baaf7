// SPDX-License-Identifier: MIT
//
// A link that carries a datum: the node of List<T>. `T` is always a pointer type; the link does not
// own what it points to.
#pragma once

#include "qip/Support/dLink.h"

template <class T> class dLinkT : public dLink
{
public:
    explicit dLinkT(T datum) : _datum(datum) {}

    T _datum;
};
