// SPDX-License-Identifier: MIT
//
// Numbers for files, where a locale has no say.
#pragma once

#include <cstdint>
#include <iosfwd>

// Writes `number` in decimal digits.
void writeNumber(std::ostream& out, int64_t number);
