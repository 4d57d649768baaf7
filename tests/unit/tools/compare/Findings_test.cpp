// SPDX-License-Identifier: MIT
#include "tools/compare/Findings.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string text(const Findings& findings)
{
    std::ostringstream out;
    findings.write(out);
    return out.str();
}

bool allowListed(Findings& findings, const std::string& list, std::string& problem)
{
    std::istringstream in(list);
    return findings.allowListed(in, problem);
}

TEST(FindingsTest, NothingFoundIsGood)
{
    const Findings findings(1);
    EXPECT_TRUE(findings.isGood());
    EXPECT_EQ(text(findings), "");
}

TEST(FindingsTest, ClassThatNobodyExplainedIsNotGood)
{
    Findings findings(2);
    for (const char* example : {"a.cc:1", "a.cc:2", "a.cc:3"}) {
        findings.add(Findings::LineRanRed, example);
    }
    EXPECT_FALSE(findings.isGood());
    EXPECT_EQ(text(findings), "line-ran-red  3  gcov counts runs, drawn red\n"
                              "    a.cc:1\n"
                              "    a.cc:2\n");
}

TEST(FindingsTest, AllowedClassIsGoodAsOftenAsItSays)
{
    Findings findings(0);
    ASSERT_TRUE(findings.allow("text-red", 2));
    findings.add(Findings::TextRed, "");
    findings.add(Findings::TextRed, "");
    EXPECT_TRUE(findings.isGood());
    EXPECT_EQ(text(findings),
              "text-red  2 (allowed)  text without code inside a block that never ran\n");
    findings.add(Findings::TextRed, "");
    EXPECT_FALSE(findings.isGood());
    EXPECT_FALSE(findings.allow("no-such-class", 2));
}

TEST(FindingsTest, ListNamesClassesNumbersAndReasons)
{
    Findings findings(0);
    std::string problem;
    ASSERT_TRUE(allowListed(findings,
                            "# of this sample\n"
                            "\n"
                            "text-red       # a brace\n"
                            "line-made 1 # a coroutine\n",
                            problem));
    for (int i = 0; i < 9; ++i) {
        findings.add(Findings::TextRed, "");
    }
    findings.add(Findings::LineMade, "");
    EXPECT_TRUE(findings.isGood());
    findings.add(Findings::LineMade, "");
    EXPECT_FALSE(findings.isGood());
}

TEST(FindingsTest, ListOfAnotherFormIsRefused)
{
    for (const char* line : {"text-rad", "text-red many", "text-red 1 2"}) {
        Findings findings(0);
        std::string problem;
        EXPECT_FALSE(allowListed(findings, line, problem));
        EXPECT_EQ(problem, line);
    }
}

TEST(FindingsTest, AllowedClassThatDidNotOccurIsNamed)
{
    Findings findings(0);
    ASSERT_TRUE(findings.allow("line-passed", 1));
    EXPECT_TRUE(findings.isGood());
    EXPECT_EQ(text(findings), "line-passed  0  allowed, but did not occur\n");
}

} // namespace
