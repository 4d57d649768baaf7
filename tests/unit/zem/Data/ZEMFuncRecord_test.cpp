#include "zem/Data/ZEMFuncRecord.h"

#include "qip/Support/qipVLRecFile.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/RecFileBuilder.h"
#include "zem/Data/ZEMFileRecord.h"

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

namespace {

std::string entry()
{
    return ByteString()
        .name("main__Fv")
        .u32(70000)
        .u32(80000)
        .u32(3)
        .u16(1)
        .u16(2)
        .u16(65535)
        .u16(0)
        .u16(7)
        .u16(9)
        .bytes();
}

TEST(ZEMRecordTest, KnowsItsOwnerAndCannotBeCopied)
{
    ZEMRecord file;
    ZEMRecord func(&file);
    EXPECT_EQ(file._owner, nullptr);
    EXPECT_EQ(func._owner, &file);
    EXPECT_FALSE(std::is_copy_constructible<ZEMRecord>::value);
    EXPECT_FALSE(std::is_copy_assignable<ZEMRecord>::value);
}

TEST(ZEMBlkRecordTest, FreshBlockIsZero)
{
    ZEMFileRecord file;
    ZEMFuncRecord func(&file);
    const ZEMBlkRecord block(&func);
    EXPECT_EQ(block._owner, &func);
    EXPECT_EQ(block._startLine, 0);
    EXPECT_EQ(block._stopLine, 0);
    EXPECT_EQ(block._nHits, 0u);
    EXPECT_EQ(ZEMBlkRecord()._owner, nullptr);
}

TEST(ZEMBlkRecordTest, IsSmallAndHasNoVirtualFunctions)
{
    EXPECT_EQ(sizeof(ZEMBlkRecord), sizeof(void*) + 8);
    EXPECT_FALSE(std::is_polymorphic<ZEMBlkRecord>::value);
}

TEST(ZEMFuncRecordTest, FreshFunctionIsEmpty)
{
    ZEMFileRecord file;
    const ZEMFuncRecord func(&file);
    EXPECT_EQ(func._owner, &file);
    EXPECT_EQ(func._funcname, nullptr);
    EXPECT_EQ(func._startLine + func._endLine + func._nBlocks, 0u);
    EXPECT_EQ(func._blockMap, nullptr);
}

TEST(ZEMFuncRecordTest, ReadsNameLinesAndBlocks)
{
    MemoryStream stream(entry() + "next");
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_STREQ(func._funcname, "main__Fv");
    EXPECT_EQ(func._startLine, 70000u) << "a function's lines have 32 bits";
    EXPECT_EQ(func._endLine, 80000u);
    ASSERT_EQ(func._nBlocks, 3u);
    EXPECT_EQ(func._blockMap[0]._startLine, 1);
    EXPECT_EQ(func._blockMap[0]._stopLine, 2);
    EXPECT_EQ(func._blockMap[1]._startLine, 65535);
    EXPECT_EQ(func._blockMap[1]._stopLine, 0);
    EXPECT_EQ(func._blockMap[2]._startLine, 7);
    for (uint32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(func._blockMap[i]._owner, &func);
        EXPECT_EQ(func._blockMap[i]._nHits, 0u);
    }
    EXPECT_EQ(ftell(stream.get()), static_cast<long>(entry().size()));
}

TEST(ZEMFuncRecordTest, FunctionWithoutBlocksReadsNoBlockWords)
{
    MemoryStream stream(ByteString().name("f").u32(1).u32(2).u32(0).raw("next").bytes());
    ZEMFuncRecord func(nullptr);
    EXPECT_EQ(func.read(stream.get()), 0);
    EXPECT_EQ(func._nBlocks, 0u);
    EXPECT_EQ(func._blockMap, nullptr);
    EXPECT_EQ(ftell(stream.get()), 2 + 2 + 12);
}

TEST(ZEMFuncRecordTest, ReadsAgainInPlaceOfWhatItHeld)
{
    MemoryStream stream(entry() + ByteString().name("g").u32(5).u32(6).u32(1).u32(0).bytes());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_STREQ(func._funcname, "g");
    EXPECT_EQ(func._nBlocks, 1u);
}

TEST(ZEMFuncRecordTest, NullStreamIsShutDown)
{
    ZEMFuncRecord func(nullptr);
    EXPECT_EQ(func.read(nullptr), qipVLRecFile::ShutDown);
}

TEST(ZEMFuncRecordTest, CutAtAnyLengthIsCorruptAndKeepsWhatWasRead)
{
    const std::string whole = entry();
    for (size_t length = 0; length < whole.size(); ++length) {
        MemoryStream stream(whole.substr(0, length));
        ZEMFuncRecord func(nullptr);
        EXPECT_EQ(func.read(stream.get()), qipVLRecFile::FileCorrupt) << length;
        if (length >= 11) {
            EXPECT_STREQ(func._funcname, "main__Fv") << length;
        } else if (length >= 2) {
            EXPECT_EQ(func._funcname, whole.substr(2, length - 2)) << length;
        }
        EXPECT_EQ(func._startLine, length < 15 ? 0 : 70000u) << length;
        EXPECT_EQ(func._endLine, length < 19 ? 0 : 80000u) << length;
        const uint32_t blocks = length < 23 ? 0 : static_cast<uint32_t>(length - 23) / 4;
        EXPECT_EQ(func._nBlocks, blocks) << length;
        for (uint32_t i = 0; i < func._nBlocks; ++i) {
            EXPECT_EQ(func._blockMap[i]._owner, &func);
        }
    }
}

TEST(ZEMFuncRecordTest, CountThatTheFileCannotHoldIsCorrupt)
{
    for (const uint32_t count : {3u, 0x10000u, 0x7fffffffu, 0xffffffffu}) {
        MemoryStream stream(
            ByteString().name("f").u32(1).u32(2).u32(count).u32(0x10002).u32(0x30004).bytes());
        ZEMFuncRecord func(nullptr);
        EXPECT_EQ(func.read(stream.get()), qipVLRecFile::FileCorrupt);
        ASSERT_EQ(func._nBlocks, 2u);
        EXPECT_EQ(func._blockMap[1]._stopLine, 4);
    }
}

TEST(ZEMFuncRecordTest, NameWithoutATerminatorIsText)
{
    MemoryStream stream(ByteString().u16(3).raw("abc").u32(1).u32(2).u32(0).bytes());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_STREQ(func._funcname, "abc");
}

TEST(ZEMFuncRecordTest, EmptyAndEarlyEndingNamesAreText)
{
    MemoryStream stream(ByteString()
                            .u16(0)
                            .u32(1)
                            .u32(2)
                            .u32(0)
                            .u16(5)
                            .raw(std::string("ab\0cd", 5))
                            .u32(3)
                            .u32(4)
                            .u32(0)
                            .bytes());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_STREQ(func._funcname, "");
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_STREQ(func._funcname, "ab");
    EXPECT_EQ(func._startLine, 3u);
}

TEST(ZEMFuncRecordTest, NameMayHaveTheLargestLength)
{
    const std::string name(65535, 'n');
    MemoryStream stream(ByteString().u16(65535).raw(name).u32(1).u32(2).u32(0).bytes());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    EXPECT_EQ(func._funcname, name);
}

TEST(ZEMFuncRecordTest, ManyBlocksAreReadInPieces)
{
    constexpr uint32_t N = 200001;
    ByteString bytes;
    bytes.name("f").u32(1).u32(2).u32(N);
    for (uint32_t i = 0; i < N; ++i) {
        bytes.u16(i & 0xffff).u16(i >> 16);
    }
    MemoryStream stream(bytes.bytes());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    ASSERT_EQ(func._nBlocks, N);
    for (uint32_t i = 0; i < N; ++i) {
        ASSERT_EQ(func._blockMap[i]._startLine, i & 0xffff);
        ASSERT_EQ(func._blockMap[i]._stopLine, i >> 16);
    }
}

TEST(ZEMFuncRecordTest, DumpShowsLinesAndBlocks)
{
    MemoryStream stream(entry());
    ZEMFuncRecord func(nullptr);
    ASSERT_EQ(func.read(stream.get()), 0);
    std::ostringstream out;
    out << func;
    EXPECT_EQ(out.str(), "        function : main__Fv\n"
                         "                   lines: 70000-80000, 3 blocks\n"
                         "                   blocks: [1-2][65535-0][7-9]");
}

TEST(ZEMFuncRecordTest, FreshFunctionCanBeDumped)
{
    ZEMFuncRecord func(nullptr);
    std::ostringstream out;
    out << func;
    EXPECT_EQ(out.str(), "        function : \n"
                         "                   lines: 0-0, 0 blocks\n"
                         "                   blocks: ");
}

} // namespace
