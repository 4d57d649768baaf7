// SPDX-License-Identifier: MIT
//
// Lets operator new run out of memory at a chosen allocation. A test runs an operation again and
// again, each time failing one allocation later, until none is left to fail:
//
//     for (long n = 1; FailingNew::run(n, mode, [&] { result = view(); }); ++n) {
//         EXPECT_TRUE(isEmptyOrWhole(result)) << n;
//     }
//
// A program that uses it has its own operator new. malloc() is not touched.
#pragma once

#include <functional>

class FailingNew
{
public:
    enum Mode {
        Once,    // only the n-th allocation fails
        FromThen // it fails, and all behind it
    };

    // Runs `operation` with its n-th allocation, from 1, failing. Returns whether it got that far.
    static bool run(long n, Mode mode, const std::function<void()>& operation);

    // Allocations that `operation` makes.
    static long count(const std::function<void()>& operation);
};
