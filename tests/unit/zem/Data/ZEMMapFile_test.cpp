#include "zem/Data/ZEMMapFile.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipMessages.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

const std::vector<MapSource> sources = {
    {"src/a.c", {{"main__Fv", 1, 9, {{1, 4}, {5, 9}}}}, 17},
    {"src/b.c", {{"f__Fi", 3, 5, {{3, 5}}}, {"g", 7, 8, {}}}, 18},
};

// Takes the records, as a repository would.
class OwnedMapFile : public ZEMMapFile
{
public:
    ~OwnedMapFile() override
    {
        ListIterator<ZEMFileRecord*> files(toc());
        while (const ZEMFileRecord* file = files.next()) {
            delete file;
        }
    }
};

class ZEMMapFileTest : public testing::Test
{
protected:
    int load(const RecFileBuilder& builder)
    {
        const int result =
            _file.open(builder.write(_dir.path("t.map")).c_str(), qipVLRecFile::READ, 0);
        return result != 0 ? result : _file.load();
    }

    TempDir _dir;
    OwnedMapFile _file;
};

TEST(ZEMMapHeaderTest, FreshHeader)
{
    const ZEMMapHeader header;
    EXPECT_EQ(header._magic, 0x6704u);
    EXPECT_EQ(header._mapMajor, 2u);
    EXPECT_EQ(header._qzlMajor + header._qzlMinor, 0u);
}

TEST(ZEMMapHeaderTest, ReadsEachFieldFromItsOffset)
{
    MemoryStream stream(
        ByteString().u32(0x6704).u32(3).u32(1).u32(2).raw(std::string(48, 'p')).raw("x").bytes());
    ZEMMapHeader header;
    ASSERT_EQ(header.read(stream.get()), 0);
    EXPECT_EQ(header._qzlMajor, 3u);
    EXPECT_EQ(header._qzlMinor, 1u);
    EXPECT_EQ(ftell(stream.get()), 64);
}

TEST(ZEMMapHeaderTest, RefusesOtherKindsAndVersions)
{
    const auto read = [](const std::string& bytes) {
        MemoryStream stream(bytes);
        return ZEMMapHeader().read(stream.get());
    };
    EXPECT_EQ(read(mapHeader(0x6703)), qipVLRecFile::BadMagic);
    EXPECT_EQ(read(mapHeader(0x6704, 1)), qipVLRecFile::BadVersion);
    EXPECT_EQ(read(mapHeader(0x6704, 3)), qipVLRecFile::BadVersion);
    EXPECT_EQ(read(mapHeader(0x6703, 3)), qipVLRecFile::BadMagic)
        << "the magic number is looked at first";
    EXPECT_EQ(ZEMMapHeader().read(nullptr), qipVLRecFile::ShutDown);
    for (size_t length = 0; length < 64; ++length) {
        EXPECT_EQ(read(mapHeader().substr(0, length)), qipVLRecFile::FileCorrupt);
    }
}

TEST(ZEMMapHeaderTest, WriteWritesNothing)
{
    const TempDir dir;
    FILE* out = fopen(dir.path("header").c_str(), "wb");
    EXPECT_EQ(ZEMMapHeader().write(out), 0);
    fclose(out);
    EXPECT_EQ(TempDir::read(dir.path("header")), "");
    EXPECT_EQ(ZEMMapHeader().write(nullptr), 0);
}

TEST(ZEMMapHeaderTest, DumpEndsInAnEmptyLine)
{
    ZEMMapHeader header;
    header._qzlMajor = 3;
    header._qzlMinor = 1;
    std::ostringstream out;
    out << header << 255;
    EXPECT_EQ(out.str(), " ZEMMapHeader: \n"
                         "                    magic : 0x6704\n"
                         "         Map File version : 2\n"
                         "          Quenzil version : 3.1\n"
                         "\n"
                         "255");
}

TEST_F(ZEMMapFileTest, LoadsSourceFilesInRecordOrder)
{
    ASSERT_EQ(load(mapFile(sources)), 2);
    ASSERT_EQ(_file.toc().length(), 2);
    EXPECT_STREQ(_file.toc().first()->_filename, "src/a.c");
    EXPECT_STREQ(_file.toc().last()->_filename, "src/b.c");
    EXPECT_EQ(_file.toc().last()->_funcList.length(), 2);
}

TEST_F(ZEMMapFileTest, RecordsOutliveTheFile)
{
    mapFile(sources).write(_dir.path("t.map"));
    ZEMFileRecord* first = nullptr;
    ZEMFileRecord* last = nullptr;
    {
        ZEMMapFile file;
        ASSERT_EQ(file.open(_dir.path("t.map").c_str(), qipVLRecFile::READ), 0);
        ASSERT_EQ(file.load(), 2);
        first = file.toc().first();
        last = file.toc().last();
    }
    EXPECT_STREQ(first->_filename, "src/a.c");
    delete first;
    delete last;
}

TEST_F(ZEMMapFileTest, UserHeaderSizeOfTheCallerAndOfTheFileIsIgnored)
{
    mapFile(sources).setWord(12, 5000).write(_dir.path("t.map"));
    ASSERT_EQ(_file.open(_dir.path("t.map").c_str(), qipVLRecFile::READ, 4711), 0);
    EXPECT_EQ(_file.load(), 2);
}

// The class reads only: a file that it creates has room for the user header and no header in it.
TEST_F(ZEMMapFileTest, FileOpenedForWritingGetsNoMapHeader)
{
    const std::string path = _dir.path("t.map");
    ASSERT_EQ(_file.open(path.c_str(), qipVLRecFile::WRITE, 7), 0);
    EXPECT_EQ(_file.close(), 0);
    EXPECT_EQ(TempDir::read(path).size(), 64u);
    EXPECT_EQ(_file.header()._userHeaderSz, 64u);
    EXPECT_EQ(_file.header()._firstOffset, 128u);
}

TEST_F(ZEMMapFileTest, LogFileHasTheWrongMagicNumber)
{
    EXPECT_EQ(load(logFile({{"src/a.c", "t.map", {1}}})), qipVLRecFile::BadMagic);
}

TEST_F(ZEMMapFileTest, OtherFormatVersionsAreRefused)
{
    EXPECT_EQ(load(mapFile(sources).setWord(64 + 12, 1)), qipVLRecFile::BadVersion);
    EXPECT_EQ(load(mapFile(sources).setWord(64 + 12, 3)), qipVLRecFile::BadVersion);
}

TEST_F(ZEMMapFileTest, CutMapHeaderIsCorrupt)
{
    EXPECT_EQ(load(mapFile(sources).cutAt(127)), qipVLRecFile::FileCorrupt);
}

TEST_F(ZEMMapFileTest, TagZeroIsASourceFile)
{
    StdErr err;
    EXPECT_EQ(load(mapFile(sources).setTag(0, 0)), 2);
    EXPECT_EQ(_file.toc().length(), 2);
    EXPECT_EQ(err.text(), "");
}

TEST_F(ZEMMapFileTest, UnknownTagIsReportedAndSkipped)
{
    StdErr err;
    EXPECT_EQ(load(mapFile(sources).setTag(0, 101)), 2);
    ASSERT_EQ(_file.toc().length(), 1);
    EXPECT_STREQ(_file.toc().first()->_filename, "src/b.c");
    EXPECT_EQ(err.text(), " *** ZEMMapFile::processRecord: unknown tag 101\n");
}

TEST_F(ZEMMapFileTest, ManyUnknownTagsAreAllReportedInFewWrites)
{
    RecFileBuilder builder = mapFile({});
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        builder.record(7, "x");
        expected += " *** ZEMMapFile::processRecord: unknown tag 7\n";
    }
    StdErr err;
    const long before = qipMessages::writes();
    EXPECT_EQ(load(builder), 5000);
    EXPECT_EQ(err.text(), expected);
    EXPECT_LE(qipMessages::writes() - before, static_cast<long>(expected.size() / 8192 + 1));
}

TEST_F(ZEMMapFileTest, SizeMismatchIsReportedAndTheRecordKept)
{
    StdErr err;
    EXPECT_EQ(load(mapFile(sources).setSizes(0, 5, 9)), 2);
    EXPECT_EQ(_file.toc().length(), 2);
    EXPECT_EQ(err.text(), " *** ZEMMapFile::processRecord: size mismatch(5<9)\n"
                          "     while processing: " +
                              _dir.path("t.map") + ":src/a.c\n");
}

TEST_F(ZEMMapFileTest, SizeMismatchOfARecordThatFailsIsNotReported)
{
    StdErr err;
    EXPECT_EQ(load(mapFile({sources[0]}).setSizes(0, 5, 9).cutAt(150)), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(err.text(), "");
}

TEST_F(ZEMMapFileTest, PayloadIsReadByItsOwnStructure)
{
    StdErr err;
    EXPECT_EQ(load(mapFile(sources).setSizes(0, 0, 0).setSizes(1, 4000000000u, 1)), 2);
    EXPECT_EQ(err.text(), "");
    EXPECT_EQ(_file.toc().last()->_funcList.length(), 2);
}

TEST_F(ZEMMapFileTest, RecordThatCannotBeParsedEndsTheLoad)
{
    RecFileBuilder builder = mapFile(sources);
    EXPECT_EQ(load(builder.cutAt(builder.size() - 1)), qipVLRecFile::FileCorrupt);
    ASSERT_EQ(_file.toc().length(), 1) << "what was read before stays";
    EXPECT_STREQ(_file.toc().first()->_filename, "src/a.c");
}

TEST_F(ZEMMapFileTest, DumpCountsTheRecordsBesideWhatTheHeaderSays)
{
    ASSERT_EQ(load(mapFile({sources[0], sources[1]}).setWord(8, 7)), 2);
    std::ostringstream out;
    out << _file;
    EXPECT_NE(out.str().find("\n Number of records : 2\n     Record 1/7\n"), std::string::npos);
    EXPECT_NE(out.str().find("\n     Record 2/7\n"), std::string::npos);
}

TEST_F(ZEMMapFileTest, DumpShowsHeaderAndRecords)
{
    ASSERT_EQ(load(mapFile({sources[0]}).setWord(64 + 4, 3).setWord(64 + 8, 1)), 1);
    std::ostringstream out;
    out << _file;
    EXPECT_EQ(out.str(), "\n"
                         " ZEMMapHeader: \n"
                         "                    magic : 0x6704\n"
                         "         Map File version : 2\n"
                         "          Quenzil version : 3.1\n"
                         "\n"
                         " Number of records : 1\n"
                         "     Record 1/1\n"
                         "        filename : src/a.c\n"
                         "        function : main__Fv\n"
                         "                   lines: 1-9, 2 blocks\n"
                         "                   blocks: [1-4][5-9]\n"
                         "\n"
                         "     --------------------------\n");
}

} // namespace
