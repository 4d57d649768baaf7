#include "qip/Support/qipVLHeader.h"

#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVLRecord.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/RecFileBuilder.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string headerBytes()
{
    ByteString bytes;
    bytes.u32(0x6710).u32(0x01020304).u32(5).u32(64).u32(128).u32(0x80000001).u32(1);
    return bytes.raw(std::string(36, 'p')).bytes();
}

TEST(qipVLHeaderTest, FreshHeaderHasMagicVersionAndUserHeaderSize)
{
    const qipVLHeader header(48);
    EXPECT_EQ(header._magic, 0x6710u);
    EXPECT_EQ(header._version, 1u);
    EXPECT_EQ(header._userHeaderSz, 48u);
    EXPECT_EQ(header._nTotal + header._nRecords + header._firstOffset + header._lastOffset, 0u);
    for (const unsigned char pad : header._pad) {
        EXPECT_EQ(pad, 0);
    }
}

TEST(qipVLHeaderTest, ReadsEachFieldFromItsOffset)
{
    MemoryStream stream(headerBytes() + "next");
    qipVLHeader header;
    ASSERT_EQ(header.read(stream.get()), 0);
    EXPECT_EQ(header._magic, 0x6710u);
    EXPECT_EQ(header._nTotal, 0x01020304u);
    EXPECT_EQ(header._nRecords, 5u);
    EXPECT_EQ(header._userHeaderSz, 64u);
    EXPECT_EQ(header._firstOffset, 128u);
    EXPECT_EQ(header._lastOffset, 0x80000001u);
    EXPECT_EQ(header._version, 1u);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(header._pad), 36), std::string(36, 'p'));
    EXPECT_EQ(ftell(stream.get()), 64);
}

TEST(qipVLHeaderTest, WritesTheBytesThatItReads)
{
    MemoryStream in(headerBytes());
    qipVLHeader header;
    ASSERT_EQ(header.read(in.get()), 0);
    const TempDir dir;
    FILE* out = fopen(dir.path("header").c_str(), "wb");
    EXPECT_EQ(header.write(out), 0);
    fclose(out);
    EXPECT_EQ(TempDir::read(dir.path("header")), headerBytes());
}

TEST(qipVLHeaderTest, CutAtAnyLengthIsCorrupt)
{
    for (size_t length = 0; length < 64; ++length) {
        MemoryStream stream(headerBytes().substr(0, length));
        qipVLHeader header;
        EXPECT_EQ(header.read(stream.get()), qipVLRecFile::FileCorrupt) << length;
        EXPECT_EQ(header._nRecords, 0u);
    }
}

TEST(qipVLHeaderTest, NullStreamHasOneCodeForReadingAndOneForWriting)
{
    qipVLHeader header;
    EXPECT_EQ(header.read(nullptr), qipVLRecFile::OpenFailed);
    EXPECT_EQ(header.write(nullptr), qipVLRecFile::ShutDown);
}

TEST(qipVLHeaderTest, ShortWriteIsNotDetected)
{
    FILE* full = fopen("/dev/full", "wb");
    ASSERT_NE(full, nullptr);
    setvbuf(full, nullptr, _IONBF, 0);
    qipVLHeader header;
    EXPECT_EQ(header.write(full), 0);
    fclose(full);
}

TEST(qipVLHeaderTest, DumpLabelsEachField)
{
    MemoryStream stream(headerBytes());
    qipVLHeader header;
    ASSERT_EQ(header.read(stream.get()), 0);
    std::ostringstream out;
    out << header << 255;
    EXPECT_EQ(out.str(), " qipVLHeader: \n"
                         "                    magic : 0x6710\n"
                         "                   nTotal : 16909060\n"
                         "        number of records : 5\n"
                         "         user header size : 64\n"
                         "             first offset : 128\n"
                         "              last offset : 2147483649\n"
                         "                  version : 1\n"
                         "255")
        << "the stream counts in decimals again";
}

TEST(qipVLRecordTest, FreshRecordIsZero)
{
    const qipVLRecord record;
    EXPECT_EQ(record._nextRec + record._size + record._realSize + record._tag, 0u);
    EXPECT_EQ(record._data, nullptr);
}

TEST(qipVLRecordTest, ReadsEachFieldFromItsOffset)
{
    MemoryStream stream(ByteString().u32(0x80000000).u32(2).u32(3).u32(100).raw("x").bytes());
    qipVLRecord record;
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_EQ(record._nextRec, 0x80000000u);
    EXPECT_EQ(record._size, 2u);
    EXPECT_EQ(record._realSize, 3u);
    EXPECT_EQ(record._tag, 100u);
    EXPECT_EQ(ftell(stream.get()), 16);
}

TEST(qipVLRecordTest, CutShortAndNullStreamAreOpenFailed)
{
    for (size_t length = 0; length < 16; ++length) {
        MemoryStream stream(std::string(length, 'x'));
        qipVLRecord record;
        EXPECT_EQ(record.read(stream.get()), qipVLRecFile::OpenFailed) << length;
    }
    qipVLRecord record;
    EXPECT_EQ(record.read(nullptr), qipVLRecFile::OpenFailed);
}

TEST(qipVLRecordTest, DumpLabelsEachField)
{
    qipVLRecord record;
    record._nextRec = 4000000000u;
    record._size = 2;
    record._realSize = 3;
    record._tag = 100;
    std::ostringstream out;
    out << record;
    EXPECT_EQ(out.str(), "                    tag : 100\n"
                         "                   size : 2\n"
                         "              real size : 3\n"
                         "         next record at : 4000000000\n");
}

} // namespace
