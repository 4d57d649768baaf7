#include "zem/Rows/RptInfo.h"

#include <gtest/gtest.h>

namespace {

TEST(RptInfoTest, StartsByFileWithoutKeys)
{
    RptInfo info;
    EXPECT_EQ(info._type, 1);
    EXPECT_EQ(info.sortKeys(), nullptr);
    EXPECT_EQ(info._showHitCounts, 0);
    EXPECT_EQ(info._markUncovered, 1);
    EXPECT_EQ(info._showPercentage, 0);
    EXPECT_EQ(info._showLineNumbers, 1);
}

TEST(RptInfoTest, TypesHaveTheirNumbers)
{
    EXPECT_EQ(RptByDirectory, 0);
    EXPECT_EQ(RptByFile, 1);
    EXPECT_EQ(RptByFunction, 2);
    EXPECT_EQ(RptByClass, 3);
}

TEST(RptInfoTest, SortKeysAreAPrivateCopy)
{
    char keys[] = "dF";
    RptInfo info;
    info.sortKeys(keys);
    keys[0] = 'b';
    EXPECT_STREQ(info.sortKeys(), "dF");
}

TEST(RptInfoTest, EmptyAndNullKeysKeepTheOldOnes)
{
    RptInfo info;
    info.sortKeys("dF");
    info.sortKeys("");
    EXPECT_STREQ(info.sortKeys(), "dF");
    info.sortKeys(nullptr);
    EXPECT_STREQ(info.sortKeys(), "dF");
}

TEST(RptInfoTest, KeysCanBeSetToAPartOfThemselves)
{
    RptInfo info;
    info.sortKeys("dF");
    info.sortKeys(info.sortKeys() + 1);
    EXPECT_STREQ(info.sortKeys(), "F");
}

TEST(RptInfoTest, CopyTakesFlagsAndItsOwnKeys)
{
    RptInfo info;
    info._type = RptByClass;
    info._showHitCounts = 1;
    info._markUncovered = 0;
    info._showPercentage = 1;
    info._showLineNumbers = 0;
    info.sortKeys("b");
    const RptInfo copy(info);
    EXPECT_EQ(copy._type, RptByClass);
    EXPECT_EQ(copy._showHitCounts, 1);
    EXPECT_EQ(copy._markUncovered, 0);
    EXPECT_EQ(copy._showPercentage, 1);
    EXPECT_EQ(copy._showLineNumbers, 0);
    EXPECT_STREQ(copy.sortKeys(), "b");
    EXPECT_NE(copy.sortKeys(), info.sortKeys());
}

TEST(RptInfoTest, CopyOfSettingsWithoutKeysHasNone)
{
    RptInfo info;
    const RptInfo copy(info);
    EXPECT_EQ(copy.sortKeys(), nullptr);
}

TEST(RptInfoTest, AssignmentTakesFlagsAndKeys)
{
    RptInfo from;
    from._type = RptByFunction;
    from.sortKeys("#");
    RptInfo to;
    to.sortKeys("dF");
    to = from;
    EXPECT_EQ(to._type, RptByFunction);
    EXPECT_STREQ(to.sortKeys(), "#");
}

TEST(RptInfoTest, AssignmentWithoutKeysKeepsTheOldOnes)
{
    RptInfo from;
    RptInfo to;
    to.sortKeys("dF");
    to = from;
    EXPECT_STREQ(to.sortKeys(), "dF");
}

TEST(RptInfoTest, SelfAssignmentChangesNothing)
{
    RptInfo info;
    info.sortKeys("dF");
    const char* keys = info.sortKeys();
    const RptInfo& same = info;
    info = same;
    EXPECT_EQ(info.sortKeys(), keys);
}

} // namespace
