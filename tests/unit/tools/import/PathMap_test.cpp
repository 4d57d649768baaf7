// SPDX-License-Identifier: MIT
#include "tools/import/PathMap.h"

#include "tools/common/SourcePath.h"
#include "tools/import/SourceTable.h"

#include <gtest/gtest.h>

namespace {

TEST(PathMapTest, MovesWhatLiesBelowAFolder)
{
    PathMap map;
    EXPECT_EQ(map.moved("/ci/a.cc"), "/ci/a.cc");
    EXPECT_TRUE(map.isEmpty());
    ASSERT_TRUE(map.add("/ci=/home/me/p"));
    EXPECT_FALSE(map.isEmpty());
    EXPECT_EQ(map.moved("/ci/src/a.cc"), "/home/me/p/src/a.cc");
    EXPECT_EQ(map.moved("/ci"), "/home/me/p");
    EXPECT_EQ(map.moved("/cinema/a.cc"), "/cinema/a.cc");
    EXPECT_EQ(map.moved("/x/ci/a.cc"), "/x/ci/a.cc");
}

TEST(PathMapTest, LongestFolderCountsWhateverTheOrder)
{
    for (const bool isTurned : {false, true}) {
        PathMap map;
        ASSERT_TRUE(map.add(isTurned ? "/ci/lib=/l" : "/ci=/c"));
        ASSERT_TRUE(map.add(isTurned ? "/ci=/c" : "/ci/lib=/l"));
        EXPECT_EQ(map.moved("/ci/lib/a.cc"), "/l/a.cc");
        EXPECT_EQ(map.moved("/ci/library/a.cc"), "/c/library/a.cc");
    }
}

TEST(PathMapTest, ResultIsNotMovedAgain)
{
    PathMap map;
    ASSERT_TRUE(map.add("/a=/b"));
    ASSERT_TRUE(map.add("/b=/a"));
    EXPECT_EQ(map.moved("/a/x"), "/b/x");
    EXPECT_EQ(map.moved("/b/x"), "/a/x");
}

TEST(PathMapTest, SlashesAndStepsDoNotMatter)
{
    PathMap map;
    ASSERT_TRUE(map.add("/ci/./x/..//=/home/me/"));
    EXPECT_EQ(map.moved("/ci/a.cc"), "/home/me/a.cc");
}

TEST(PathMapTest, RootCanBeEitherSide)
{
    PathMap map;
    ASSERT_TRUE(map.add("/=/root of ci"));
    EXPECT_EQ(map.moved("/src/a.cc"), "/root of ci/src/a.cc");
    ASSERT_TRUE(map.add("/src=/"));
    EXPECT_EQ(map.moved("/src/a.cc"), "/a.cc");
}

TEST(PathMapTest, RelativeFoldersCountFromTheCurrentOne)
{
    PathMap map;
    ASSERT_TRUE(map.add("ci=new"));
    EXPECT_EQ(map.moved(absolutePath("", "ci/a.cc")), absolutePath("", "new/a.cc"));
}

TEST(PathMapTest, FirstEqualsSignSplits)
{
    PathMap map;
    ASSERT_TRUE(map.add("/a=/b=c"));
    EXPECT_EQ(map.moved("/a/x"), "/b=c/x");
}

TEST(PathMapTest, SameFolderAgainReplaces)
{
    PathMap map;
    ASSERT_TRUE(map.add("/a=/b"));
    ASSERT_TRUE(map.add("/a/=/c"));
    EXPECT_EQ(map.moved("/a/x"), "/c/x");
}

TEST(PathMapTest, BothPartsAreWanted)
{
    PathMap map;
    for (const char* words : {"", "=", "/a", "/a=", "=/a"}) {
        EXPECT_FALSE(map.add(words)) << words;
    }
    EXPECT_TRUE(map.isEmpty());
}

TEST(SourceTableTest, PathsThatBecomeOneFileAreOne)
{
    PathMap moves;
    ASSERT_TRUE(moves.add("/ci=/p"));
    SourceFilter filter;
    filter.only("/p/src");
    SourceTable table(filter, moves);
    EXPECT_EQ(table.find("/ci/src/a.cc")._number, 0u);
    EXPECT_EQ(table.find("/p/src/a.cc")._number, 0u);
    EXPECT_EQ(table.find("/ci/src/a.cc")._number, 0u);
    EXPECT_EQ(table.find("/ci/b.cc")._number, 1u);
    EXPECT_EQ(table.paths(), (std::vector<std::string>{"/p/src/a.cc", "/p/b.cc"}));
    // The filter is asked for where the file is now.
    EXPECT_EQ(table.find("/ci/src/a.cc")._answer, SourceFilter::Kept);
    EXPECT_EQ(table.find("/ci/b.cc")._answer, SourceFilter::Excluded);
}

} // namespace
