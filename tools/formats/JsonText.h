// SPDX-License-Identifier: MIT
//
// A name as a string of a JSON document, its quotes included: in its visible form (qipVisibleText),
// so that it is UTF-8 and has no control characters, with a backslash before quotes and
// backslashes.
#pragma once

#include <iosfwd>

class JsonText
{
public:
    // Borrows `text`, which ends in a zero byte; null is "".
    explicit JsonText(const char* text);

private:
    friend std::ostream& operator<<(std::ostream& out, const JsonText& text);

    const char* _text;
};

// Writes the string. Takes no memory.
std::ostream& operator<<(std::ostream& out, const JsonText& text);
