#include "tools/formats/CsvText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string written(const char* text)
{
    std::ostringstream out;
    out << CsvText(text);
    return out.str();
}

TEST(CsvTextTest, PlainNamesHaveNoQuotes)
{
    EXPECT_EQ(written("src/a.c"), "src/a.c");
    EXPECT_EQ(written(""), "");
    EXPECT_EQ(written(nullptr), "");
    EXPECT_EQ(written("na\xc3\xafve"), "na\xc3\xafve");
}

TEST(CsvTextTest, CommasAndQuotesAreQuoted)
{
    EXPECT_EQ(written("f(int, char)"), "\"f(int, char)\"");
    EXPECT_EQ(written("\"x\""), "\"\"\"x\"\"\"");
    EXPECT_EQ(written("a\"\"b"), "\"a\"\"\"\"b\"");
}

TEST(CsvTextTest, BytesThatAreNoTextAreVisibleAndTheRowStaysOne)
{
    EXPECT_EQ(written("a\r\nb"), "a\\x0d\\x0ab");
    EXPECT_EQ(written("\xff,\x01"), "\"\\xff,\\x01\"");
}

} // namespace
