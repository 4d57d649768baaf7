// SPDX-License-Identifier: MIT
//
// Memory for the decoder. It never comes back without: when there is none, the program ends with
// status 1 and "Unable to allocate memory." on the standard error stream.
#pragma once

#include <cstddef>

namespace Demangle {

// As malloc() and realloc(); free() frees what they give.
void* dmalloc(size_t size);
void* drealloc(void* block, size_t size);

} // namespace Demangle
