// SPDX-License-Identifier: MIT
//
// Sums are kept in 64 bits; rows and the summary show them in 32.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>

// `n`, or the nearest that an int holds.
inline int clampToInt(int64_t n)
{
    return static_cast<int>(std::clamp<int64_t>(n, INT_MIN, INT_MAX));
}
