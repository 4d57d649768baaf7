#include "tools/formats/JsonText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string written(const char* text)
{
    std::ostringstream out;
    out << JsonText(text);
    return out.str();
}

TEST(JsonTextTest, StandsInQuotes)
{
    EXPECT_EQ(written("src/a.c"), "\"src/a.c\"");
    EXPECT_EQ(written(nullptr), "\"\"");
    EXPECT_EQ(written("na\xc3\xafve"), "\"na\xc3\xafve\"");
}

TEST(JsonTextTest, QuotesAndBackslashesAreEscaped)
{
    EXPECT_EQ(written("\"\\\""), "\"\\\"\\\\\\\"\"");
    EXPECT_EQ(written("operator\"\"_x"), "\"operator\\\"\\\"_x\"");
}

TEST(JsonTextTest, BytesThatAreNoTextAreVisible)
{
    EXPECT_EQ(written("a\nb\xff"), "\"a\\\\x0ab\\\\xff\"");
    // Two names never look the same.
    EXPECT_EQ(written("a\\x0ab"), "\"a\\\\x5cx0ab\"");
}

} // namespace
