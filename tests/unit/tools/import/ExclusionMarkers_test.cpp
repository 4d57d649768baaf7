// SPDX-License-Identifier: MIT
#include "tools/import/ExclusionMarkers.h"

#include <gtest/gtest.h>

namespace {

class ExclusionMarkersTest : public ::testing::Test
{
protected:
    // Which of the text's lines are excluded, as "2 3 5", and what is wrong behind them.
    std::string read(const std::string& text)
    {
        ExclusionMarkers markers;
        markers.read(text);
        std::string result;
        for (uint32_t line = 1; line < 12; ++line) {
            result +=
                markers.excludes(line) ? (result.empty() ? "" : " ") + std::to_string(line) : "";
        }
        EXPECT_EQ(markers.isEmpty(), result.empty());
        for (const ExclusionMarkers::Problem& problem : markers.problems()) {
            result += "\n" + std::to_string(problem._line) + ": " + problem._text;
        }
        return result;
    }
};

TEST_F(ExclusionMarkersTest, SourceWithoutMarkersExcludesNothing)
{
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("int x;\n_EXCL_LINE\nXCOV_EXCL_LINE\nLCOV_EXCL_\nLCOV_EXCL_LIN\n"), "");
}

TEST_F(ExclusionMarkersTest, LineMarkersOfEachFamily)
{
    EXPECT_EQ(read("a\nb // LCOV_EXCL_LINE\nc\nd /* GCOVR_EXCL_LINE */\ne\nGCOV_EXCL_LINE"),
              "2 4 6");
}

TEST_F(ExclusionMarkersTest, RegionHasItsFirstLineAndNotThatOfItsEnd)
{
    EXPECT_EQ(read("a\n// LCOV_EXCL_START\nb\n// LCOV_EXCL_STOP\nc\n"), "2 3");
}

TEST_F(ExclusionMarkersTest, FamiliesEndEachOthersRegions)
{
    EXPECT_EQ(read("GCOVR_EXCL_START\nb\nLCOV_EXCL_STOP\nc\n"), "1 2");
}

TEST_F(ExclusionMarkersTest, RegionThatEndsOnItsLineIsEmpty)
{
    EXPECT_EQ(read("a\nLCOV_EXCL_START LCOV_EXCL_STOP\nb\n"), "");
}

TEST_F(ExclusionMarkersTest, SeveralMarkersOnOneLine)
{
    EXPECT_EQ(read("LCOV_EXCL_START\nLCOV_EXCL_STOP LCOV_EXCL_LINE\nb\n"), "1 2");
    EXPECT_EQ(read("LCOV_EXCL_START\nLCOV_EXCL_LINE LCOV_EXCL_STOP\nb\n"), "1 2");
    EXPECT_EQ(read("LCOV_EXCL_START\nLCOV_EXCL_LINE\nLCOV_EXCL_STOP\nb\n"), "1 2");
    EXPECT_EQ(read("LCOV_EXCL_START\nLCOV_EXCL_STOP LCOV_EXCL_START\nb\nLCOV_EXCL_STOP"), "1 2 3");
}

TEST_F(ExclusionMarkersTest, MarkersOfBranchesMeanNothing)
{
    EXPECT_EQ(read("LCOV_EXCL_BR_LINE\nLCOV_EXCL_BR_START\na\nLCOV_EXCL_BR_STOP\n"
                   "LCOV_EXCL_EXCEPTION_BR_LINE\nGCOVR_EXCL_BR_LINE\n"),
              "");
}

TEST_F(ExclusionMarkersTest, RegionWithoutItsEndIsToldAndGoesToTheEnd)
{
    EXPECT_EQ(read("a\nLCOV_EXCL_START\n"),
              "2 3 4 5 6 7 8 9 10 11\n2: an excluded region begins that does not end");
}

TEST_F(ExclusionMarkersTest, OtherMarkersWithoutTheirOtherEndAreTold)
{
    EXPECT_EQ(read("LCOV_EXCL_STOP\nLCOV_EXCL_START\nGCOVR_EXCL_START\na\nLCOV_EXCL_STOP\n"
                   "GCOVR_EXCL_STOP\n"),
              "2 3 4\n1: an excluded region ends that did not begin\n"
              "3: an excluded region begins inside the one of line 2\n"
              "6: an excluded region ends that did not begin");
}

TEST_F(ExclusionMarkersTest, ManyMarkersTakeTheirTimeOnce)
{
    std::string text;
    for (int i = 0; i < 200000; ++i) {
        text += i % 2 == 0 ? "x LCOV_EXCL_LINE _EXCL__EXCL_\n" : "\n";
    }
    ExclusionMarkers markers;
    markers.read(text);
    EXPECT_TRUE(markers.excludes(199999));
    EXPECT_FALSE(markers.excludes(200000));
}

} // namespace
