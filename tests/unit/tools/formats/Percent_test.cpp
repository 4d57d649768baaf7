#include "tools/formats/Percent.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

Percent percent(const char* text)
{
    Percent result;
    EXPECT_TRUE(result.parse(text)) << text;
    return result;
}

std::string written(int64_t covered, int64_t total)
{
    std::ostringstream out;
    Percent::write(out, covered, total);
    return out.str();
}

std::string writtenRate(int64_t covered, int64_t total)
{
    std::ostringstream out;
    Percent::writeRate(out, covered, total);
    return out.str();
}

TEST(PercentTest, ParsesNumbersFromZeroToHundred)
{
    EXPECT_EQ(percent("0").text(), "0");
    EXPECT_EQ(percent("80").text(), "80");
    EXPECT_EQ(percent("80%").text(), "80");
    EXPECT_EQ(percent("79.5").text(), "79.5");
    EXPECT_EQ(percent("79.0625").text(), "79.0625");
    EXPECT_EQ(percent(".5").text(), "0.5");
    EXPECT_EQ(percent("100.0000%").text(), "100");
    EXPECT_EQ(percent("007").text(), "7");
}

TEST(PercentTest, RefusesAnythingElse)
{
    for (const char* text : {"", "%", ".", "-1", "+1", "1e2", "100.0001", "101", "80.12345", "80 ",
                             " 80", "80%%", "1.2.3", "99999999999999999999999"}) {
        Percent result;
        EXPECT_FALSE(result.parse(text)) << text;
    }
}

TEST(PercentTest, ComparesExactly)
{
    EXPECT_TRUE(percent("80").isAbove(7999, 10000));
    EXPECT_FALSE(percent("80").isAbove(8000, 10000));
    EXPECT_TRUE(percent("79.995").isAbove(79994, 100000));
    EXPECT_FALSE(percent("79.995").isAbove(79995, 100000));
    // Where a fraction in floating point would be rounded to the limit.
    EXPECT_TRUE(percent("100").isAbove(999999999999, 1000000000000));
    EXPECT_FALSE(percent("29").isAbove(29, 100));
    EXPECT_FALSE(percent("33.3333").isAbove(1, 3));
    EXPECT_TRUE(percent("66.6667").isAbove(2, 3));
}

TEST(PercentTest, OfNothingNothingIsMissing)
{
    EXPECT_FALSE(percent("100").isAbove(0, 0));
    EXPECT_FALSE(percent("0").isAbove(0, 5));
}

TEST(PercentTest, IsCutAndNeverRoundedUp)
{
    EXPECT_EQ(written(2, 3), "66.66");
    EXPECT_EQ(written(29, 100), "29.00");
    EXPECT_EQ(written(99999, 100000), "99.99");
    EXPECT_EQ(written(1, 1), "100.00");
    EXPECT_EQ(written(1, 100000), "0.00");
    EXPECT_EQ(written(0, 0), "0.00");
    EXPECT_EQ(writtenRate(2, 3), "0.6666");
    EXPECT_EQ(writtenRate(3, 3), "1.0000");
    EXPECT_EQ(writtenRate(0, 0), "0.0000");
}

TEST(PercentTest, WhatADamagedMapSaysStaysInBounds)
{
    EXPECT_EQ(written(-3, 5), "0.00");
    EXPECT_EQ(written(7, 5), "100.00");
    EXPECT_EQ(written(-1, -1), "0.00");
}

} // namespace
