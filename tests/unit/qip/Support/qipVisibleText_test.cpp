// SPDX-License-Identifier: MIT
#include "qip/Support/qipVisibleText.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace {

// What all three ways of asking agree on.
std::string visible(const std::string& bytes)
{
    const qipVisibleText text(bytes.c_str());
    std::ostringstream out;
    out << text;
    EXPECT_EQ(out.str(), text.string());
    EXPECT_EQ(out.str().size(), text.length());
    return out.str();
}

} // namespace

TEST(qipVisibleTextTest, TextStaysAsItIs)
{
    for (const char* text : {"", "src/list.cpp", "a b~", "operator,(int, char const*)", "\\",
                             "a\\b", "\\x", "\\x1", "\\xzz",
                             "gr\xc3\xbc\xc3\x9f"
                             "e",
                             "\xe2\x82\xac", "\xf0\x9f\x98\x80", "\xc2\xa0", "\xf4\x8f\xbf\xbf"}) {
        EXPECT_EQ(visible(text), text);
    }
}

TEST(qipVisibleTextTest, NullIsEmpty)
{
    EXPECT_EQ(qipVisibleText(nullptr).string(), "");
}

// Else it could not be told from a character that is escaped.
TEST(qipVisibleTextTest, BackslashOfWhatLooksEscapedIsEscaped)
{
    for (const char* digits : {"00", "99", "aa", "ff", "09", "f0"}) {
        EXPECT_EQ(visible(std::string("\\x") + digits), std::string("\\x5cx") + digits);
    }
    for (const char* digits : {"0/", ":0", "0`", "g0", "A0", "0F"}) {
        EXPECT_EQ(visible(std::string("\\x") + digits), std::string("\\x") + digits);
    }
}

TEST(qipVisibleTextTest, ControlCharactersAreEscaped)
{
    EXPECT_EQ(visible("a\nb\tc"), "a\\x0ab\\x09c");
    EXPECT_EQ(visible("\x1b[31m\x7f\r"), "\\x1b[31m\\x7f\\x0d");
    EXPECT_EQ(visible("\xc2\x9b"
                      "1m"),
              "\\xc2\\x9b1m");
}

TEST(qipVisibleTextTest, LineSeparatorsAndDirectionMarksAreEscaped)
{
    EXPECT_EQ(visible("a\xe2\x80\xa8z"), "a\\xe2\\x80\\xa8z"); // line separator
    EXPECT_EQ(visible("a\xe2\x80\xaez"), "a\\xe2\\x80\\xaez"); // right-to-left override
    EXPECT_EQ(visible("a\xe2\x81\xa6z"), "a\\xe2\\x81\\xa6z"); // isolate
    EXPECT_EQ(visible("a\xe2\x80\x8fz"), "a\\xe2\\x80\\x8fz"); // mark
    // What takes no room would make two names look the same.
    EXPECT_EQ(visible("a\xc2\xadz"), "a\\xc2\\xadz");          // soft hyphen
    EXPECT_EQ(visible("a\xe2\x80\x8bz"), "a\\xe2\\x80\\x8bz"); // blank
    EXPECT_EQ(visible("a\xe2\x81\xa4z"), "a\\xe2\\x81\\xa4z"); // plus
    EXPECT_EQ(visible("a\xef\xbb\xbfz"), "a\\xef\\xbb\\xbfz"); // byte order
    EXPECT_EQ(visible("a\xd8\x9cz"), "a\\xd8\\x9cz");          // Arabic letter mark
}

TEST(qipVisibleTextTest, BytesThatAreNoTextAreEscapedOneByOne)
{
    EXPECT_EQ(visible("caf\xe9"), "caf\\xe9");
    EXPECT_EQ(visible("\x80\xff"), "\\x80\\xff");
    EXPECT_EQ(visible("\xc0\xaf"), "\\xc0\\xaf");                   // overlong
    EXPECT_EQ(visible("\xe0\x80\xaf"), "\\xe0\\x80\\xaf");          // overlong
    EXPECT_EQ(visible("\xed\xa0\x80"), "\\xed\\xa0\\x80");          // half of a pair
    EXPECT_EQ(visible("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80"); // past the last character
    EXPECT_EQ(visible("\xe2\x82"), "\\xe2\\x82");                   // cut
    EXPECT_EQ(visible("\xe2z"), "\\xe2z");
}

TEST(qipVisibleTextTest, TwoNamesNeverLookTheSame)
{
    EXPECT_EQ(visible("\\x1b"), "\\x5cx1b");
    const std::string pieces[] = {"\\", "x", "1", "b", "5", "c", "\x1b"};
    std::set<std::string> names;
    std::set<std::string> forms;
    for (const std::string& a : pieces) {
        for (const std::string& b : pieces) {
            for (const std::string& c : pieces) {
                for (const std::string& d : pieces) {
                    for (const std::string& e : pieces) {
                        names.insert(a + b + c + d + e);
                    }
                }
            }
        }
    }
    for (const std::string& name : names) {
        forms.insert(visible(name));
    }
    EXPECT_EQ(forms.size(), names.size());
}
