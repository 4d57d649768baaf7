// SPDX-License-Identifier: MIT
#include "tools/formats/writeNumber.h"

#include <charconv>
#include <ostream>

void writeNumber(std::ostream& out, int64_t number)
{
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    out.write(digits, result.ptr - digits);
}
