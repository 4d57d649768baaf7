// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcBrowser.h"

#include "tests/support/TempDir.h"
#include "zem/Lines/SrcLine.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

class SrcBrowserTest : public testing::Test
{
protected:
    TempDir _files;

    SrcBrowser _browser;
};

TEST_F(SrcBrowserTest, LinesWithoutCoverageHaveNoBlocks)
{
    ASSERT_EQ(_browser.open(_files.write("a.c", "x\n").c_str()), 0);
    EXPECT_EQ(_browser.getHits(0), -1);
    EXPECT_EQ(_browser.getHitMap(0), nullptr);
    EXPECT_EQ(_browser.getHitMapSize(0), 0);
}

TEST_F(SrcBrowserTest, RequestsOutOfRangeAnswerNothing)
{
    EXPECT_EQ(_browser.getHits(0), -1);
    ASSERT_EQ(_browser.open(_files.write("a.c", "x\n").c_str()), 0);
    _browser.line(1)->showBlock(3);
    for (const long n : {-1L, 2L, 65535L}) {
        EXPECT_EQ(_browser.getHits(n), -1) << n;
        EXPECT_EQ(_browser.getHitMap(n), nullptr) << n;
        EXPECT_EQ(_browser.getHitMapSize(n), 0) << n;
        EXPECT_EQ(_browser.line(n), nullptr) << n;
    }
    EXPECT_EQ(_browser.getHits(1), 3);
}

TEST_F(SrcBrowserTest, OpeningAnotherFileReplacesLinesAndCoverage)
{
    ASSERT_EQ(_browser.open(_files.write("a.c", "x\ny\n").c_str()), 0);
    _browser.line(0)->showBlock(0);
    ASSERT_EQ(_browser.open(_files.write("b.c", "z").c_str()), 0);
    EXPECT_EQ(_browser.nLines(), 1);
    EXPECT_EQ(_browser.getHits(0), -1);
}

TEST_F(SrcBrowserTest, ExchangeTakesFileLinesAndCoverageAlong)
{
    ASSERT_EQ(_browser.open(_files.write("a.c", "x\n").c_str()), 0);
    SrcBrowser other;
    ASSERT_EQ(other.open(_files.write("b.c", "one\ntwo\nthree").c_str()), 0);
    other.line(2)->showBlock(7);
    _browser.exchange(other);
    EXPECT_EQ(_browser.filename(), _files.path("b.c"));
    EXPECT_EQ(_browser.nLines(), 3);
    EXPECT_EQ(_browser.maxLineSz(), 4);
    EXPECT_EQ(_browser.getHits(2), 7);
    EXPECT_EQ(*_browser.getHitMap(2), 7);
    int len = 0;
    EXPECT_EQ(_browser.bytesRead(), 13);
    EXPECT_EQ(other.bytesRead(), 2);
    EXPECT_STREQ(_browser.getLine(2, len), "three");
    EXPECT_EQ(other.nLines(), 2);
}

TEST_F(SrcBrowserTest, DumpNamesTheFileAndEveryLine)
{
    const std::string file = _files.write("a.c", "x\n\ty\n");
    ASSERT_EQ(_browser.open(file.c_str()), 0);
    _browser.line(1)->showBlock(5);
    std::ostringstream out;
    out << _browser;
    EXPECT_EQ(out.str(), " Line info dump for file " + file +
                             "\n    Line 1:   offset=0 blocks=0 hits=-1 tabs=0 len=0"
                             "\n    Line 2:   offset=2 blocks=1 hits=5 tabs=1 len=0"
                             "\n    Line 3:   offset=5 blocks=0 hits=-1 tabs=0 len=0\n");
}

TEST_F(SrcBrowserTest, DumpOfAnUnopenedBrowserHasNoName)
{
    std::ostringstream out;
    out << _browser;
    EXPECT_EQ(out.str(), " Line info dump for file \n");
}

TEST(SrcLineTest, StartsWithoutBlocksAndText)
{
    const SrcLine line;
    EXPECT_EQ(line._nBlocks, 0);
    EXPECT_EQ(line._hits, -1);
    EXPECT_EQ(line._hitMap, nullptr);
    EXPECT_EQ(line._tabs, 0);
    EXPECT_EQ(line._len, 0);
    EXPECT_EQ(line._src, nullptr);
    EXPECT_FALSE(line.untested());
}

TEST(SrcLineTest, SavingATextReplacesTheOneBefore)
{
    SrcLine line;
    line.saveSourceLine(strdup("one"), 3);
    line.saveSourceLine(strdup("three"), 5);
    EXPECT_STREQ(line._src, "three");
    EXPECT_EQ(line._len, 5);
    line.saveSourceLine(line._src, 4);
    EXPECT_STREQ(line._src, "three");
    EXPECT_EQ(line._len, 4);
}

TEST(SrcLineTest, MapOfASingleBlockIsItsOwnCount)
{
    SrcLine line;
    line.showBlocks(new int32_t[2]{3, 0}, 2, 3);
    EXPECT_EQ(line._hitMap[1], 0);
    line.showBlock(9);
    EXPECT_EQ(line._hitMap, &line._hits);
    EXPECT_EQ(line._nBlocks, 1);
    EXPECT_EQ(line._hitMap[0], 9);
}

TEST(SrcLineTest, OnlyNoHitsAtAllAndTheInsideOfAnUnrunBlockAreUntested)
{
    SrcLine line;
    line.showBlock(0);
    EXPECT_TRUE(line.untested());
    line.showBlock(SrcLine::InsideUnrun);
    EXPECT_TRUE(line.untested());
    line.showBlock(1);
    EXPECT_FALSE(line.untested());
}
