// SPDX-License-Identifier: MIT
#include "zem/Lines/FileBrowser.h"

#include "tests/support/TempDir.h"
#include "zem/Lines/FileLine.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

class FileBrowserTest : public testing::Test
{
protected:
    TempDir _files;

    FileBrowser _browser;
};

TEST_F(FileBrowserTest, ReadsLinesWithTabsExpanded)
{
    ASSERT_EQ(_browser.open(_files.write("t.hlp", "a\tb\n12345678\tx\nlast").c_str()), 0);
    EXPECT_EQ(_browser.nLines(), 3);
    int len = 0;
    EXPECT_STREQ(_browser.getLine(0, len), "a       b");
    EXPECT_EQ(len, 9);
    EXPECT_STREQ(_browser.getLine(1, len), "12345678        x");
    EXPECT_STREQ(_browser.getLine(2, len), "last");
    EXPECT_EQ(_browser.getLine(3, len), nullptr);
    EXPECT_EQ(len, 0);
}

TEST_F(FileBrowserTest, TextIsReadOnFirstUse)
{
    ASSERT_EQ(_browser.open(_files.write("t.hlp", "one\ntwo\n").c_str()), 0);
    EXPECT_EQ(_browser.line(1)->_src, nullptr);
    int len = 0;
    (void)_browser.getLine(1, len);
    EXPECT_STREQ(_browser.line(1)->_src, "two");
    EXPECT_EQ(_browser.line(0)->_src, nullptr);
    EXPECT_EQ(_browser.line(3), nullptr);
    EXPECT_EQ(_browser.line(-1), nullptr);
}

TEST_F(FileBrowserTest, SearchFindsTheFirstLineThatContainsTheText)
{
    ASSERT_EQ(_browser.open(_files.write("t.hlp", "alpha\nbeta gamma\ngamma\n").c_str()), 0);
    EXPECT_EQ(_browser.search("gamma"), 1);
    EXPECT_EQ(_browser.search("alpha"), 0);
    EXPECT_EQ(_browser.search("Gamma"), -1);
    EXPECT_EQ(_browser.search(""), -1);
    EXPECT_EQ(_browser.search(nullptr), -1);
}

TEST_F(FileBrowserTest, SearchInAnUnopenedBrowserFindsNothing)
{
    EXPECT_EQ(_browser.search("x"), -1);
}

TEST_F(FileBrowserTest, ClearForgetsFileLinesAndName)
{
    ASSERT_EQ(_browser.open(_files.write("t.hlp", "one\n").c_str()), 0);
    _browser.clear();
    EXPECT_EQ(_browser.filename(), nullptr);
    EXPECT_EQ(_browser.nLines(), 0);
    EXPECT_EQ(_browser.maxLineSz(), 0);
    EXPECT_EQ(_browser.line(0), nullptr);
    int len = 1;
    EXPECT_EQ(_browser.getLine(0, len), nullptr);
}

TEST_F(FileBrowserTest, DumpNamesTheFileAndTheOffsets)
{
    const std::string file = _files.write("t.hlp", "one\ntwo");
    ASSERT_EQ(_browser.open(file.c_str()), 0);
    std::ostringstream out;
    out << _browser;
    EXPECT_EQ(out.str(), " Line info dump for file " + file +
                             "\n    Line 1:   offset=0\n    Line 2:   offset=4\n");
}

TEST(FileLineTest, SavingATextReplacesTheOneBefore)
{
    FileLine line;
    EXPECT_EQ(line._src, nullptr);
    line.saveFileLine(strdup("one"), 3);
    line.saveFileLine(strdup("three"), 5);
    EXPECT_STREQ(line._src, "three");
    EXPECT_EQ(line._len, 5);
}
