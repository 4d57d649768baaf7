// SPDX-License-Identifier: MIT
//
// The printed form of a name (see qipVisibleText) piece by piece, for those who have something to
// do to it: a format that doubles its quotes, say. Takes no memory.
//
//     qipVisiblePieces pieces(name);
//     for (std::string_view piece; pieces.next(piece);) {
//         write(piece);
//     }
#pragma once

#include <string_view>

class qipVisiblePieces
{
public:
    // Borrows `text`, which ends in a zero byte; null is "".
    explicit qipVisiblePieces(const char* text);
    // A piece may lie in the object.
    qipVisiblePieces(const qipVisiblePieces&) = delete;
    qipVisiblePieces& operator=(const qipVisiblePieces&) = delete;

    // Sets `piece` to the next one, which is not empty and valid until the next call; false behind
    // the last.
    bool next(std::string_view& piece);

private:
    const char* _at;
    char _form[4]; // \xHH of a byte
};
