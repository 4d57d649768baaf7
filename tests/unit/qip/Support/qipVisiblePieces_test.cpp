#include "qip/Support/qipVisiblePieces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> pieces(const char* text)
{
    std::vector<std::string> result;
    qipVisiblePieces all(text);
    for (std::string_view piece; all.next(piece);) {
        result.emplace_back(piece);
    }
    return result;
}

TEST(qipVisiblePiecesTest, TextIsOnePiece)
{
    EXPECT_THAT(pieces("src/a b.c"), ElementsAre("src/a b.c"));
    EXPECT_THAT(pieces("na\xc3\xafve"), ElementsAre("na\xc3\xafve"));
    EXPECT_THAT(pieces(""), IsEmpty());
    EXPECT_THAT(pieces(nullptr), IsEmpty());
}

TEST(qipVisiblePiecesTest, EachEscapedByteIsAPieceOfItsOwn)
{
    EXPECT_THAT(pieces("a\n\xff\\x0a"), ElementsAre("a", "\\x0a", "\\xff", "\\x5c", "x0a"));
    EXPECT_THAT(pieces("\x01"), ElementsAre("\\x01"));
}

} // namespace
