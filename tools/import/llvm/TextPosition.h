// SPDX-License-Identifier: MIT
//
// A place in a text, line and column, as one number: what is before it is less.
#pragma once

#include <cstdint>

using TextPosition = uint64_t;

constexpr TextPosition textPosition(uint32_t line, uint32_t column)
{
    return TextPosition(line) << 32 | column;
}

constexpr uint32_t lineOf(TextPosition position)
{
    return static_cast<uint32_t>(position >> 32);
}

constexpr uint32_t columnOf(TextPosition position)
{
    return static_cast<uint32_t>(position);
}
