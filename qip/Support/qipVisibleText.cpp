// SPDX-License-Identifier: MIT
#include "qip/Support/qipVisibleText.h"

#include "qip/Support/qipVisiblePieces.h"

#include <ostream>

qipVisibleText::qipVisibleText(const char* text) : _text(text == nullptr ? "" : text) {}

size_t qipVisibleText::length() const
{
    size_t length = 0;
    qipVisiblePieces pieces(_text);
    for (std::string_view piece; pieces.next(piece);) {
        length += piece.size();
    }
    return length;
}

std::string qipVisibleText::string() const
{
    std::string result;
    qipVisiblePieces pieces(_text);
    for (std::string_view piece; pieces.next(piece);) {
        result.append(piece);
    }
    return result;
}

std::ostream& operator<<(std::ostream& out, const qipVisibleText& text)
{
    qipVisiblePieces pieces(text._text);
    for (std::string_view piece; pieces.next(piece);) {
        out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    }
    return out;
}
