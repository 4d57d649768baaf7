// SPDX-License-Identifier: MIT
//
// Which compilers' counters lie in a folder, and below which folder their build is.
#pragma once

#include <string>

struct CounterKinds
{
    bool _hasGcc = false;  // .gcda
    bool _hasLlvm = false; // .profraw

    bool any() const { return _hasGcc || _hasLlvm; }
    bool both() const { return _hasGcc && _hasLlvm; }

    // Looks through `folder` and all below.
    static CounterKinds in(const std::string& folder);
};

// Whether there is a file whose name ends in `end` in `folder` or below.
bool holdsFile(const std::string& folder, const std::string& end);
