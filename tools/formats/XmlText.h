// SPDX-License-Identifier: MIT
//
// A name as text or in the value of an attribute of an XML document: in its visible form
// (qipVisibleText), so that it is UTF-8 and has no control characters, and with references for what
// would be markup. The two characters of UTF-8 that XML does not have, U+FFFE and U+FFFF, are made
// visible, too.
#pragma once

#include <iosfwd>

class XmlText
{
public:
    // Borrows `text`, which ends in a zero byte; null is "".
    explicit XmlText(const char* text);

private:
    friend std::ostream& operator<<(std::ostream& out, const XmlText& text);

    const char* _text;
};

// Writes the text. Takes no memory.
std::ostream& operator<<(std::ostream& out, const XmlText& text);
