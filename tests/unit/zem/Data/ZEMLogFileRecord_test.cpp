#include "zem/Data/ZEMLogFileRecord.h"

#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

namespace {

const LogSource sample = {"src/a.c", "out/p.map", {1, 0, 0xfffffffe}, 0x90000000, 1};

TEST(ZEMLogFileRecordTest, FreshRecordIsEmpty)
{
    const ZEMLogFileRecord record;
    EXPECT_EQ(record._filename, nullptr);
    EXPECT_EQ(record._mapfile, nullptr);
    EXPECT_EQ(record._timeModified + record._isBoolean + record._nBlocks, 0u);
    EXPECT_EQ(record._hits, nullptr);
    EXPECT_TRUE(std::has_virtual_destructor<ZEMLogFileRecord>::value);
}

TEST(ZEMLogFileRecordTest, ReadsPathsNumbersAndCounts)
{
    MemoryStream stream(logPayload(sample) + "next");
    ZEMLogFileRecord record;
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_STREQ(record._filename, "src/a.c");
    EXPECT_STREQ(record._mapfile, "out/p.map");
    EXPECT_EQ(record._timeModified, 0x90000000u);
    EXPECT_EQ(record._isBoolean, 1u);
    ASSERT_EQ(record._nBlocks, 3u);
    EXPECT_EQ(record._hits[0], 1u);
    EXPECT_EQ(record._hits[1], 0u);
    EXPECT_EQ(record._hits[2], 0xfffffffeu);
    EXPECT_EQ(ftell(stream.get()), static_cast<long>(logPayload(sample).size()));
}

TEST(ZEMLogFileRecordTest, RecordWithoutBlocksReadsNoCounts)
{
    MemoryStream stream(logPayload({"a.c", "p.map"}) + "next");
    ZEMLogFileRecord record;
    EXPECT_EQ(record.read(stream.get()), 0);
    EXPECT_EQ(record._nBlocks, 0u);
    EXPECT_EQ(ftell(stream.get()), 6 + 8 + 12);
}

TEST(ZEMLogFileRecordTest, ReadsAgainInPlaceOfWhatItHeld)
{
    MemoryStream stream(logPayload(sample) + logPayload({"b.c", "q.map", {7}}));
    ZEMLogFileRecord record;
    ASSERT_EQ(record.read(stream.get()), 0);
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_STREQ(record._mapfile, "q.map");
    ASSERT_EQ(record._nBlocks, 1u);
    EXPECT_EQ(record._hits[0], 7u);
}

TEST(ZEMLogFileRecordTest, NullStreamIsShutDown)
{
    ZEMLogFileRecord record;
    EXPECT_EQ(record.read(nullptr), -10);
}

TEST(ZEMLogFileRecordTest, CutAtAnyLengthIsCorrupt)
{
    const std::string whole = logPayload(sample);
    for (size_t length = 0; length < whole.size(); ++length) {
        MemoryStream stream(whole.substr(0, length));
        ZEMLogFileRecord record;
        EXPECT_EQ(record.read(stream.get()), -9) << length;
        EXPECT_EQ(record._filename == nullptr, length < 10) << length;
        EXPECT_EQ(record._mapfile == nullptr, length < 10 + 12) << length;
        EXPECT_EQ(record._nBlocks, length < 34 ? 0 : (length - 34) / 4) << length;
    }
}

TEST(ZEMLogFileRecordTest, CountThatTheFileCannotHoldIsCorrupt)
{
    for (const uint32_t count : {3u, 0x10000u, 0x7fffffffu, 0xffffffffu}) {
        MemoryStream stream(
            ByteString().name("a").name("b").u32(0).u32(0).u32(count).u32(4).u32(5).bytes());
        ZEMLogFileRecord record;
        EXPECT_EQ(record.read(stream.get()), -9);
        ASSERT_EQ(record._nBlocks, 2u);
        EXPECT_EQ(record._hits[1], 5u);
    }
}

TEST(ZEMLogFileRecordTest, PathsWithoutATerminatorAreText)
{
    MemoryStream stream(ByteString().u16(3).raw("a.c").u16(0).u32(1).u32(0).u32(0).bytes());
    ZEMLogFileRecord record;
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_STREQ(record._filename, "a.c");
    EXPECT_STREQ(record._mapfile, "");
}

TEST(ZEMLogFileRecordTest, DumpShowsBothPaths)
{
    MemoryStream stream(logPayload(sample));
    ZEMLogFileRecord record;
    ASSERT_EQ(record.read(stream.get()), 0);
    std::ostringstream out;
    out << record;
    EXPECT_EQ(out.str(), "        filename : src/a.c\n"
                         "         mapfile : out/p.map\n");
}

} // namespace
