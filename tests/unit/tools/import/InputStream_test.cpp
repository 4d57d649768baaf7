// SPDX-License-Identifier: MIT
#include "tools/import/lines/InputStream.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace {

// As one gzip member.
std::string packed(const std::string& text)
{
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY);
    std::string result(deflateBound(&stream, text.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(&result[0]);
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

class InputStreamTest : public ::testing::Test
{
protected:
    // The whole content, read in steps of `step` bytes, or the problem in brackets.
    std::string contentOf(const std::string& bytes, size_t step = 7) const
    {
        InputStream input;
        if (!input.open(_dir.write("in", bytes))) {
            return "(" + input.problem() + ")";
        }
        std::string content;
        std::string piece(step, '\0');
        for (;;) {
            size_t got = 3; // whatever it was before
            if (!input.read(&piece[0], step, got)) {
                return "(" + input.problem() + ")";
            }
            content.append(piece, 0, got);
            if (got < step) {
                return content;
            }
        }
    }

    const TempDir _dir;
};

TEST_F(InputStreamTest, PlainAndGzippedGiveTheSame)
{
    std::string text;
    for (int i = 0; i < 50000; ++i) {
        text += std::to_string(i * 7919);
    }
    for (const std::string& content : {std::string(), std::string("abc"), text}) {
        for (const size_t step : {size_t{1000}, size_t{1} << 20}) {
            EXPECT_EQ(contentOf(content, step), content);
            EXPECT_EQ(contentOf(packed(content), step), content);
        }
    }
}

TEST_F(InputStreamTest, MembersFollowEachOther)
{
    EXPECT_EQ(contentOf(packed("one ") + packed("") + packed("two")), "one two");
    EXPECT_EQ(contentOf(packed("one ") + std::string(100000, '\0')), "one ");
    EXPECT_EQ(contentOf(packed("one") + "more"),
              "(there is something else behind the gzipped data)");
    EXPECT_EQ(contentOf(packed("one") + '\0' + packed("two")),
              "(there is something else behind the gzipped data)");
}

TEST_F(InputStreamTest, CutDataIsAProblemAtEveryLength)
{
    const std::string bytes = packed("a text that is long enough to have some length");
    for (size_t size = 2; size < bytes.size(); ++size) {
        EXPECT_EQ(contentOf(bytes.substr(0, size)), "(its gzipped data ends early)") << size;
    }
}

TEST_F(InputStreamTest, ChangedDataIsAProblem)
{
    const std::string text = "a text that is long enough to have some length";
    const std::string bytes = packed(text);
    constexpr size_t HeadSize = 10; // with bytes that do not matter
    for (size_t at = HeadSize; at < bytes.size(); ++at) {
        std::string changed = bytes;
        changed[at] = static_cast<char>(changed[at] ^ 0x41);
        EXPECT_EQ(contentOf(changed).substr(0, 18), "(its gzipped data ") << at;
    }
}

TEST_F(InputStreamTest, FileThatIsNotThereHasTheSystemsReason)
{
    InputStream input;
    EXPECT_FALSE(input.open(_dir.path("none")));
    EXPECT_EQ(input.problem(), "No such file or directory");
}

} // namespace
