// SPDX-License-Identifier: MIT
#include "tools/compare/PlainName.h"

#include <gtest/gtest.h>

namespace {

struct Filtered
{
    const char* _case;
    const char* _text;   // c++filt's
    const char* _name;   // expected
    const char* _params; // expected
};

const Filtered filtered[] = {
    {"Plain", "main", "main", ""},
    {"CastInAnOperatorsArgument", "void A::operator()<(Kind)1>(int)", "A::operator()<(Kind)1>",
     "(int)"},
    {"ConditionInAnArgument",
     "If<((bits<int>)())<=(32), A>::type pick<int>(If<((bits<int>)())<=(32), A>::type)",
     "pick<int>", "(If<((bits<int>)())<=(32),A>::type)"},
    {"Stream", "show(std::ostream&)", "show", "(std::basic_ostream<char>&)"},
    {"StreamWithItsTraits", "show(std::basic_ostream<char, std::char_traits<char> >&)", "show",
     "(std::basic_ostream<char>&)"},
    {"StreamsOfInput", "copy(std::istream&, std::iostream&)", "copy",
     "(std::basic_istream<char>&,std::basic_iostream<char>&)"},
    {"Parameters", "ns::f(int, char const*)", "ns::f", "(int,char const*)"},
    {"ConstMember", "ns::Shape::area() const", "ns::Shape::area", "()"},
    {"RvalueMember", "ns::Shape::take() &&", "ns::Shape::take", "()"},
    {"TypeOfAResult", "int larger<int>(int, int)", "larger<int>", "(int,int)"},
    {"ContainerWithItsAllocator", "std::vector<int, std::allocator<int> > copy<long>(long)",
     "copy<long>", "(long)"},
    {"AbiTag", "name[abi:cxx11]()", "name", "()"},
    {"Clone", "f(int) [clone .part.0]", "f", "(int)"},
    {"NameOfTheLibraryItself", "std::__move<A, std::allocator<A> >(A)",
     "std::__move<A,allocator<A>>", "(A)"},
    {"EmptyArgument", "S::S<>(, int)", "S::S<>", "(int)"},
    {"EmptyArguments", "f<>(int, , A<,int>)", "f<>", "(int,A<,int>)"},
    {"StringWithItsTraits",
     "Log::operator<<(std::__cxx11::basic_string<char, std::char_traits<char>, "
     "std::allocator<char> > const&)",
     "Log::operator<<", "(std::string const&)"},
    {"ShiftOfATemplate", "Log& Log::operator<< <char [5]>(char const (&) [5])",
     "Log::operator<<<char[5]>", "(char const(&)[5])"},
    {"CallOperator", "A::operator()(int) const", "A::operator()", "(int)"},
    {"Arrow", "A::operator->() const", "A::operator->", "()"},
    {"Conversion", "A::operator ns::B<int>() const", "A::operator ns::B<int>", "()"},
    {"DeleteOfAnArray", "A::operator delete[](void*)", "A::operator delete[]", "(void*)"},
    {"LessOfATemplate", "bool operator< <int>(Box<int> const&)", "operator<<int>",
     "(Box<int>const&)"},
    {"LambdaInAConstMember", "run(int) const::{lambda(int)#1}::operator()(int) const",
     "run(int)::{lambda(int)#1}::operator()", "(int)"},
    {"LambdaInAMemberForLvalues", "A::label(int) const &::{lambda()#1}::operator()() const",
     "A::label(int)::{lambda()#1}::operator()", "()"},
    {"LambdaInACallOperator", "A::operator()(int)::{lambda()#1}::operator()() const",
     "A::operator()(int)::{lambda()#1}::operator()", "()"},
    {"LambdaInASubscript", "A::operator[](int)::{lambda()#1}::operator()() const",
     "A::operator[](int)::{lambda()#1}::operator()", "()"},
    {"AnonymousNamespace", "(anonymous namespace)::hidden(ns::A)", "(anonymous namespace)::hidden",
     "(ns::A)"},
    {"NamespacesOfArguments", "void ns::f<ns::A, ns::B<ns::C> >(ns::A)", "ns::f<A,B<C>>",
     "(ns::A)"},
    {"ClassTemplate", "ns::T<ns::A>::f()", "ns::T<ns::A>::f", "()"},
    {"LambdaAsAnArgument", "void f<run()::{lambda()#1}>(run()::{lambda()#1})", "f<{lambda()#1}>",
     "(run()::{lambda()#1})"},
    {"FunctionThatReturnsAFunction", "void (*choose<int>(int))(char)", "choose<int>", "(int)"},
    {"FunctionThatReturnsAnArray", "char (&field<int>(int)) [3]", "field<int>", "(int)"},
    {"Map",
     "std::map<int, A, std::less<int>, std::allocator<std::pair<int const, A> > >::size() const",
     "std::map<int,A>::size", "()"},
};

void PrintTo(const Filtered& row, std::ostream* out)
{
    *out << row._text;
}

class PlainNameTest : public ::testing::TestWithParam<Filtered>
{};

TEST_P(PlainNameTest, LeavesOutWhatTheRulesSay)
{
    const PlainName name = PlainName::of(GetParam()._text);
    EXPECT_EQ(comparedSpelling(name._name), GetParam()._name);
    EXPECT_EQ(comparedSpelling(name._params), GetParam()._params);
}

INSTANTIATE_TEST_SUITE_P(All, PlainNameTest, ::testing::ValuesIn(filtered),
                         [](const auto& info) { return std::string(info.param._case); });

TEST(ComparedSpellingTest, SideOfConstDoesNotCount)
{
    EXPECT_EQ(comparedSpelling("f(const char *, const ns::A &)"),
              comparedSpelling("f(char const*, ns::A const&)"));
    EXPECT_EQ(comparedSpelling("f(const (anonymous namespace)::A &)"),
              comparedSpelling("f((anonymous namespace)::A const&)"));
    EXPECT_NE(comparedSpelling("f(const char *)"), comparedSpelling("f(char *const)"));
    EXPECT_NE(comparedSpelling("f(const char *)"), comparedSpelling("f(char *)"));
}

TEST(ComparedSpellingTest, WordsStayApart)
{
    EXPECT_EQ(comparedSpelling("f( unsigned  long )"), "f(unsigned long)");
    EXPECT_EQ(withoutQualifiers("f(const volatile char *, constant)"), "f(char*,constant)");
}

TEST(IsShownTest, PlaceholdersOfInstancesStandForListsTypesAndParameters)
{
    const Placeholders all = Placeholders::OfInstances;
    EXPECT_TRUE(isShown("f<int>(A<B>,long)", "f<...>(A<...>,long)", all));
    EXPECT_TRUE(isShown("f<int>(int*,ns::A<int>&)", "f<...>(auto,auto&)", all));
    EXPECT_TRUE(isShown("f<int>(ns::A<int>const&)", "f<...>(auto const&)", all));
    EXPECT_TRUE(isShown("f<int,char>(int&,char&)", "f<...>(auto&,...)", all));
    EXPECT_TRUE(isShown("f<int>(int)::A::g()", "f<...>(...)::A::g()", all));
    EXPECT_FALSE(isShown("f<int>(int,long)", "f<...>(auto)", all));
    EXPECT_FALSE(isShown("f<int>(int)", "g<...>(int)", all));
    EXPECT_FALSE(isShown("f<int>(int)", "f(int)", all));
}

TEST(IsShownTest, PlaceholdersOfALongNameStandForLists)
{
    const Placeholders some = Placeholders::OfLongName;
    EXPECT_TRUE(isShown("f<int>(int)", "f<...>(int)", some));
    EXPECT_TRUE(isShown("f::{lambda(int)#1}::operator()", "f::{lambda(...)#1}::operator()", some));
    EXPECT_FALSE(isShown("f(int)", "f(...)", some));
    EXPECT_FALSE(isShown("f<int>(int)", "f<...>(auto)", some));
    EXPECT_FALSE(isShown("f<int>(int)", "f<...>(int)", Placeholders::None));
}

TEST(IsShownTest, LongNameHasItsWholeTextAsParameters)
{
    const auto isGood = [](const char* shown) {
        return isShownShortened("ns::f<int>", "ns::f<int>(char)", shown, Placeholders::None);
    };
    EXPECT_TRUE(isGood("ns::f<...>(ns::f<int>(char))"));
    EXPECT_FALSE(isGood("ns::f<...>(ns::f<int>(int))"));
    EXPECT_FALSE(isGood("g<...>(ns::f<int>(char))"));
    EXPECT_FALSE(isGood("ns::f<...>(ns::f<...>(char))"));
    EXPECT_FALSE(isGood("ns::f<...>"));
    EXPECT_FALSE(isGood(")"));
}

TEST(IsShownTest, DotsOfACutNameStandForAnyText)
{
    const std::string name =
        "a_test_with_a_very_long_name_Test::run()::{lambda()#1}::operator()()::Local<int>::go";
    EXPECT_TRUE(isShownCut(name, "a_test...name_Test::run()::...::Local<...>::go"));
    EXPECT_TRUE(isShownCut(name, "a_test...2name_Test::...::Local<int>::go"));
    EXPECT_TRUE(isShownCut(name, "a_test_with_a_very_long_name_Test::..."));
    EXPECT_FALSE(isShownCut(name, "a_test...name_Test::...::Local<int>::run"));
    EXPECT_FALSE(isShownCut(name, "b_test...name_Test::...::Local<int>::go"));
    EXPECT_FALSE(isShownCut(name, "a_test_with_a_very_long_name_Test::run()::{lambda()#1}::"
                                  "operator()()::Local<...>::go"));
    EXPECT_FALSE(isShownCut("ns::f::Local::go", "ns::...::go")); // short enough
    EXPECT_FALSE(isShownCut(name, ""));
}

TEST(IsShownTest, CutNameHasItsWholeTextAsParameters)
{
    const std::string name = "a_test_with_a_very_long_name_Test::run()::Local::go";
    const auto isGood = [&name](const std::string& label, const std::string& inside) {
        return isShownShortened(name, name + "(int)", label + "(" + inside + ")",
                                Placeholders::None);
    };
    EXPECT_TRUE(isGood("a_test...name_Test::...::Local::go", name + "(int)"));
    EXPECT_FALSE(isGood("a_test...name_Test::...::Local::go", name + "(char)"));
    EXPECT_FALSE(isGood("a_test...name_Test::...::Local::no", name + "(int)"));
    EXPECT_FALSE(isGood("a_test...name_Test::...::Local::go", "int"));
}

TEST(IsShownTest, LongNameOfInstancesHasPlaceholdersInItsWholeTextToo)
{
    const auto isGood = [](const char* shown) {
        return isShownShortened("f<int>(A<int>)::L::g", "f<int>(A<int>)::L::g(int,char)", shown,
                                Placeholders::OfInstances);
    };
    EXPECT_TRUE(isGood("f<...>(...)::L::g(f<...>(A<...>)::L::g(auto,char))"));
    EXPECT_FALSE(isGood("f<...>(...)::L::g(f<...>(A<...>)::L::g(auto,int))"));
}

} // namespace
