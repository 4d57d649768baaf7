// SPDX-License-Identifier: MIT
//
// A name as the rest of a line of a tracefile: byte for byte, because tools look for files of these
// names, except that a control character is written as \xHH (two small hexadecimal digits) to stay
// on the line. A backslash that would look like one of these is \x5c. On a terminal, where such
// bytes could do more than leave the line, a name has its visible form (qipVisibleText) instead.
#pragma once

#include <iosfwd>

class LcovText
{
public:
    enum Form { Exact, Visible };

    // Borrows `text`, which ends in a zero byte; null is "".
    explicit LcovText(const char* text, Form form = Exact);

private:
    friend std::ostream& operator<<(std::ostream& out, const LcovText& text);

    const char* _text;
    Form _form;
};

// Writes the name. Takes no memory.
std::ostream& operator<<(std::ostream& out, const LcovText& text);
