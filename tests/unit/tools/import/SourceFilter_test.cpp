// SPDX-License-Identifier: MIT
#include "tools/import/SourceFilter.h"

#include <gtest/gtest.h>

namespace {

TEST(SourceFilterTest, SystemFilesAreLeftOutUnlessAskedFor)
{
    SourceFilter filter;
    EXPECT_EQ(filter.ask("/usr/include/c++/12/vector"), SourceFilter::System);
    EXPECT_EQ(filter.ask("/usrlocal/a.cc"), SourceFilter::Kept);
    filter.keepSystem();
    EXPECT_EQ(filter.ask("/usr/include/c++/12/vector"), SourceFilter::Kept);
}

TEST(SourceFilterTest, PatternMatchesAcrossFolders)
{
    SourceFilter filter;
    filter.exclude("*/tests/*");
    filter.exclude("*.y");
    EXPECT_EQ(filter.ask("/p/tests/unit/a.cc"), SourceFilter::Excluded);
    EXPECT_EQ(filter.ask("/p/grammar.y"), SourceFilter::Excluded);
    EXPECT_EQ(filter.ask("/p/src/a.cc"), SourceFilter::Kept);
}

TEST(SourceFilterTest, OnlyKeepsWhatLiesBelow)
{
    SourceFilter filter;
    filter.only("/p/src");
    filter.only("/q/./x/../lib/");
    EXPECT_EQ(filter.ask("/p/src/a.cc"), SourceFilter::Kept);
    EXPECT_EQ(filter.ask("/q/lib/a.cc"), SourceFilter::Kept);
    EXPECT_EQ(filter.ask("/p/src2/a.cc"), SourceFilter::Excluded);
    EXPECT_EQ(filter.ask("/a.cc"), SourceFilter::Excluded);
}

} // namespace
