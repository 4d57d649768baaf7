// SPDX-License-Identifier: MIT
#include "tools/import/lines/SourceRoots.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace {

class SourceRootsTest : public ::testing::Test
{
protected:
    SourceRootsTest()
    {
        _dir.write("x/a.c", "");
        _dir.write("y/a.c", "");
        _dir.write("y/b.c", "");
        _dir.write("work/c.c", "");
    }

    const TempDir _dir;
    SourceRoots _roots{_dir.path("work/out/document.xml")};
};

TEST_F(SourceRootsTest, EachListedFolderIsTried)
{
    EXPECT_TRUE(_roots.add(_dir.path("x")));
    EXPECT_TRUE(_roots.add(_dir.path("y/")));
    EXPECT_EQ(_roots.find("b.c"), _dir.path("y/b.c"));
    EXPECT_TRUE(_roots.ambiguous().empty());
    EXPECT_EQ(_roots.find("a.c"), _dir.path("x/a.c"));
    EXPECT_EQ(_roots.find("a.c"), _dir.path("x/a.c")); // said once
    ASSERT_EQ(_roots.ambiguous().size(), 1u);
    EXPECT_EQ(_roots.ambiguous()[0], "a.c is " + _dir.path("x/a.c") + " or " + _dir.path("y/a.c") +
                                         ": the first is taken");
}

TEST_F(SourceRootsTest, OneFolderListedTwiceIsNotAmbiguous)
{
    EXPECT_TRUE(_roots.add(_dir.path("x")));
    EXPECT_TRUE(_roots.add(_dir.path("y/../x")));
    EXPECT_EQ(_roots.find("a.c"), _dir.path("x/a.c"));
    EXPECT_TRUE(_roots.ambiguous().empty());
}

TEST_F(SourceRootsTest, RelativeFoldersCountFromAroundTheDocument)
{
    EXPECT_TRUE(_roots.add(".."));
    EXPECT_EQ(_roots.find("y/b.c"), _dir.path("y/b.c"));
    EXPECT_EQ(_roots.find("c.c"), _dir.path("work/c.c"));
}

TEST_F(SourceRootsTest, NamesAreFoundAroundTheDocument)
{
    EXPECT_EQ(_roots.find("c.c"), _dir.path("work/c.c"));
    EXPECT_EQ(_roots.find("x/a.c"), _dir.path("x/a.c"));
    EXPECT_EQ(_roots.find("/none/./z.c"), "/none/z.c");
}

TEST_F(SourceRootsTest, WhatIsNowhereIsInTheFirstFolder)
{
    EXPECT_TRUE(_roots.add("/none"));
    EXPECT_TRUE(_roots.add(_dir.path("x")));
    EXPECT_EQ(_roots.find("z.c"), "/none/z.c");
}

TEST_F(SourceRootsTest, ManyFoldersAreRefused)
{
    for (size_t i = 0; i < SourceRoots::MostFolders; ++i) {
        EXPECT_TRUE(_roots.add("/none" + std::to_string(i)));
    }
    EXPECT_TRUE(_roots.add("/none1"));
    EXPECT_FALSE(_roots.add("/none"));
}

} // namespace
