// SPDX-License-Identifier: MIT
#include "tools/formats/XmlText.h"

#include "qip/Support/qipVisiblePieces.h"

#include <ostream>
#include <string_view>

namespace {

// What stands for the character at the start of `rest`, and of how many bytes that is; null when it
// stands for itself.
const char* replacement(std::string_view rest, size_t& bytes)
{
    bytes = 1;
    switch (rest[0]) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    default:
        bytes = 3;
        if (rest.substr(0, 3) == "\xef\xbf\xbe") {
            return "\\xef\\xbf\\xbe";
        }
        return rest.substr(0, 3) == "\xef\xbf\xbf" ? "\\xef\\xbf\\xbf" : nullptr;
    }
}

void writeEscaped(std::ostream& out, std::string_view piece)
{
    size_t from = 0;
    size_t at = 0;
    const auto flush = [&] {
        out.write(piece.data() + from, static_cast<std::streamsize>(at - from));
    };
    while ((at = piece.find_first_of("&<>\"'\xef", at)) != std::string_view::npos) {
        size_t bytes = 0;
        const char* const text = replacement(piece.substr(at), bytes);
        if (text == nullptr) {
            ++at;
            continue;
        }
        flush();
        out << text;
        at += bytes;
        from = at;
    }
    at = piece.size();
    flush();
}

} // namespace

XmlText::XmlText(const char* text) : _text(text == nullptr ? "" : text) {}

std::ostream& operator<<(std::ostream& out, const XmlText& text)
{
    qipVisiblePieces pieces(text._text);
    for (std::string_view piece; pieces.next(piece);) {
        writeEscaped(out, piece);
    }
    return out;
}
