// SPDX-License-Identifier: MIT
//
// A name as a field of a CSV file (RFC 4180): in its visible form (qipVisibleText), so that it is
// UTF-8 and on one line, and in quotes when it has a comma or a quote, which is doubled.
#pragma once

#include <iosfwd>

class CsvText
{
public:
    // Borrows `text`, which ends in a zero byte; null is "".
    explicit CsvText(const char* text);

private:
    friend std::ostream& operator<<(std::ostream& out, const CsvText& text);

    const char* _text;
};

// Writes the field. Takes no memory.
std::ostream& operator<<(std::ostream& out, const CsvText& text);
