// SPDX-License-Identifier: MIT
#include "tools/import/RunNames.h"

#include <gtest/gtest.h>

namespace {

TEST(RunNamesTest, PlainNamesStay)
{
    RunNames names;
    EXPECT_EQ(names.fileName("parser.Reads_2+more=yes,@home"), "parser.Reads_2+more=yes,@home");
    EXPECT_EQ(names.fileName("Prüfung"), "Prüfung");
}

TEST(RunNamesTest, WhatAPathOrAShellWouldTakeForSomethingElseIsReplaced)
{
    RunNames names;
    EXPECT_EQ(names.fileName("suite/case<int> $1\n"), "suite_case_int___1_");
    EXPECT_EQ(names.fileName(std::string("a\0b", 3)), "a_b");
    EXPECT_EQ(names.fileName(".."), "_..");
    EXPECT_EQ(names.fileName("-rf"), "_-rf");
    EXPECT_EQ(names.fileName(""), "_");
}

TEST(RunNamesTest, NamesThatWereThereGetANumber)
{
    RunNames names;
    EXPECT_EQ(names.fileName("a-2"), "a-2");
    EXPECT_EQ(names.another("a"), "a");
    EXPECT_EQ(names.fileName("a"), "a-3");
    EXPECT_EQ(names.fileName("a"), "a-4");
    EXPECT_EQ(names.fileName("a-2"), "a-2-2");
}

TEST(RunNamesTest, LongNamesAreCutBetweenCharacters)
{
    RunNames names;
    const std::string letters(RunNames::LongestName - 1, 'x');
    EXPECT_EQ(names.fileName(letters + "yz"), letters + "y");
    EXPECT_EQ(names.fileName(letters + "ü"), letters);
    EXPECT_EQ(names.fileName(letters + "yzz"), letters + "y-2");
}

} // namespace
