// SPDX-License-Identifier: MIT
#include "zem/Demangle/allocate.h"

#include <cstdio>
#include <cstdlib>

namespace {

void* orEnd(void* block)
{
    if (block == nullptr) {
        std::fprintf(stderr, "Unable to allocate memory.\n");
        std::exit(1);
    }
    return block;
}

} // namespace

void* Demangle::dmalloc(size_t size)
{
    return orEnd(std::malloc(size));
}

void* Demangle::drealloc(void* block, size_t size)
{
    return orEnd(std::realloc(block, size));
}
