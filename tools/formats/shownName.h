// SPDX-License-Identifier: MIT
//
// The name of a function as reports show it.
#pragma once

#include <string>

// What a map stores as `stored`, written at `level`, a NameLevel. A name that is no encoded one is
// given as stored. May throw std::bad_alloc.
std::string shownName(const char* stored, int level);
