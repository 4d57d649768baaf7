// SPDX-License-Identifier: MIT
#include "tools/import/llvm/RegionLines.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr uint32_t None = RegionLines::NoBlock;

// The blocks of each line: "3: 0 1, 4: 1".
std::string lines(const std::vector<RegionLines::Region>& regions)
{
    RegionLines maker;
    for (const RegionLines::Region& region : regions) {
        maker.add(region);
    }
    std::vector<CopyLine> found;
    maker.append(7, found);
    EXPECT_LE(found.size(), maker.bound());
    std::sort(found.begin(), found.end(), [](const CopyLine& a, const CopyLine& b) {
        return a._line != b._line ? a._line < b._line : a._block < b._block;
    });
    std::string text;
    for (size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i]._file, 7u);
        const bool isNew = i == 0 || found[i - 1]._line != found[i]._line;
        text += isNew ? (i == 0 ? "" : ", ") + std::to_string(found[i]._line) + ":" : "";
        text += " " + std::to_string(found[i]._block);
    }
    return text;
}

//  2 {                       the function, block 0, and an if with block 1 in it
//  3     if (a) {
//  4         b();
//  5     }
//  6     c();
//  7 }
TEST(RegionLinesTest, GivesTextToTheInnermostRegion)
{
    EXPECT_EQ(lines({{2, 1, 7, 2, 0}, {3, 12, 5, 6, 1}}), "2: 0, 3: 0 1, 4: 1, 5: 1, 6: 0, 7: 0");
    // The order of regions does not matter.
    EXPECT_EQ(lines({{3, 12, 5, 6, 1}, {2, 1, 7, 2, 0}}), "2: 0, 3: 0 1, 4: 1, 5: 1, 6: 0, 7: 0");
}

TEST(RegionLinesTest, GivesLinesWhereOneEndsAndAnotherBegins)
{
    // } else {
    EXPECT_EQ(lines({{1, 1, 9, 2, 0}, {2, 9, 4, 6, 1}, {4, 12, 6, 6, 2}}),
              "1: 0, 2: 0 1, 3: 1, 4: 1 2, 5: 2, 6: 2, 7: 0, 8: 0, 9: 0");
}

TEST(RegionLinesTest, LetsGapsAndOtherTextHideWhatIsAround)
{
    EXPECT_EQ(lines({{1, 1, 6, 2, 0}, {2, 5, 4, 5, None}}), "1: 0, 2: 0, 5: 0, 6: 0");
    // A gap that ends where a line begins: the line belongs to what begins there.
    EXPECT_EQ(lines({{1, 1, 6, 2, 0}, {2, 5, 3, 1, None}, {3, 1, 3, 9, 1}}),
              "1: 0, 2: 0, 3: 1, 4: 0, 5: 0, 6: 0");
}

//  2 ASSERT_TRUE(              a gap from the macro's name to the next statement, block 1
//  3     f(1, 2));
//  4 g();                        what begins there has the line
TEST(RegionLinesTest, GivesGapsTheLinesOnWhichNothingBegins)
{
    EXPECT_EQ(lines({{1, 1, 6, 2, 0}, {2, 12, 4, 1, 1, 3, true}, {4, 1, 6, 2, 2}}),
              "1: 0, 2: 0, 3: 1, 4: 2, 5: 2, 6: 2");
    EXPECT_EQ(lines({{1, 1, 6, 2, 0}, {2, 12, 4, 5, 1, 3, true}, {4, 5, 6, 2, 2}}),
              "1: 0, 2: 0, 3: 1, 4: 2, 5: 2, 6: 2");
}

TEST(RegionLinesTest, LeavesOutAMacroThatIsAllOfARegion)
{
    // Kinds are ranks; the use of a macro comes behind code.
    EXPECT_EQ(lines({{3, 5, 3, 9, 0, 0}, {3, 5, 3, 9, 1, 1}}), "3: 0");
    EXPECT_EQ(lines({{3, 5, 3, 9, 0, 0}, {3, 5, 3, 9, 1, 0}}), "3: 0 1");
    EXPECT_EQ(lines({{3, 5, 3, 9, 1, 1}}), "3: 1");
}

TEST(RegionLinesTest, TakesAnEmptyRegionForWhatIsAroundIt)
{
    EXPECT_EQ(lines({{3, 1, 5, 2, 0}, {4, 5, 4, 5, 1}}), "3: 0, 4: 0 0, 5: 0");
    EXPECT_EQ(lines({{4, 5, 4, 5, 1}}), "");
}

TEST(RegionLinesTest, EndsBeforeALineOnWhichNothingIsLeft)
{
    // A file that is included begins at its first line and ends behind its last.
    EXPECT_EQ(lines({{1, 1, 4, 1, 0}}), "1: 0, 2: 0, 3: 0");
}

TEST(RegionLinesTest, TakesRegionsThatCross)
{
    EXPECT_EQ(lines({{1, 1, 4, 9, 0}, {3, 1, 6, 2, 1}}), "1: 0, 2: 0, 3: 0 1, 4: 1, 5: 1, 6: 1");
    EXPECT_EQ(lines({}), "");
}

} // namespace
