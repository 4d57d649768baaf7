// SPDX-License-Identifier: MIT
#include "zem/Demangle/TypeVec.h"

#include "zem/Demangle/allocate.h"

#include <cstdlib>

namespace Demangle {

namespace {

constexpr size_t FirstSize = 8;

} // namespace

TypeVec::TypeVec() : _typevec(nullptr), _ntypes(0), _typevec_size(0) {}

TypeVec::~TypeVec()
{
    std::free(_typevec);
}

void TypeVec::remember(const Cursor& type)
{
    if (_ntypes == _typevec_size) {
        _typevec_size = _typevec_size == 0 ? FirstSize : 2 * _typevec_size;
        _typevec = static_cast<Cursor*>(drealloc(_typevec, _typevec_size * sizeof(Cursor)));
    }
    _typevec[_ntypes++] = type;
}

} // namespace Demangle
