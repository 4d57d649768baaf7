// SPDX-License-Identifier: MIT
#include "qip/Support/qipAssert.h"

#include <cstdio>
#include <cstdlib>

void qipAssertFailed(const char* condition, const char* file, unsigned line, const char* function)
{
    std::fflush(stdout);
    std::fprintf(stderr, "%s:%u: %s: Assertion `%s' failed.\n", file, line, function, condition);
    std::fflush(stderr);
    std::abort();
}
