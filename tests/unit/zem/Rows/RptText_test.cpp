#include "zem/Rows/RptText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(RptTextTest, SummaryNamesTestedUntestedAndPercentage)
{
    EXPECT_EQ(RptText::summary(1, 4), " Blocks: 3 tested, 1 untested, 75% coverage");
}

TEST(RptTextTest, SummaryOfNothing)
{
    EXPECT_EQ(RptText::summary(0, 0), " Blocks: 0 tested, 0 untested, 0% coverage");
}

TEST(RptTextTest, SummaryOfMoreBlocksThanAnIntHolds)
{
    EXPECT_EQ(RptText::summary(1000000000L, 4000000000L),
              " Blocks: 3000000000 tested, 1000000000 untested, 75% coverage");
}

TEST(RptTextTest, PercentageTruncatesAfterDividing)
{
    EXPECT_EQ(RptText::percent(29, 100), 28);
    EXPECT_EQ(RptText::percent(57, 100), 56);
    EXPECT_EQ(RptText::percent(58, 100), 57);
    EXPECT_EQ(RptText::percent(2, 3), 66);
    EXPECT_EQ(RptText::percent(999, 1000), 99);
    EXPECT_EQ(RptText::percent(7, 7), 100);
    EXPECT_EQ(RptText::percent(0, 7), 0);
}

TEST(RptTextTest, PercentageOfNothingIsZero)
{
    EXPECT_EQ(RptText::percent(0, 0), 0);
    EXPECT_EQ(RptText::percent(-3, 0), 0);
}

TEST(RptTextTest, CountsShowCoveredUncoveredAndPercentage)
{
    char text[80];
    EXPECT_EQ(RptText::counts(0, 7, text, sizeof text), 9);
    EXPECT_STREQ(text, " 0:7 (0%)");
    RptText::counts(7, 7, text, sizeof text);
    EXPECT_STREQ(text, " 7:0 (100%)");
    RptText::counts(2, 3, text, sizeof text);
    EXPECT_STREQ(text, " 2:1 (66%)");
    RptText::counts(29, 100, text, sizeof text);
    EXPECT_STREQ(text, " 29:71 (28%)");
    RptText::counts(0, 0, text, sizeof text);
    EXPECT_STREQ(text, " 0:0 (0%)");
}

TEST(RptTextTest, CountsOfTheExtremesFit)
{
    char text[80];
    const int length = RptText::counts(-2147483648L, 1, text, sizeof text);
    EXPECT_STREQ(text, " -2147483648:2147483649 (-214748364800%)");
    EXPECT_LT(length, 80);
}

TEST(RptTextTest, CountsAreCutToTheBuffer)
{
    char text[6];
    EXPECT_EQ(RptText::counts(2, 3, text, sizeof text), 5);
    EXPECT_STREQ(text, " 2:1 ");
}

TEST(RptTextTest, HeaderNamesTypeAndKeys)
{
    EXPECT_EQ(RptText::header(RptByDirectory, "dF"), "Report: by directory, Sort keys: dF");
    EXPECT_EQ(RptText::header(RptByFile, "%"), "Report: by file, Sort keys: %");
    EXPECT_EQ(RptText::header(RptByFunction, "f"), "Report: by function, Sort keys: f");
    EXPECT_EQ(RptText::header(RptByClass, "#"), "Report: by class, Sort keys: #");
}

TEST(RptTextTest, HeaderOfAnotherTypeSaysFile)
{
    EXPECT_EQ(RptText::header(-1, "d"), "Report: by file, Sort keys: d");
    EXPECT_EQ(RptText::header(4, "d"), "Report: by file, Sort keys: d");
}

TEST(RptTextTest, HeaderWithoutKeysEndsInTheBlank)
{
    EXPECT_EQ(RptText::header(RptByFile, nullptr), "Report: by file, Sort keys: ");
}

TEST(RptTextTest, HeaderTakesKeysOfAnyLength)
{
    const std::string keys(1000, 'd');
    EXPECT_EQ(RptText::header(RptByFile, keys.c_str()), "Report: by file, Sort keys: " + keys);
}

TEST(RptTextTest, ALogThatFailsIsNamedWithTheReason)
{
    std::ostringstream out;
    RptText::beginLoadError(out, "a b\n.log");
    EXPECT_EQ(out.str(), " *** RptArea::report: Error processing a b\\x0a.log: ");
}

} // namespace
