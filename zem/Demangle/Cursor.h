// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Demangle {

// A stretch of the encoded name, borrowed. Reading past its end gives zero bytes.
struct Cursor
{
    const char* at;
    const char* end;

    size_t left() const { return static_cast<size_t>(end - at); }
    bool atEnd() const { return at == end; }
    char peek(size_t ahead = 0) const { return ahead < left() ? at[ahead] : '\0'; }

    // Whether the next character is a digit.
    bool isDigit() const { return peek() >= '0' && peek() <= '9'; }

    // Step over the character `c`, over a decimal count, over one digit from 1 to 9; false, without
    // a step, when there is none. A count larger than what is left is any such number.
    bool take(char c);
    bool takeCount(size_t& value);
    bool takeDigit(size_t& value);
};

} // namespace Demangle
