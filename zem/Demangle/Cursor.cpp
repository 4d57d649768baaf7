// SPDX-License-Identifier: MIT
#include "zem/Demangle/Cursor.h"

bool Demangle::Cursor::take(char c)
{
    if (atEnd() || *at != c) {
        return false;
    }
    ++at;
    return true;
}

bool Demangle::Cursor::takeCount(size_t& value)
{
    if (!isDigit()) {
        return false;
    }
    value = 0;
    const size_t limit = left();
    while (isDigit()) {
        if (value <= limit) { // it stops growing once it is larger than any name
            value = value * 10 + static_cast<size_t>(*at - '0');
        }
        ++at;
    }
    return true;
}

bool Demangle::Cursor::takeDigit(size_t& value)
{
    if (peek() < '1' || peek() > '9') {
        return false;
    }
    value = static_cast<size_t>(*at++ - '0');
    return true;
}
