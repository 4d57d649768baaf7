#include "tools/formats/XmlText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string written(const char* text)
{
    std::ostringstream out;
    out << XmlText(text);
    return out.str();
}

TEST(XmlTextTest, MarkupBecomesReferences)
{
    EXPECT_EQ(written("larger<int>(int&, 'a', \"b\")"),
              "larger&lt;int&gt;(int&amp;, &apos;a&apos;, &quot;b&quot;)");
    EXPECT_EQ(written("plain"), "plain");
    EXPECT_EQ(written(nullptr), "");
}

TEST(XmlTextTest, WhatXmlDoesNotHaveIsVisible)
{
    EXPECT_EQ(written("a\x01\n\x7f<\xff"), "a\\x01\\x0a\\x7f&lt;\\xff");
    EXPECT_EQ(written("x\xef\xbf\xbey"), "x\\xef\\xbf\\xbey");
    EXPECT_EQ(written("\xef\xbf\xbf"), "\\xef\\xbf\\xbf");
    // Their neighbours are text.
    EXPECT_EQ(written("\xef\xbf\xbd\xef\xbb\xbe"), "\xef\xbf\xbd\xef\xbb\xbe");
    // A mark of the byte order inside a name takes no room.
    EXPECT_EQ(written("a\xef\xbb\xbf"), "a\\xef\\xbb\\xbf");
}

} // namespace
