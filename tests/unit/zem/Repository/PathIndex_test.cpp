#include "zem/Repository/PathIndex.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(PathIndexTest, CutPathsAreForgottenAndTheirNumbersGivenAgain)
{
    PathIndex index;
    for (const char* path : {"a", "b", "c"}) {
        ASSERT_EQ(index.add(path), PathIndex::Added);
    }
    index.cutTo(1);
    EXPECT_EQ(index.size(), 1);
    EXPECT_EQ(index.find("a"), 0);
    EXPECT_EQ(index.find("b"), -1);
    EXPECT_EQ(index.find("c"), -1);
    EXPECT_EQ(index.add("c"), PathIndex::Added);
    EXPECT_EQ(index.find("c"), 1);
}

TEST(PathIndexTest, EmptyIndexFindsNothing)
{
    PathIndex index;
    EXPECT_EQ(index.size(), 0);
    EXPECT_EQ(index.find("a"), -1);
    EXPECT_EQ(index.find(""), -1);
}

TEST(PathIndexTest, NumbersPathsInTheOrderAdded)
{
    PathIndex index;
    EXPECT_EQ(index.add("a"), PathIndex::Added);
    EXPECT_EQ(index.add(""), PathIndex::Added);
    EXPECT_EQ(index.add("a"), PathIndex::Known);
    EXPECT_EQ(index.add("b"), PathIndex::Added);
    EXPECT_EQ(index.size(), 3);
    EXPECT_EQ(index.find("a"), 0);
    EXPECT_EQ(index.find(""), 1);
    EXPECT_EQ(index.find("b"), 2);
    EXPECT_STREQ(index.path(1), "");
    EXPECT_STREQ(index.path(2), "b");
}

TEST(PathIndexTest, FindsInAnyOrder)
{
    PathIndex index;
    for (int i = 0; i < 100; ++i) {
        index.add(("src/" + std::to_string(i) + ".c").c_str());
    }
    // Steps of each size, forward and back, round the end, and standing still.
    long number = 0;
    for (const long step : {0, 1, 1, 2, 50, 98, 99, 99, 0, 1, 46}) {
        for (int times = 0; times < 200; ++times) {
            number = (number + step) % 100;
            ASSERT_EQ(index.find(("src/" + std::to_string(number) + ".c").c_str()), number);
            ASSERT_EQ(index.find("src/100.c"), -1);
            ASSERT_EQ(index.find("src/"), -1);
        }
    }
}

TEST(PathIndexTest, KeepsCopies)
{
    std::string path = "src/a.c";
    PathIndex index;
    index.add(path.c_str());
    path = "changed";
    EXPECT_EQ(index.find("src/a.c"), 0);
    EXPECT_EQ(index.find("changed"), -1);
}

} // namespace
