// SPDX-License-Identifier: MIT
#include "qip/Support/qipVisiblePieces.h"

#include <cstdint>

namespace {

constexpr char Digits[] = "0123456789abcdef";

bool isContinuation(unsigned char c)
{
    return (c & 0xc0) == 0x80;
}

bool isEscapeDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

// The character that starts at `text` and is not ASCII, and its bytes; 0 bytes when what stands
// there is no UTF-8. The terminating zero is no continuation, so nothing behind it is read.
uint32_t decode(const char* text, size_t& bytes)
{
    const auto at = [text](size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const unsigned char lead = at(0);
    const size_t size = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    bytes = 0;
    if (lead < 0xc0 || lead > 0xf4) {
        return 0;
    }
    uint32_t character = lead & (0x7fu >> size);
    for (size_t i = 1; i < size; ++i) {
        if (!isContinuation(at(i))) {
            return 0;
        }
        character = character << 6 | (at(i) & 0x3fu);
    }
    // What could be said in fewer bytes, halves of a pair, and what is past the last character.
    constexpr uint32_t Lowest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool half = character >= 0xd800 && character <= 0xdfff;
    bytes = character < Lowest[size] || half || character > 0x10ffff ? 0 : size;
    return character;
}

// Characters that move the cursor or what stands around them, or that take no room.
bool steers(uint32_t character)
{
    return character < 0xa0 ||                             // second set of control characters
           character == 0xad ||                            // soft hyphen
           character == 0x61c ||                           // Arabic letter mark
           (character >= 0x200b && character <= 0x200f) || // of no width, joiners, direction marks
           (character >= 0x2060 && character <= 0x2064) || // joiner and operators without a look
           character == 0xfeff ||                          // mark of the byte order
           (character >= 0x2028 && character <= 0x202e) || // separators, embeddings, overrides
           (character >= 0x2066 && character <= 0x2069);   // isolates
}

// Bytes at `text`, which is not at its end, that are printed as they are; 0 when the first one is
// to be escaped.
size_t plainBytes(const char* text)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first == '\\') {
        const bool looksEscaped =
            text[1] == 'x' && isEscapeDigit(text[2]) && isEscapeDigit(text[3]);
        return looksEscaped ? 0 : 1;
    }
    if (first < 0x80) {
        return first >= 0x20 && first != 0x7f ? 1 : 0;
    }
    size_t bytes = 0;
    const uint32_t character = decode(text, bytes);
    return steers(character) ? 0 : bytes;
}

// The length of the stretch at `text` that is printed as it is.
size_t plainStretch(const char* text)
{
    size_t length = 0;
    while (text[length] != '\0') {
        const size_t bytes = plainBytes(text + length);
        if (bytes == 0) {
            break;
        }
        length += bytes;
    }
    return length;
}

void escape(char byte, char* form)
{
    const auto value = static_cast<unsigned char>(byte);
    form[0] = '\\';
    form[1] = 'x';
    form[2] = Digits[value >> 4];
    form[3] = Digits[value & 0xf];
}

} // namespace

qipVisiblePieces::qipVisiblePieces(const char* text) : _at(text == nullptr ? "" : text), _form{} {}

bool qipVisiblePieces::next(std::string_view& piece)
{
    if (*_at == '\0') {
        return false;
    }
    const size_t plain = plainStretch(_at);
    if (plain > 0) {
        piece = std::string_view(_at, plain);
        _at += plain;
        return true;
    }
    escape(*_at++, _form);
    piece = std::string_view(_form, sizeof _form);
    return true;
}
