// SPDX-License-Identifier: MIT
#include "tools/common/StandardNames.h"

#include <gtest/gtest.h>

namespace {

struct StandardRow
{
    const char* name;
    const char* text;
    const char* expected;
};

void PrintTo(const StandardRow& row, std::ostream* out)
{
    *out << row.text;
}

class StandardNamesTest : public ::testing::TestWithParam<StandardRow>
{};

TEST_P(StandardNamesTest, WritesWhatUsersWrite)
{
    EXPECT_EQ(withStandardNames(GetParam().text), GetParam().expected);
}

const StandardRow rows[] = {
    {"Allocator", "std::vector<int, std::allocator<int> >", "std::vector<int>"},
    {"String", "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >&",
     "std::string&"},
    {"WideString",
     "std::__cxx11::basic_string<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t> >",
     "std::__cxx11::basic_string<wchar_t>"},
    {"Map", "std::map<a::K, int, std::less<a::K>, std::allocator<std::pair<a::K const, int> > >",
     "std::map<a::K, int>"},
    {"HashMap",
     "std::unordered_map<int, b, std::hash<int>, std::equal_to<int>, "
     "std::allocator<std::pair<int const, b> > >",
     "std::unordered_map<int, b>"},
    {"OtherOrderKeepsNothingButItself", "std::set<int, std::greater<int>, std::allocator<int> >",
     "std::set<int, std::greater<int>>"},
    {"OtherAllocator", "std::vector<int, a::A<int> >", "std::vector<int, a::A<int>>"},
    {"AllocatorOfAnotherType", "std::vector<int, std::allocator<char> >",
     "std::vector<int, std::allocator<char>>"},
    {"NoDefault", "std::pair<int, std::allocator<int> >", "std::pair<int, std::allocator<int>>"},
    {"NotTheStandardLibrarys", "my::vector<int, std::allocator<int> >",
     "my::vector<int, std::allocator<int>>"},
    {"Deleter", "std::unique_ptr<T, std::default_delete<T> >", "std::unique_ptr<T>"},
    {"Queue", "std::queue<int, std::deque<int, std::allocator<int> > >", "std::queue<int>"},
    {"Duration", "std::chrono::duration<long, std::ratio<1l, 1000l> >",
     "std::chrono::duration<long, std::ratio<1l, 1000l>>"},
    {"Seconds", "std::chrono::duration<long, std::ratio<1l, 1l> >", "std::chrono::duration<long>"},
    {"AnyOrder", "std::greater<void>", "std::greater<>"},
    {"Stream", "std::ostream&, std::ostream::sentry",
     "std::basic_ostream<char>&, std::basic_ostream<char>::sentry"},
    {"Tag", "a::f[abi:cxx11]<int>", "a::f<int>"},
    {"Less", "a::operator< <std::vector<int, std::allocator<int> > >",
     "a::operator< <std::vector<int>>"},
    {"Comparison", "a<(1)<(2)>, b<int>", "a<(1)<(2)>, b<int>"},
    {"NestedFunction", "std::function<void (std::vector<int, std::allocator<int> >)>",
     "std::function<void (std::vector<int>)>"},
    {"Open", "std::vector<int", "std::vector<int"},
    {"Empty", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Rows, StandardNamesTest, ::testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

// As c++filt writes them where nobody named more than "T".
TEST(StandardDefaultsTest, DefaultsOfEveryTemplateGo)
{
    const std::string traits = ", std::char_traits<T>";
    const std::string allocator = ", std::allocator<T>";
    const std::string pairs = ", std::allocator<std::pair<T const, U> >";
    const std::pair<const char*, std::string> templates[] = {
        {"basic_filebuf<T", traits},
        {"basic_fstream<T", traits},
        {"basic_ifstream<T", traits},
        {"basic_ios<T", traits},
        {"basic_iostream<T", traits},
        {"basic_istream<T", traits},
        {"basic_istringstream<T", traits + allocator},
        {"basic_ofstream<T", traits},
        {"basic_ostream<T", traits},
        {"basic_ostringstream<T", traits + allocator},
        {"basic_regex<T", ", std::__cxx11::regex_traits<T>"},
        {"basic_streambuf<T", traits},
        {"basic_string<T", traits + allocator},
        {"basic_string_view<T", traits},
        {"basic_stringbuf<T", traits + allocator},
        {"basic_stringstream<T", traits + allocator},
        {"deque<T", allocator},
        {"forward_list<T", allocator},
        {"istreambuf_iterator<T", traits},
        {"list<T", allocator},
        {"map<T, U", ", std::less<T>" + pairs},
        {"match_results<T", ", std::allocator<std::__cxx11::sub_match<T> >"},
        {"multimap<T, U", ", std::less<T>" + pairs},
        {"multiset<T", ", std::less<T>" + allocator},
        {"ostreambuf_iterator<T", traits},
        {"priority_queue<T", ", std::vector<T, std::allocator<T> >, std::less<T>"},
        {"queue<T", ", std::deque<T, std::allocator<T> >"},
        {"set<T", ", std::less<T>" + allocator},
        {"stack<T", ", std::deque<T, std::allocator<T> >"},
        {"unique_ptr<T", ", std::default_delete<T>"},
        {"unordered_map<T, U", ", std::hash<T>, std::equal_to<T>" + pairs},
        {"unordered_multimap<T, U", ", std::hash<T>, std::equal_to<T>" + pairs},
        {"unordered_multiset<T", ", std::hash<T>, std::equal_to<T>" + allocator},
        {"unordered_set<T", ", std::hash<T>, std::equal_to<T>" + allocator},
        {"vector<T", allocator},
    };
    for (const auto& one : templates) {
        const std::string start = "std::" + std::string(one.first);
        EXPECT_EQ(withStandardNames(start + one.second + " >"), start + ">");
    }
    EXPECT_EQ(withStandardNames("std::equal_to<void>"), "std::equal_to<>");
    EXPECT_EQ(withStandardNames("std::less<void>"), "std::less<>");
    EXPECT_EQ(withStandardNames("std::ratio<3l, 1l>"), "std::ratio<3l>");
    EXPECT_EQ(withStandardNames("std::span<T, 18446744073709551615ul>"), "std::span<T>");
}

} // namespace
