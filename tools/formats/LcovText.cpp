// SPDX-License-Identifier: MIT
#include "tools/formats/LcovText.h"

#include "qip/Support/qipVisibleText.h"

#include <cstring>
#include <ostream>

namespace {

bool isControl(unsigned char c)
{
    return c < 0x20 || c == 0x7f;
}

int digitValue(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Whether a backslash at `text` reads as one that stands for a control character, or for itself.
bool looksEscaped(const char* text)
{
    if (text[1] != 'x') {
        return false;
    }
    const int high = digitValue(text[2]);
    const int low = high < 0 ? -1 : digitValue(text[3]);
    const int value = high * 16 + low;
    return low >= 0 && (isControl(static_cast<unsigned char>(value)) || value == '\\');
}

bool isSpecial(const char* text)
{
    return isControl(static_cast<unsigned char>(*text)) || (*text == '\\' && looksEscaped(text));
}

} // namespace

LcovText::LcovText(const char* text, Form form) : _text(text == nullptr ? "" : text), _form(form) {}

std::ostream& operator<<(std::ostream& out, const LcovText& text)
{
    constexpr char Digits[] = "0123456789abcdef";
    if (text._form == LcovText::Visible) {
        return out << qipVisibleText(text._text);
    }
    const char* at = text._text;
    while (*at != '\0') {
        const char* from = at;
        while (*at != '\0' && !isSpecial(at)) {
            ++at;
        }
        out.write(from, at - from);
        if (*at != '\0') {
            const auto value = static_cast<unsigned char>(*at++);
            out.write("\\x", 2).put(Digits[value >> 4]).put(Digits[value & 0xf]);
        }
    }
    return out;
}
