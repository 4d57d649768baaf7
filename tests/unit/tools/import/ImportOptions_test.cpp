// SPDX-License-Identifier: MIT
#include "tools/import/ImportOptions.h"

#include <gtest/gtest.h>

namespace {

class ImportOptionsTest : public ::testing::Test
{
protected:
    // How many words were taken.
    int take(const char* word, const char* value = nullptr)
    {
        char* words[] = {const_cast<char*>(word), const_cast<char*>(value), nullptr};
        return _options.take(words);
    }

    ImportOptions _options;
};

TEST_F(ImportOptionsTest, FlagsSetWhatTheySayAndTakeNoValue)
{
    EXPECT_FALSE(_options._output._isRelative);
    EXPECT_EQ(take("--relative", "next"), 1);
    EXPECT_TRUE(_options._output._isRelative);

    EXPECT_FALSE(_options._names._isFull);
    EXPECT_EQ(take("--full-names", "next"), 1);
    EXPECT_TRUE(_options._names._isFull);

    EXPECT_FALSE(_options._keepsInstances);
    EXPECT_EQ(take("--instances", "next"), 1);
    EXPECT_TRUE(_options._keepsInstances);

    EXPECT_TRUE(_options._obeysMarkers);
    EXPECT_EQ(take("--no-markers", "next"), 1);
    EXPECT_FALSE(_options._obeysMarkers);

    EXPECT_EQ(_options._filter.ask("/usr/include/a.h"), SourceFilter::System);
    EXPECT_EQ(take("--system", "next"), 1);
    EXPECT_EQ(_options._filter.ask("/usr/include/a.h"), SourceFilter::Kept);
}

TEST_F(ImportOptionsTest, ValuesGoWhereTheyBelong)
{
    EXPECT_EQ(take("-o", "out"), 2);
    EXPECT_EQ(_options._output._folder, "out");
    EXPECT_EQ(take("--name", "nightly"), 2);
    EXPECT_EQ(_options._output._name, "nightly");
    EXPECT_EQ(take("--exclude", "*/gen/*"), 2);
    EXPECT_EQ(_options._filter.ask("/w/gen/a.c"), SourceFilter::Excluded);
    EXPECT_EQ(_options._filter.ask("/w/a.c"), SourceFilter::Kept);
    EXPECT_EQ(take("--only", "/w/src"), 2);
    EXPECT_EQ(_options._filter.ask("/w/a.c"), SourceFilter::Excluded);
    EXPECT_EQ(_options._filter.ask("/w/src/a.c"), SourceFilter::Kept);
    EXPECT_EQ(take("--map", "/old=/new"), 2);
    EXPECT_EQ(_options._moves.moved("/old/a.c"), "/new/a.c");
    EXPECT_EQ(_options.problem(), "");
}

TEST_F(ImportOptionsTest, UnknownOnesAndMissingValuesAreNotTaken)
{
    EXPECT_EQ(take("--nothing"), 0);
    EXPECT_EQ(take("--nothing", "value"), 0);
    for (const char* option : {"-o", "--name", "--exclude", "--only", "--map"}) {
        EXPECT_EQ(take(option), 0) << option;
    }
}

TEST_F(ImportOptionsTest, WhatCannotBeIsAProblem)
{
    EXPECT_EQ(_options.problem(), "");
    EXPECT_EQ(take("--name", "a/b"), 2);
    EXPECT_EQ(_options.problem(), "not the name of a file: --name 'a/b'");
    EXPECT_EQ(take("--name", ""), 2);
    EXPECT_EQ(_options.problem(), "not the name of a file: --name ''");
    EXPECT_EQ(take("--name", "a"), 2);
    EXPECT_EQ(take("--map", "nowhere"), 2);
    EXPECT_EQ(take("--map", "/a=/b"), 2);
    EXPECT_EQ(_options.problem(), "not OLD=NEW: --map 'nowhere'");
    ImportOptions empty;
    empty._output._folder = "";
    EXPECT_EQ(empty.problem(), "the folder to write into has no name: -o ''");
}

} // namespace
