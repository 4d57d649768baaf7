#include "tools/formats/LcovText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string written(const char* text)
{
    std::ostringstream out;
    out << LcovText(text);
    return out.str();
}

TEST(LcovTextTest, BytesStayAsTheyAre)
{
    EXPECT_EQ(written("/src/a b,c.c"), "/src/a b,c.c");
    EXPECT_EQ(written("na\xefve"), "na\xefve");
    EXPECT_EQ(written("C:\\x\\xzz\\x41"), "C:\\x\\xzz\\x41");
    EXPECT_EQ(written(nullptr), "");
}

TEST(LcovTextTest, ControlCharactersStayOnTheLine)
{
    EXPECT_EQ(written("a\nend_of_record\r"), "a\\x0aend_of_record\\x0d");
    EXPECT_EQ(written("\x7f"), "\\x7f");
}

TEST(LcovTextTest, ABackslashThatLooksLikeOneOfThemDoesNot)
{
    EXPECT_EQ(written("a\\x0a"), "a\\x5cx0a");
    EXPECT_EQ(written("a\\x5cx0a"), "a\\x5cx5cx0a");
}

// The second set of control characters and marks of direction steer a terminal as well.
TEST(LcovTextTest, OnATerminalNothingSteers)
{
    const char name[] = "a\xc2\x9b"
                        "2J\xe2\x80\xae\xef\x1b\\x41";
    EXPECT_EQ(written(name), "a\xc2\x9b"
                             "2J\xe2\x80\xae\xef\\x1b\\x41");
    std::ostringstream out;
    out << LcovText(name, LcovText::Visible);
    EXPECT_EQ(out.str(), "a\\xc2\\x9b2J\\xe2\\x80\\xae\\xef\\x1b\\x5cx41");
}

} // namespace
