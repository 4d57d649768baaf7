// SPDX-License-Identifier: MIT
#include "tools/common/ContentDigest.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string digest(const std::string& text, size_t piece)
{
    ContentDigest digest;
    for (size_t at = 0; at < text.size(); at += piece) {
        digest.add(reinterpret_cast<const unsigned char*>(text.data()) + at,
                   std::min(piece, text.size() - at));
    }
    return digest.text();
}

// The examples that the standard gives.
TEST(ContentDigestTest, IsTheStandardsOwn)
{
    EXPECT_EQ(digest("", 1), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digest("abc", 3), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digest("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 56),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(digest(std::string(1000000, 'a'), 4096),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(ContentDigestTest, PiecesMakeNoDifference)
{
    for (const size_t size : {1, 55, 56, 63, 64, 65, 119, 120, 128, 1000}) {
        const std::string text(size, 'x');
        const std::string whole = digest(text, size);
        for (const size_t piece : {1, 7, 63, 64, 65}) {
            EXPECT_EQ(digest(text, piece), whole) << size << " in pieces of " << piece;
        }
        EXPECT_NE(whole, digest(text + "x", size + 1));
    }
}

} // namespace
