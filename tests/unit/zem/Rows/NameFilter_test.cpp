#include "zem/Rows/NameFilter.h"

#include <gtest/gtest.h>

namespace {

char first[] = "first";
char second[] = "second";
char nothing[] = "";

TEST(NameFilterTest, AnEmptyListHidesNothing)
{
    const List<char*> names;
    const NameFilter filter(names);
    EXPECT_TRUE(filter.isEmpty());
    EXPECT_FALSE(filter.hides("first"));
    EXPECT_FALSE(filter.hides(nullptr));
}

TEST(NameFilterTest, AListHidesWhatItDoesNotHave)
{
    List<char*> names;
    names.append(first);
    names.append(second);
    const NameFilter filter(names);
    EXPECT_FALSE(filter.isEmpty());
    EXPECT_FALSE(filter.hides("first"));
    EXPECT_FALSE(filter.hides("second"));
    EXPECT_TRUE(filter.hides("First"));
    EXPECT_TRUE(filter.hides("firs"));
    EXPECT_TRUE(filter.hides(nullptr));
}

TEST(NameFilterTest, NullIsTheEmptyName)
{
    List<char*> names;
    names.append(nothing);
    EXPECT_FALSE(NameFilter(names).hides(nullptr));
    EXPECT_TRUE(NameFilter(names).hides("first"));
}

} // namespace
