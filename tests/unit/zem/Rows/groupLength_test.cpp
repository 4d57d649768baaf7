#include "zem/Rows/groupLength.h"

#include <gtest/gtest.h>

namespace {

TEST(groupLengthTest, ADirectoryEndsBeforeTheLastSlash)
{
    EXPECT_EQ(directoryLength("src/list/a.c"), 8);
    EXPECT_EQ(directoryLength("/a.c"), 0);
    EXPECT_EQ(directoryLength("a.c"), -1);
    EXPECT_EQ(directoryLength(""), -1);
}

TEST(groupLengthTest, AClassEndsBeforeTheCharacterInFrontOfTheLastColon)
{
    EXPECT_EQ(classLength("List::append__Fi"), 4);
    EXPECT_EQ(classLength("A::B::run"), 4);
    EXPECT_EQ(classLength("main"), -1);
    EXPECT_EQ(classLength(":f"), -1);
    EXPECT_EQ(classLength("::f"), -1);
    EXPECT_EQ(classLength("A:f"), 1);
}

} // namespace
