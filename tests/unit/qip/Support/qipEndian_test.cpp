#include "qip/Support/qipEndian.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

TEST(qipEndianTest, MostSignificantByteComesFirst)
{
    const unsigned char bytes[] = {0x12, 0x34, 0x56, 0xf8};
    EXPECT_EQ(qipGetBig16(bytes), 0x1234u);
    EXPECT_EQ(qipGetBig16(bytes + 2), 0x56f8u);
    EXPECT_EQ(qipGetBig32(bytes), 0x123456f8u);
}

TEST(qipEndianTest, TopBitIsNoSign)
{
    const unsigned char bytes[] = {0xff, 0xfe, 0xfd, 0xfc};
    EXPECT_EQ(qipGetBig16(bytes), 0xfffeu);
    EXPECT_EQ(qipGetBig32(bytes), 0xfffefdfcu);
}

TEST(qipEndianTest, PutStoresWhatGetReads)
{
    unsigned char bytes[7] = {};
    qipPutBig16(bytes, 0x8001);
    qipPutBig32(bytes + 3, 0x80c0e001); // any alignment
    const unsigned char expected[] = {0x80, 0x01, 0, 0x80, 0xc0, 0xe0, 0x01};
    EXPECT_EQ(std::memcmp(bytes, expected, sizeof bytes), 0);
}

TEST(qipEndianTest, PutStoresAnArray)
{
    for (size_t count = 0; count < 40; ++count) { // whole vectors and what is left over
        std::vector<uint32_t> words;
        for (size_t i = 0; i < count; ++i) {
            words.push_back(static_cast<uint32_t>(i * 0x01020304 + 0x80));
        }
        std::vector<unsigned char> bytes(4 * count + 2, 0xab);
        qipPutBig32(bytes.data() + 1, words.data(), count);
        for (size_t i = 0; i < count; ++i) {
            EXPECT_EQ(qipGetBig32(bytes.data() + 1 + 4 * i), words[i]);
        }
        EXPECT_EQ(bytes[0], 0xab);
        EXPECT_EQ(bytes[4 * count + 1], 0xab) << "the byte behind the array";
    }
}

TEST(qipEndianTest, ArrayIsTurnedInPlace)
{
    for (size_t count = 0; count < 40; ++count) { // whole vectors and what is left over
        std::vector<uint32_t> words(count + 1, 0xabababab);
        for (size_t i = 0; i < count; ++i) {
            qipPutBig32(reinterpret_cast<unsigned char*>(&words[i]),
                        static_cast<uint32_t>(i * 0x01020304));
        }
        qipBigToHost32(words.data(), count);
        for (size_t i = 0; i < count; ++i) {
            EXPECT_EQ(words[i], static_cast<uint32_t>(i * 0x01020304));
        }
        EXPECT_EQ(words[count], 0xababababu) << "the word behind the array";
    }
}

} // namespace
