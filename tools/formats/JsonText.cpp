// SPDX-License-Identifier: MIT
#include "tools/formats/JsonText.h"

#include "qip/Support/qipVisiblePieces.h"

#include <ostream>
#include <string_view>

namespace {

void writeEscaped(std::ostream& out, std::string_view piece)
{
    for (;;) {
        const size_t special = piece.find_first_of("\"\\");
        if (special == std::string_view::npos) {
            out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
            return;
        }
        out.write(piece.data(), static_cast<std::streamsize>(special));
        out.put('\\').put(piece[special]);
        piece.remove_prefix(special + 1);
    }
}

} // namespace

JsonText::JsonText(const char* text) : _text(text == nullptr ? "" : text) {}

std::ostream& operator<<(std::ostream& out, const JsonText& text)
{
    out.put('"');
    qipVisiblePieces pieces(text._text);
    for (std::string_view piece; pieces.next(piece);) {
        writeEscaped(out, piece);
    }
    return out.put('"');
}
