// SPDX-License-Identifier: MIT
#include "zem/Lines/LineIndex.h"

#include "tests/support/TempDir.h"
#include "zem/Lines/SrcBrowser.h"
#include "zem/Lines/SrcLine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

// The index as SrcBrowser has it.
class LineIndexTest : public testing::Test
{
protected:
    TempDir _files;

    int open(const std::string& text) { return _index.open(_files.write("file", text).c_str()); }

    std::string line(long n)
    {
        int len = -1;
        const char* text = _index.getLine(n, len);
        return text == nullptr ? std::string("(null)") + std::to_string(len)
                               : std::string(text, static_cast<size_t>(len));
    }

    SrcBrowser _index;
};

TEST_F(LineIndexTest, OpenRefusesNullAndEmptyPaths)
{
    EXPECT_EQ(_index.open(nullptr), -1);
    EXPECT_EQ(_index.open(""), -1);
    EXPECT_EQ(_index.filename(), nullptr);
}

TEST_F(LineIndexTest, OpenRefusesAMissingFileAndKeepsItsName)
{
    const std::string missing = _files.path("missing");
    EXPECT_EQ(_index.open(missing.c_str()), -1);
    EXPECT_EQ(_index.filename(), missing);
    EXPECT_EQ(_index.nLines(), 0);
}

// A program may be started without a standard input.
TEST_F(LineIndexTest, FileMayHaveTheFirstNumber)
{
    ::close(STDIN_FILENO);
    EXPECT_EQ(open("one\ntwo\n"), 0);
    EXPECT_EQ(line(1), "two");
}

TEST_F(LineIndexTest, FailedOpenForgetsTheLinesOfTheFileBefore)
{
    ASSERT_EQ(open("old\n"), 0);
    EXPECT_EQ(_index.open(_files.path("missing").c_str()), -1);
    EXPECT_EQ(_index.nLines(), 0);
    EXPECT_EQ(line(0), "(null)0");
}

TEST_F(LineIndexTest, OpenRefusesADirectory)
{
    EXPECT_EQ(_index.open(_files.path().c_str()), -1);
}

TEST_F(LineIndexTest, OpenRefusesAPipeWithoutWaitingForItsWriter)
{
    ASSERT_EQ(mkfifo(_files.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(_index.open(_files.path("pipe").c_str()), -1);
}

TEST_F(LineIndexTest, OpenRefusesADevice)
{
    EXPECT_EQ(_index.open("/dev/zero"), -1);
}

TEST_F(LineIndexTest, OpenRefusesAFileOfTwoGibibytesWithoutReadingIt)
{
    const std::string large = _files.write("large", "");
    for (const off_t size : {off_t{LineIndex::LargestFile} + 1, off_t{0x7fffffff}}) {
        ASSERT_EQ(truncate(large.c_str(), size), 0);
        EXPECT_EQ(_index.open(large.c_str()), -1);
        EXPECT_TRUE(_index.tooLarge());
        EXPECT_EQ(_index.bytesRead(), 0);
    }
}

TEST_F(LineIndexTest, EachByteIsReadOnceForTheIndexAndOnceForItsLine)
{
    ASSERT_EQ(open("first\nsecond\n"), 0);
    EXPECT_FALSE(_index.tooLarge());
    EXPECT_EQ(_index.bytesRead(), 13);
    line(1);
    line(1);
    EXPECT_EQ(_index.bytesRead(), 13 + 6);
}

TEST_F(LineIndexTest, AFileThatIsReplacedIsClosed)
{
    const auto nOpen = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    ASSERT_EQ(open("first\n"), 0);
    const auto one = nOpen();
    ASSERT_EQ(open("second\n"), 0);
    EXPECT_EQ(nOpen(), one);
}

TEST_F(LineIndexTest, AMissingFileIsNotTooLarge)
{
    const std::string large = _files.write("large", "");
    ASSERT_EQ(truncate(large.c_str(), LineIndex::LargestFile + 1), 0);
    EXPECT_EQ(_index.open(large.c_str()), -1);
    EXPECT_EQ(_index.open(_files.path("missing").c_str()), -1);
    EXPECT_FALSE(_index.tooLarge());
}

TEST_F(LineIndexTest, OpenRefusesMoreLinesThanItIndexes)
{
    EXPECT_EQ(open(std::string(static_cast<size_t>(LineIndex::MostLines), '\n')), -1);
    EXPECT_TRUE(_index.tooLarge());
    EXPECT_EQ(_index.nLines(), 0);
    EXPECT_EQ(line(0), "(null)0");
}

TEST_F(LineIndexTest, ALineThatNobodyAsksForTakesItsStartOnly)
{
    constexpr long Lines = 1000000;
    ASSERT_EQ(open(std::string(static_cast<size_t>(Lines), '\n')), 0);
    EXPECT_LE(_index.indexBytes(), static_cast<size_t>(Lines) * 8 + 64 * 1024);
    const SrcBrowser& looker = _index;
    EXPECT_NE(looker.line(SrcBrowser::LinesWithCoverage - 1), nullptr);
    EXPECT_EQ(looker.line(SrcBrowser::LinesWithCoverage), nullptr);
    EXPECT_EQ(looker.line(Lines), nullptr);
    EXPECT_EQ(line(Lines), "");
    EXPECT_NE(looker.line(Lines), nullptr);
    EXPECT_EQ(looker.line(Lines)->_offset, Lines);
    EXPECT_EQ(looker.line(Lines / 2), nullptr);
}

TEST_F(LineIndexTest, ScanWithoutAFileFails)
{
    EXPECT_EQ(_index.scan(), -1);
}

TEST_F(LineIndexTest, FinalNewlineGivesALastEmptyLine)
{
    ASSERT_EQ(open("a\n"), 0);
    EXPECT_EQ(_index.nLines(), 2);
    EXPECT_EQ(line(0), "a");
    EXPECT_EQ(line(1), "");
}

TEST_F(LineIndexTest, EmptyFileHasOneEmptyLine)
{
    ASSERT_EQ(open(""), 0);
    EXPECT_EQ(_index.nLines(), 1);
    EXPECT_EQ(line(0), "");
    EXPECT_EQ(_index.maxLineSz(), 0);
}

TEST_F(LineIndexTest, LastLineWithoutNewlineIsShown)
{
    ASSERT_EQ(open("first\nlast"), 0);
    EXPECT_EQ(_index.nLines(), 2);
    EXPECT_EQ(line(1), "last");
}

TEST_F(LineIndexTest, LongestLineCountsItsNewlineAndTabsAsOneByte)
{
    ASSERT_EQ(open("ab\n\tcde\nx\n"), 0);
    EXPECT_EQ(_index.maxLineSz(), 5);
}

TEST_F(LineIndexTest, LongestLineLeavesOutALastLineWithoutNewline)
{
    ASSERT_EQ(open("ab\nmuch longer"), 0);
    EXPECT_EQ(_index.maxLineSz(), 3);
}

TEST_F(LineIndexTest, TabsExpandToTheNextMultipleOfEightColumns)
{
    ASSERT_EQ(open("\tx\nabc\ty\n12345678\tz\na\tb\n\t\t!\n"), 0);
    EXPECT_EQ(line(0), "        x");
    EXPECT_EQ(line(1), "abc     y");
    EXPECT_EQ(line(2), "12345678        z");
    EXPECT_EQ(line(3), "a       b");
    EXPECT_EQ(line(4), "                !");
}

TEST_F(LineIndexTest, EveryOtherByteIsCopiedAsItIs)
{
    const std::string odd("a\0b\x80\xff\r\x01", 7);
    ASSERT_EQ(open(odd + "\n"), 0);
    EXPECT_EQ(line(0), odd);
}

TEST_F(LineIndexTest, LinesOutOfRangeAreNullAndEmpty)
{
    ASSERT_EQ(open("a\n"), 0);
    EXPECT_EQ(line(2), "(null)0");
    EXPECT_EQ(line(-1), "(null)0");
}

TEST_F(LineIndexTest, LineThatWasReadStaysTheSameText)
{
    ASSERT_EQ(open("before\nx\n"), 0);
    int len = 0;
    const char* first = _index.getLine(0, len);
    _files.write("file", "afters\nx\n");
    EXPECT_EQ(_index.getLine(0, len), first);
    EXPECT_EQ(line(0), "before");
}

TEST_F(LineIndexTest, LineOfManyMegabytesIsRead)
{
    const std::string huge(20 * 1024 * 1024, 'm');
    ASSERT_EQ(open(huge + "\n" + huge), 0);
    EXPECT_EQ(line(0), huge);
    EXPECT_EQ(line(1), huge);
}

TEST_F(LineIndexTest, LineIsCutAtTheLongestTextThatIsKept)
{
    ASSERT_EQ(open(std::string(static_cast<size_t>(LineIndex::LongestText) / 8 + 1, '\t') + "\n"),
              0);
    int len = 0;
    ASSERT_NE(_index.getLine(0, len), nullptr);
    EXPECT_EQ(len, LineIndex::LongestText);
}

TEST_F(LineIndexTest, ShrunkFileGivesEmptyAndShortLines)
{
    ASSERT_EQ(open("first\nsecond\nthird"), 0);
    ASSERT_EQ(truncate(_files.path("file").c_str(), 9), 0);
    EXPECT_EQ(line(1), "sec");
    EXPECT_EQ(line(2), "");
}

TEST_F(LineIndexTest, LineThatGrewIsCutToTheRoomOfItsIndex)
{
    ASSERT_EQ(open("ab\ncd\n"), 0);
    _files.write("file", "\t\t\tmuch longer than before");
    EXPECT_EQ(line(0), "   ");
}

TEST_F(LineIndexTest, FileThatVanishesIsReadThroughItsOpenStream)
{
    ASSERT_EQ(open("first\nlast"), 0);
    ASSERT_EQ(unlink(_files.path("file").c_str()), 0);
    EXPECT_EQ(line(0), "first");
    EXPECT_EQ(line(1), "last");
}

TEST_F(LineIndexTest, LinesAreNotReadOnceTheFileIsClosed)
{
    ASSERT_EQ(open("read\nnot read\n"), 0);
    EXPECT_EQ(line(0), "read");
    _index.close();
    EXPECT_EQ(line(0), "read");
    EXPECT_EQ(line(1), "(null)0");
    _index.close();
}

TEST_F(LineIndexTest, ReopeningTheNameThatItHoldsReadsTheFileAgain)
{
    ASSERT_EQ(open("old\n"), 0);
    EXPECT_EQ(line(0), "old");
    _files.write("file", "new text\n");
    ASSERT_EQ(_index.open(_index.filename()), 0);
    EXPECT_EQ(line(0), "new text");
    EXPECT_EQ(_index.maxLineSz(), 9);
}

TEST_F(LineIndexTest, ScanStartsAtTheStreamsPosition)
{
    ASSERT_EQ(open("a\nb\n"), 0);
    // The stream stands at its end after a scan.
    ASSERT_EQ(_index.scan(), 0);
    EXPECT_EQ(_index.nLines(), 1);
    EXPECT_EQ(_index.line(0)->_offset, 4);
}
