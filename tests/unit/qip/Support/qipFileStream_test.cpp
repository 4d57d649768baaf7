#include "qip/Support/qipFileStream.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr long Size = 1000 * 1000; // several buffers

class qipFileStreamTest : public ::testing::Test
{
protected:
    qipFileStreamTest()
    {
        std::string bytes;
        for (long i = 0; i < Size; ++i) {
            bytes += byteAt(i);
        }
        _path = _dir.write("file", bytes);
        EXPECT_TRUE(_stream.openForReading(_path.c_str()));
    }

    static char byteAt(long position) { return static_cast<char>(position % 251); }

    // Seeks from where the last call ended and reads a byte.
    bool isRightAt(long target)
    {
        if (!_stream.seekTo(target, _here)) {
            return false;
        }
        const int byte = std::fgetc(_stream.fp());
        _here = ftell(_stream.fp());
        return byte == static_cast<unsigned char>(byteAt(target)) && _here == target + 1;
    }

    TempDir _dir;
    std::string _path;
    qipFileStream _stream;
    long _here = 0;
};

TEST_F(qipFileStreamTest, IsClosedBeforeAndAfter)
{
    qipFileStream stream;
    EXPECT_EQ(stream.fp(), nullptr);
    EXPECT_TRUE(stream.close());
    EXPECT_EQ(_stream.size(), Size);
    EXPECT_TRUE(_stream.close());
    EXPECT_EQ(_stream.fp(), nullptr);
}

TEST_F(qipFileStreamTest, SeeksForwardFetchNoByteTwice)
{
    for (long target = 3; target < Size; target += 5) {
        ASSERT_TRUE(isRightAt(target)) << target;
    }
    EXPECT_LE(_stream.reads(), Size / (128 * 1024) + 2);
}

TEST_F(qipFileStreamTest, ASeekPastTheBufferFetchesOnce)
{
    ASSERT_TRUE(isRightAt(0));
    ASSERT_TRUE(isRightAt(900 * 1000));
    EXPECT_EQ(_stream.reads(), 2);
}

TEST_F(qipFileStreamTest, AnyOrderOfSeeksReadsTheRightBytes)
{
    long target = 1;
    for (int i = 0; i < 3000; ++i) {
        target = (target * 48271) % (Size - 1);
        ASSERT_TRUE(isRightAt(target)) << target;
    }
}

TEST_F(qipFileStreamTest, ManySeeksBackFetchLess)
{
    for (long target = Size - 1; target > 0; target -= 1000) {
        ASSERT_TRUE(isRightAt(target)) << target;
    }
    EXPECT_LE(_stream.reads(), 2 * Size / 1000);
    EXPECT_TRUE(isRightAt(Size - 1));
}

TEST_F(qipFileStreamTest, ASeekToBeyondTheEndReadsNothing)
{
    ASSERT_TRUE(isRightAt(Size - 1));
    EXPECT_TRUE(_stream.seekTo(Size + 10, _here));
    EXPECT_EQ(std::fgetc(_stream.fp()), EOF);
}

TEST_F(qipFileStreamTest, WritesReplaceTheFile)
{
    ASSERT_TRUE(_stream.openForWriting(_path.c_str()));
    EXPECT_EQ(std::fwrite("new", 3, 1, _stream.fp()), 1u);
    EXPECT_TRUE(_stream.flush());
    EXPECT_EQ(TempDir::read(_path), "new");
    EXPECT_TRUE(_stream.close());
}

TEST_F(qipFileStreamTest, AFileThatIsNotThereLeavesItClosed)
{
    EXPECT_FALSE(_stream.openForReading(_dir.path("none").c_str()));
    EXPECT_EQ(_stream.fp(), nullptr);
    EXPECT_FALSE(_stream.openForWriting(_dir.path("none/below").c_str()));
    EXPECT_EQ(_stream.fp(), nullptr);
}

TEST_F(qipFileStreamTest, AFullDiskFailsTheFlush)
{
    ASSERT_TRUE(_stream.openForWriting("/dev/full"));
    EXPECT_EQ(std::fwrite("new", 3, 1, _stream.fp()), 1u);
    EXPECT_FALSE(_stream.flush());
}

} // namespace
