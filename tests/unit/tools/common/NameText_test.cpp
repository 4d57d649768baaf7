// SPDX-License-Identifier: MIT
#include "tools/common/NameText.h"

#include <gtest/gtest.h>

namespace {

TEST(NameTextTest, SignsOfOperatorsAreNoBrackets)
{
    const NameText less("a::operator< <b<c> >");
    EXPECT_EQ(less.partner(11), NameText::None);
    EXPECT_EQ(less.partner(13), 19u);
    EXPECT_EQ(less.lastPart(), 3u);
    const NameText call("operator()<a>");
    EXPECT_EQ(call.partner(8), NameText::None);
    EXPECT_EQ(call.partner(10), 12u);
}

TEST(NameTextTest, ListBehindEveryOperatorIsFound)
{
    for (const std::string sign :
         {"<=>", "<<=", ">>=", "->*", "()", "[]", "->", "<<", ">>", "<=", ">=", "==", "!=",
          "&&",  "||",  "++",  "--",  "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<",
          ">",   "=",   "!",   "+",   "-",  "*",  "/",  "%",  "^",  "&",  "|",  "~",  ","}) {
        const std::string name = "S::operator" + sign;
        const std::string text = name + (sign == "<" ? " " : "") + "<a<b>>";
        EXPECT_EQ(NameText(text).partner(text.size() - 6), text.size() - 1) << text;
        EXPECT_EQ(NameText(text).lastPart(), 3u) << text;
        EXPECT_EQ(NameText(text).shortened(5), text.substr(0, text.size() - 6) + "<...>");
    }
}

TEST(NameTextTest, ComparisonsAreNoBrackets)
{
    const NameText text("a<(b::v<(3))>");
    EXPECT_EQ(text.partner(1), 12u);
    EXPECT_EQ(text.partner(7), NameText::None);
    EXPECT_EQ(NameText("a<(b->c)>").partner(1), 8u);
    EXPECT_EQ(NameText("a<b->c>").partner(1), 6u);
}

TEST(NameTextTest, LastPartIsBehindFunctionsAndConversions)
{
    EXPECT_EQ(NameText("a::b<c::d>::e").lastPart(), 12u);
    EXPECT_EQ(NameText("f(a::b) const::g").lastPart(), 15u);
    EXPECT_EQ(NameText("S::operator a::b").lastPart(), 3u);
    EXPECT_EQ(NameText("S::operator a::b").conversionType(), 12u);
    EXPECT_EQ(NameText("S::operator a::b() const::X::f").lastPart(), 29u);
    EXPECT_EQ(NameText("S::operator new").conversionType(), NameText::None);
    EXPECT_EQ(NameText("main").lastPart(), 0u);
}

TEST(NameTextTest, InnermostListsGoFirst)
{
    const NameText text("a<b<c<d>>, e<f>>::g");
    EXPECT_EQ(text.shortened(19), "a<b<c<d>>, e<f>>::g");
    EXPECT_EQ(text.shortened(18), "a<...>::g");
    EXPECT_EQ(NameText("abc<defghi<jklmnop<qrstuvw>>>").shortened(28), "abc<defghi<jklmnop<...>>>");
    EXPECT_EQ(NameText("abc<defghi<jklmnop<qrstuvw>>>").shortened(17), "abc<defghi<...>>");
}

TEST(NameTextTest, ParametersOfLambdasGoBeforeLists)
{
    EXPECT_EQ(NameText("f<int>()::{lambda(a<b>, int)#1}::operator()").shortened(40),
              "f<int>()::{lambda(...)#1}::operator()");
    EXPECT_EQ(NameText("f()::{lambda()#1}::operator()").shortened(5),
              "f()::{lambda()#1}::operator()");
}

TEST(NameTextTest, ParametersOfFunctionsAroundGoLast)
{
    const NameText text("ns::walk<char>(ns::Tree<char> const&, int) const::Local::step");
    EXPECT_EQ(text.shortened(60), "ns::walk<...>(ns::Tree<...> const&, int) const::Local::step");
    EXPECT_EQ(text.shortened(58), "ns::walk<...>(...) const::Local::step");
    EXPECT_EQ(NameText("run()::{lambda(int)#1}::operator()").shortened(5),
              "run()::{lambda(int)#1}::operator()");
}

TEST(NameTextTest, DetailsThatDifferAmongInstancesGo)
{
    EXPECT_EQ(NameText("f<int>(int) const::{lambda()#1}::operator()").withoutDetails(),
              "f<...>(...) const::{lambda(...)#1}::operator()");
    EXPECT_EQ(NameText("(anonymous namespace)::f<int>").withoutDetails(),
              "(anonymous namespace)::f<...>");
}

TEST(NameTextTest, OnlyListsWithDoubleUnderscoresGo)
{
    EXPECT_EQ(NameText("a<int>::b<__x, c<d>>").withoutDoubleUnderscores(), "a<int>::b<...>");
}

TEST(WithoutQualifiersTest, LeavesTheLastWordOfEachName)
{
    EXPECT_EQ(withoutQualifiers("f<a::b, c::d<e::f>*>"), "f<b, d<f>*>");
    EXPECT_EQ(withoutQualifiers("f<a::g(b::c) const::{lambda()#1}::h>"), "f<h>");
    EXPECT_EQ(withoutQualifiers("f<(anonymous namespace)::a>"), "f<a>");
    EXPECT_EQ(withoutQualifiers("{lambda(auto:12)#1}"), "{lambda(auto)#1}");
    EXPECT_EQ(withoutQualifiers("a?b : c"), "a?b . c");
    EXPECT_EQ(withoutQualifiers(">::a"), "a");
}

TEST(NameTextTest, DetailsAreKeptOrLeftOut)
{
    const NameText text("f<...>(int)::{lambda(A<...>, char)#1}::operator()(int) const::L::g");
    EXPECT_EQ(text.details(), (std::vector<std::string>{"(int)", "(A<...>, char)", "(int)"}));
    EXPECT_EQ(text.withDetails({false, true, false}),
              "f<...>(...)::{lambda(A<...>, char)#1}::operator()(...) const::L::g");
    EXPECT_EQ(NameText("(anonymous namespace)::f").details().size(), 0u);
}

TEST(SplitListTest, CommasInBracketsStay)
{
    EXPECT_EQ(splitList("a<b, c>, d (*)(e, f)").size(), 2u);
    EXPECT_EQ(splitList(" a , b ")[0], "a");
    EXPECT_EQ(splitList("").size(), 0u);
    EXPECT_EQ(splitList("int").size(), 1u);
    EXPECT_EQ(splitList(" int ")[0], "int");
}

TEST(SplitListTest, EmptyPacksAreNoPart)
{
    EXPECT_EQ(splitList(", int"), std::vector<std::string>{"int"});
    EXPECT_EQ(splitList("char, , int, "), (std::vector<std::string>{"char", "int"}));
    EXPECT_EQ(splitList(",").size(), 0u);
}

} // namespace
