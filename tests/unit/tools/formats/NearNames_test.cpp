#include "tools/formats/NearNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> nearest(const char* wanted, const std::vector<std::string>& names)
{
    NearNames near(wanted);
    for (const std::string& name : names) {
        near.add(name.c_str());
    }
    return near.nearest();
}

TEST(NearNamesTest, FindsOtherCapitals)
{
    EXPECT_THAT(nearest("list::APPEND", {"main", "List::append"}), ElementsAre("List::append"));
}

TEST(NearNamesTest, FindsNamesWithMoreOrLessInFront)
{
    EXPECT_THAT(nearest("append", {"main", "List::append"}), ElementsAre("List::append"));
    EXPECT_THAT(nearest("/home/me/src/a.c", {"src/b.c", "src/a.c"}), ElementsAre("src/a.c"));
    EXPECT_THAT(nearest("a.c", {"/x/ba.c", "/x/a.c"}), ElementsAre("/x/a.c", "/x/ba.c"));
}

TEST(NearNamesTest, FindsLettersThatAreWrong)
{
    EXPECT_THAT(nearest("List::apend", {"Set::find", "List::append"}), ElementsAre("List::append"));
    EXPECT_THAT(nearest("apend", {"List::append", "List::remove"}), ElementsAre("List::append"));
    EXPECT_THAT(nearest("mian", {"main", "f"}), ElementsAre("main"));
    EXPECT_THAT(nearest("mxxn", {"main"}), ElementsAre("main"));
    EXPECT_THAT(nearest("mxxx", {"main"}), IsEmpty());
    EXPECT_THAT(nearest("src/lists.cpp", {"src/list.cpp"}), ElementsAre("src/list.cpp"));
}

// Of a template the name alone is typed.
TEST(NearNamesTest, FindsTemplatesByTheirNames)
{
    EXPECT_THAT(nearest("Stak", {"Stack<int, std::vector<int>>", "Queue<int>"}),
                ElementsAre("Stack<int, std::vector<int>>"));
    EXPECT_THAT(nearest("Stak", {"ns::Stack<...>", "ns::Set<a::Stall>"}),
                ElementsAre("ns::Stack<...>"));
    EXPECT_THAT(nearest("ns::Stak<int>", {"ns::Stack<long double, 7>"}), IsEmpty());
    EXPECT_THAT(nearest("pusk", {"Stack<int>::push", "Stack<int>::operator>>"}),
                ElementsAre("Stack<int>::push"));
    EXPECT_THAT(nearest("Stak", {"<<<<", "Stack<", ">Stack"}), ElementsAre("Stack<", ">Stack"));
}

TEST(NearNamesTest, ListsThreeTheNearestFirst)
{
    EXPECT_THAT(nearest("run", {"runner", "A::rum", "Prune", "A::run", "RUN", "B::run"}),
                ElementsAre("RUN", "A::run", "B::run"));
}

TEST(NearNamesTest, ListsANameOnce)
{
    EXPECT_THAT(nearest("run", {"A::run", "A::run", "A::run"}), ElementsAre("A::run"));
}

TEST(NearNamesTest, FindsNothingWhereNothingIsNear)
{
    EXPECT_THAT(nearest("zebra", {"main", "List::append", ""}), IsEmpty());
    EXPECT_THAT(nearest("", {"main", ""}), IsEmpty());
    EXPECT_THAT(nearest(std::string(5000, 'x').c_str(), {std::string(5000, 'y')}), IsEmpty());
}

} // namespace
