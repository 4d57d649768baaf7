// SPDX-License-Identifier: MIT
//
// The types of one list of parameters as encoded, which T and N refer to by position.
#pragma once

#include "zem/Demangle/Cursor.h"

namespace Demangle {

class TypeVec
{
public:
    TypeVec();
    ~TypeVec();
    TypeVec(const TypeVec&) = delete;
    TypeVec& operator=(const TypeVec&) = delete;

    // Keeps where `type` is encoded.
    void remember(const Cursor& type);

    size_t ntypes() const { return _ntypes; }
    // Type number `n`, counted from 1. REQUIRES: 1 <= n <= ntypes().
    const Cursor& type(size_t n) const { return _typevec[n - 1]; }

private:
    Cursor* _typevec; // owned, from dmalloc()
    size_t _ntypes;
    size_t _typevec_size; // room in `_typevec`
};

} // namespace Demangle
