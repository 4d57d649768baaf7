// SPDX-License-Identifier: MIT
#include "tools/formats/CsvText.h"

#include "qip/Support/qipVisiblePieces.h"

#include <cstring>
#include <ostream>
#include <string_view>

namespace {

void writeDoublingQuotes(std::ostream& out, std::string_view piece)
{
    for (;;) {
        const size_t quote = piece.find('"');
        if (quote == std::string_view::npos) {
            out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
            return;
        }
        out.write(piece.data(), static_cast<std::streamsize>(quote + 1));
        out.put('"');
        piece.remove_prefix(quote + 1);
    }
}

} // namespace

CsvText::CsvText(const char* text) : _text(text == nullptr ? "" : text) {}

std::ostream& operator<<(std::ostream& out, const CsvText& text)
{
    const bool isQuoted = std::strpbrk(text._text, ",\"") != nullptr;
    if (isQuoted) {
        out.put('"');
    }
    qipVisiblePieces pieces(text._text);
    for (std::string_view piece; pieces.next(piece);) {
        writeDoublingQuotes(out, piece);
    }
    if (isQuoted) {
        out.put('"');
    }
    return out;
}
