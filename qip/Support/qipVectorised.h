// SPDX-License-Identifier: MIT
//
// QIP_VECTORISED before the definition of a function has it compiled twice, the second time for
// processors with vectors of 256 bits; which one runs is chosen when the program starts. For the
// few short loops over arrays that take most of the time of a load. Where compiler or C library do
// not know how, the function is an ordinary one.
#pragma once

#include <cstddef> // for __GLIBC__

#if defined(__x86_64__) && defined(__GLIBC__) && defined(__OPTIMIZE__) && defined(__GNUC__) &&     \
    !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define QIP_VECTORISED __attribute__((target_clones("avx2", "default")))
#else
#define QIP_VECTORISED
#endif
