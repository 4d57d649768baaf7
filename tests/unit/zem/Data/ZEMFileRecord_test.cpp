#include "zem/Data/ZEMFileRecord.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

const MapSource sample = {
    "src/a.c",
    {{"main__Fv", 1, 9, {{1, 4}, {5, 9}}}, {"none__Fv", 10, 11, {}}, {"last", 12, 12, {{12, 12}}}},
    0x80000001};

TEST(ZEMFileRecordTest, FreshFileIsEmpty)
{
    ZEMFileRecord file;
    EXPECT_EQ(file._owner, nullptr);
    EXPECT_EQ(file._filename, nullptr);
    EXPECT_EQ(file._timeModified + file._nBlocks + file._nFuncs, 0u);
    EXPECT_EQ(file._funcList.length(), 0);
}

TEST(ZEMFileRecordTest, ReadsNumbersAndFunctions)
{
    MemoryStream stream(mapPayload(sample) + "next");
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    EXPECT_STREQ(file._filename, "src/a.c");
    EXPECT_EQ(file._timeModified, 0x80000001u);
    EXPECT_EQ(file._nBlocks, 3u);
    EXPECT_EQ(file._nFuncs, 3u);
    ListIterator<ZEMFuncRecord*> funcs(file._funcList);
    for (const MapFunc& expected : sample.funcs) {
        ZEMFuncRecord* func = funcs.next();
        ASSERT_NE(func, nullptr);
        EXPECT_EQ(func->_owner, &file);
        EXPECT_EQ(func->_funcname, expected.name);
        EXPECT_EQ(func->_startLine, expected.startLine);
        EXPECT_EQ(func->_endLine, expected.endLine);
        ASSERT_EQ(func->_nBlocks, expected.blocks.size());
        for (uint32_t i = 0; i < func->_nBlocks; ++i) {
            EXPECT_EQ(func->_blockMap[i]._owner, func);
            EXPECT_EQ(func->_blockMap[i]._startLine, expected.blocks[i].startLine);
            EXPECT_EQ(func->_blockMap[i]._stopLine, expected.blocks[i].stopLine);
            EXPECT_EQ(func->_blockMap[i]._nHits, 0u);
        }
    }
    EXPECT_EQ(funcs.next(), nullptr);
    EXPECT_EQ(ftell(stream.get()), static_cast<long>(mapPayload(sample).size()));
}

// Counting through the functions is walking one array.
TEST(ZEMFileRecordTest, BlocksOfAllFunctionsAreOneArray)
{
    MemoryStream stream(mapPayload(sample));
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    EXPECT_EQ(file._funcList.last()->_blockMap, file._funcList.first()->_blockMap + 2);
}

TEST(ZEMFileRecordTest, FileWithoutFunctionsReadsNameAndThreeWords)
{
    MemoryStream stream(mapPayload({"a.c"}) + "next");
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    EXPECT_EQ(file._funcList.length(), 0);
    EXPECT_EQ(ftell(stream.get()), 2 + 4 + 12);
}

TEST(ZEMFileRecordTest, BlockCountIsTakenAsStored)
{
    MemoryStream stream(ByteString().name("a.c").u32(0).u32(77).u32(0).bytes());
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    EXPECT_EQ(file._nBlocks, 77u);
}

TEST(ZEMFileRecordTest, ReadsAgainInPlaceOfWhatItHeld)
{
    MemoryStream stream(mapPayload(sample) + mapPayload({"b.c", {{"f", 1, 2, {{1, 2}}}}}));
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    ASSERT_EQ(file.read(stream.get()), 0);
    EXPECT_STREQ(file._filename, "b.c");
    ASSERT_EQ(file._funcList.length(), 1);
    EXPECT_STREQ(file._funcList.first()->_funcname, "f");
}

TEST(ZEMFileRecordTest, NullStreamIsShutDown)
{
    ZEMFileRecord file;
    EXPECT_EQ(file.read(nullptr), qipVLRecFile::ShutDown);
}

TEST(ZEMFileRecordTest, CutAtAnyLengthIsCorruptAndStaysWalkable)
{
    const std::string whole = mapPayload(sample);
    for (size_t length = 0; length < whole.size(); ++length) {
        MemoryStream stream(whole.substr(0, length));
        ZEMFileRecord file;
        EXPECT_EQ(file.read(stream.get()), qipVLRecFile::FileCorrupt) << length;
        if (length < 10) {
            EXPECT_EQ(file._filename, nullptr) << "a path cut short is worth nothing";
        } else {
            EXPECT_STREQ(file._filename, "src/a.c");
        }
        ListIterator<ZEMFuncRecord*> funcs(file._funcList);
        while (const ZEMFuncRecord* func = funcs.next()) {
            for (uint32_t i = 0; i < func->_nBlocks; ++i) {
                EXPECT_EQ(func->_blockMap[i]._owner, func);
            }
        }
    }
}

TEST(ZEMFileRecordTest, AFunctionOfWhichNothingCouldBeReadIsNotInTheList)
{
    const MapSource one = {"src/a.c", {sample.funcs[0]}};
    const std::string first = mapPayload(one);
    std::string whole = mapPayload({"src/a.c", {sample.funcs[0], sample.funcs[2]}});
    for (size_t length = first.size(); length < whole.size(); ++length) {
        MemoryStream stream(whole.substr(0, length));
        ZEMFileRecord file;
        EXPECT_EQ(file.read(stream.get()), -9);
        // Its name has a length of two bytes.
        EXPECT_EQ(file._funcList.length(), length < first.size() + 2 ? 1 : 2) << length;
        ASSERT_EQ(file._funcList.first()->_nBlocks, 2u);
        EXPECT_EQ(file._funcList.first()->_blockMap[1]._stopLine, 9);
    }
}

TEST(ZEMFileRecordTest, FunctionCountThatTheFileCannotHoldIsCorrupt)
{
    MemoryStream stream(ByteString()
                            .name("a.c")
                            .u32(0)
                            .u32(0)
                            .u32(0xffffffff)
                            .name("f")
                            .u32(1)
                            .u32(2)
                            .u32(0)
                            .bytes());
    ZEMFileRecord file;
    EXPECT_EQ(file.read(stream.get()), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(file._funcList.length(), 1);
    EXPECT_EQ(file._nFuncs, 0xffffffffu);
}

TEST(ZEMFileRecordTest, DumpShowsEveryFunction)
{
    MemoryStream stream(mapPayload(sample));
    ZEMFileRecord file;
    ASSERT_EQ(file.read(stream.get()), 0);
    std::ostringstream out;
    out << file;
    EXPECT_EQ(out.str(), "        filename : src/a.c\n"
                         "        function : main__Fv\n"
                         "                   lines: 1-9, 2 blocks\n"
                         "                   blocks: [1-4][5-9]\n"
                         "        function : none__Fv\n"
                         "                   lines: 10-11, 0 blocks\n"
                         "                   blocks: \n"
                         "        function : last\n"
                         "                   lines: 12-12, 1 blocks\n"
                         "                   blocks: [12-12]\n");
}

} // namespace
