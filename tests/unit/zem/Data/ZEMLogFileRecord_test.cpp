#include "zem/Data/ZEMLogFileRecord.h"

#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

#include <memory_resource>
#include <new>
#include <sstream>
#include <type_traits>

namespace {

class ZEMLogFileRecordTest : public testing::Test
{
protected:
    std::pmr::monotonic_buffer_resource memory;
};

const LogSource sample = {"src/a.c", "out/p.map", {1, 0, 0xfffffffe}, 0x90000000, 1};

TEST_F(ZEMLogFileRecordTest, FreshRecordIsEmpty)
{
    const ZEMLogFileRecord record(memory);
    EXPECT_EQ(record._filename, nullptr);
    EXPECT_EQ(record._mapfile, nullptr);
    EXPECT_EQ(record._timeModified + record._isBoolean + record._nBlocks, 0u);
    EXPECT_EQ(record._hits, nullptr);
    EXPECT_TRUE(std::has_virtual_destructor<ZEMLogFileRecord>::value);
}

TEST_F(ZEMLogFileRecordTest, ReadsPathsNumbersAndCounts)
{
    MemoryStream stream(logPayload(sample) + "next");
    ZEMLogFileRecord record(memory);
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

TEST_F(ZEMLogFileRecordTest, RecordWithoutBlocksReadsNoCounts)
{
    MemoryStream stream(logPayload({"a.c", "p.map"}) + "next");
    ZEMLogFileRecord record(memory);
    EXPECT_EQ(record.read(stream.get()), 0);
    EXPECT_EQ(record._nBlocks, 0u);
    EXPECT_EQ(ftell(stream.get()), 6 + 8 + 12);
}

TEST_F(ZEMLogFileRecordTest, ReadsAgainInPlaceOfWhatItHeld)
{
    MemoryStream stream(logPayload(sample) + logPayload({"b.c", "q.map", {7}}));
    ZEMLogFileRecord record(memory);
    ASSERT_EQ(record.read(stream.get()), 0);
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_STREQ(record._mapfile, "q.map");
    ASSERT_EQ(record._nBlocks, 1u);
    EXPECT_EQ(record._hits[0], 7u);
}

TEST_F(ZEMLogFileRecordTest, NullStreamIsShutDown)
{
    ZEMLogFileRecord record(memory);
    EXPECT_EQ(record.read(nullptr), qipVLRecFile::ShutDown);
}

TEST_F(ZEMLogFileRecordTest, CutAtAnyLengthIsCorrupt)
{
    const std::string whole = logPayload(sample);
    for (size_t length = 0; length < whole.size(); ++length) {
        MemoryStream stream(whole.substr(0, length));
        ZEMLogFileRecord record(memory);
        EXPECT_EQ(record.read(stream.get()), qipVLRecFile::FileCorrupt) << length;
        EXPECT_EQ(record._filename == nullptr, length < 10) << length;
        EXPECT_EQ(record._mapfile == nullptr, length < 10 + 12) << length;
        EXPECT_EQ(record._nBlocks, length < 34 ? 0 : (length - 34) / 4) << length;
    }
}

TEST_F(ZEMLogFileRecordTest, CountThatTheFileCannotHoldIsCorrupt)
{
    for (const uint32_t count : {3u, 0x10000u, 0x7fffffffu, 0xffffffffu}) {
        MemoryStream stream(
            ByteString().name("a").name("b").u32(0).u32(0).u32(count).u32(4).u32(5).bytes());
        ZEMLogFileRecord record(memory);
        EXPECT_EQ(record.read(stream.get()), qipVLRecFile::FileCorrupt);
        ASSERT_EQ(record._nBlocks, 2u);
        EXPECT_EQ(record._hits[1], 5u);
    }
}

TEST_F(ZEMLogFileRecordTest, ReadsManyCounts)
{
    LogSource many = {"a.c", "p.map"};
    for (uint32_t i = 0; i < 200000; ++i) {
        many.counts.push_back(i * 7);
    }
    const std::string whole = logPayload(many);
    for (const size_t kept : {200000, 199999, 131072, 131071, 65537, 65536, 65535}) {
        MemoryStream stream(whole.substr(0, whole.size() - 4 * (200000 - kept)));
        ZEMLogFileRecord record(memory);
        EXPECT_EQ(record.read(stream.get()), kept == 200000 ? 0 : -9);
        ASSERT_EQ(record._nBlocks, kept);
        for (uint32_t i = 0; i < kept; ++i) {
            ASSERT_EQ(record._hits[i], i * 7) << i << " of " << kept;
        }
    }
}

// Memory that refuses whatever it is asked for.
class NoMemory : public std::pmr::memory_resource
{
    void* do_allocate(size_t, size_t) override { throw std::bad_alloc(); }
    void do_deallocate(void*, size_t, size_t) override {}
    bool do_is_equal(const memory_resource& other) const noexcept override
    {
        return this == &other;
    }
};

TEST_F(ZEMLogFileRecordTest, WithoutMemoryItSaysSo)
{
    NoMemory none;
    MemoryStream stream(logPayload(sample));
    ZEMLogFileRecord record(none);
    EXPECT_EQ(record.read(stream.get()), qipVLRecFile::OutOfMemory);
    EXPECT_EQ(record._filename, nullptr);
}

TEST_F(ZEMLogFileRecordTest, PathsWithoutATerminatorAreText)
{
    MemoryStream stream(ByteString().u16(3).raw("a.c").u16(0).u32(1).u32(0).u32(0).bytes());
    ZEMLogFileRecord record(memory);
    ASSERT_EQ(record.read(stream.get()), 0);
    EXPECT_STREQ(record._filename, "a.c");
    EXPECT_STREQ(record._mapfile, "");
}

TEST_F(ZEMLogFileRecordTest, DumpShowsBothPaths)
{
    MemoryStream stream(logPayload(sample));
    ZEMLogFileRecord record(memory);
    ASSERT_EQ(record.read(stream.get()), 0);
    std::ostringstream out;
    out << record;
    EXPECT_EQ(out.str(), "        filename : src/a.c\n"
                         "         mapfile : out/p.map\n");
}

} // namespace
