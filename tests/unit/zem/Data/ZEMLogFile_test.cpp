#include "zem/Data/ZEMLogFile.h"

#include "qip/Support/qipMessages.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace {

const std::vector<LogSource> sources = {
    {"src/a.c", "p.map", {3, 0}, 17},
    {"src/b.c", "q.map", {1}, 18, 1},
};

class ZEMLogFileTest : public testing::Test
{
protected:
    int load(const RecFileBuilder& builder)
    {
        const int result =
            _file.open(builder.write(_dir.path("t.log")).c_str(), qipVLRecFile::READ, 0);
        return result != 0 ? result : _file.load();
    }

    TempDir _dir;
    ZEMLogFile _file;
};

TEST(ZEMLogHeaderTest, FreshHeader)
{
    const ZEMLogHeader header;
    EXPECT_EQ(header._magic, 0x6703u);
    EXPECT_EQ(header._logMajor, 2u);
    EXPECT_EQ(header._qzlMajor + header._qzlMinor + header._executionTime, 0u);
}

TEST(ZEMLogHeaderTest, ReadsEachFieldFromItsOffset)
{
    MemoryStream stream(
        ByteString().u32(0x6703).u32(3).u32(1).u32(2).u32(0xf0000000).zeros(44).raw("x").bytes());
    ZEMLogHeader header;
    ASSERT_EQ(header.read(stream.get()), 0);
    EXPECT_EQ(header._qzlMajor, 3u);
    EXPECT_EQ(header._qzlMinor, 1u);
    EXPECT_EQ(header._executionTime, 0xf0000000u);
    EXPECT_EQ(ftell(stream.get()), 64);
}

TEST(ZEMLogHeaderTest, RefusesOtherKindsAndVersions)
{
    const auto read = [](const std::string& bytes) {
        MemoryStream stream(bytes);
        return ZEMLogHeader().read(stream.get());
    };
    EXPECT_EQ(read(logHeader(0x6704)), qipVLRecFile::BadMagic);
    EXPECT_EQ(read(logHeader(0x6703, 1)), qipVLRecFile::BadVersion);
    EXPECT_EQ(read(logHeader(0x6703, 3)), qipVLRecFile::BadVersion);
    EXPECT_EQ(ZEMLogHeader().read(nullptr), qipVLRecFile::ShutDown);
    for (size_t length = 0; length < 64; ++length) {
        EXPECT_EQ(read(logHeader().substr(0, length)), qipVLRecFile::FileCorrupt);
    }
}

TEST(ZEMLogHeaderTest, WriteWritesNothing)
{
    const TempDir dir;
    FILE* out = fopen(dir.path("header").c_str(), "wb");
    EXPECT_EQ(ZEMLogHeader().write(out), 0);
    fclose(out);
    EXPECT_EQ(TempDir::read(dir.path("header")), "");
}

TEST(ZEMLogHeaderTest, DumpHasNoEmptyLine)
{
    std::ostringstream out;
    out << ZEMLogHeader() << 255;
    EXPECT_EQ(out.str(), " ZEMLogHeader: \n"
                         "                    magic : 0x6703\n"
                         "         Log File version : 2\n"
                         "          Quenzil version : 0.0\n"
                         "255");
}

TEST_F(ZEMLogFileTest, LoadsResultsInRecordOrder)
{
    ASSERT_EQ(load(logFile(sources)), 2);
    ASSERT_EQ(_file.toc().length(), 2);
    EXPECT_STREQ(_file.toc().first()->_filename, "src/a.c");
    EXPECT_EQ(_file.toc().first()->_hits[0], 3u);
    EXPECT_STREQ(_file.toc().last()->_mapfile, "q.map");
    EXPECT_EQ(_file.toc().last()->_isBoolean, 1u);
}

TEST_F(ZEMLogFileTest, UserHeaderSizeOfTheCallerAndOfTheFileIsIgnored)
{
    logFile(sources).setWord(12, 1).write(_dir.path("t.log"));
    ASSERT_EQ(_file.open(_dir.path("t.log").c_str(), qipVLRecFile::READ, 4711), 0);
    EXPECT_EQ(_file.load(), 2);
}

TEST_F(ZEMLogFileTest, MapFileHasTheWrongMagicNumber)
{
    EXPECT_EQ(load(mapFile({{"src/a.c"}})), qipVLRecFile::BadMagic);
}

TEST_F(ZEMLogFileTest, OtherFormatVersionsAreRefused)
{
    EXPECT_EQ(load(logFile(sources).setWord(64 + 12, 1)), qipVLRecFile::BadVersion);
}

TEST_F(ZEMLogFileTest, TagZeroIsARecordOfResults)
{
    StdErr err;
    EXPECT_EQ(load(logFile(sources).setTag(1, 0)), 2);
    EXPECT_EQ(_file.toc().length(), 2);
    EXPECT_EQ(err.text(), "");
}

TEST_F(ZEMLogFileTest, UnknownTagIsReportedAndSkipped)
{
    StdErr err;
    EXPECT_EQ(load(logFile(sources).setTag(0, 100).setSizes(0, 1, 2)), 2);
    ASSERT_EQ(_file.toc().length(), 1);
    EXPECT_EQ(err.text(), " *** ZEMLogFile::processRecord: unknown tag 100\n");
}

TEST_F(ZEMLogFileTest, ManyUnknownTagsAreAllReportedInFewWrites)
{
    RecFileBuilder builder = logFile({});
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        builder.record(7, "x");
        expected += " *** ZEMLogFile::processRecord: unknown tag 7\n";
    }
    StdErr err;
    const long before = qipMessages::writes();
    EXPECT_EQ(load(builder), 5000);
    EXPECT_EQ(err.text(), expected);
    EXPECT_LE(qipMessages::writes() - before, static_cast<long>(expected.size() / 8192 + 1));
}

TEST_F(ZEMLogFileTest, SizeMismatchIsReportedAndTheRecordKept)
{
    StdErr err;
    EXPECT_EQ(load(logFile(sources).setSizes(0, 5, 9)), 2);
    EXPECT_EQ(_file.toc().length(), 2);
    EXPECT_EQ(err.text(), " *** ZEMLogFile::processRecord: size mismatch: 5 < 9\n");
}

TEST_F(ZEMLogFileTest, SizeMismatchIsReportedBeforeTheRecordIsRead)
{
    StdErr err;
    EXPECT_EQ(load(logFile({sources[0]}).setSizes(0, 5, 9).cutAt(150)), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(err.text(), " *** ZEMLogFile::processRecord: size mismatch: 5 < 9\n");
}

TEST_F(ZEMLogFileTest, CutCountsEndTheLoadAndKeepWhatWasRead)
{
    RecFileBuilder builder = logFile(sources);
    EXPECT_EQ(load(builder.cutAt(builder.size() - 1)), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(_file.toc().length(), 1);
}

TEST_F(ZEMLogFileTest, FileOpenedForWritingGetsNoLogHeader)
{
    const std::string path = _dir.path("t.log");
    ASSERT_EQ(_file.open(path.c_str(), qipVLRecFile::WRITE, 7), 0);
    EXPECT_EQ(_file.close(), 0);
    EXPECT_EQ(TempDir::read(path).size(), 64u);
    EXPECT_EQ(_file.header()._firstOffset, 128u);
}

TEST_F(ZEMLogFileTest, DumpCountsTheRecordsBesideWhatTheHeaderSays)
{
    ASSERT_EQ(load(logFile({sources[0], sources[1]}).setWord(8, 7)), 2);
    std::ostringstream out;
    out << _file;
    EXPECT_NE(out.str().find("\n Number of records : 2\n     Record 1/7\n"), std::string::npos);
    EXPECT_NE(out.str().find("\n     Record 2/7\n"), std::string::npos);
}

TEST_F(ZEMLogFileTest, DumpShowsHeaderAndRecords)
{
    ASSERT_EQ(load(logFile({sources[1]})), 1);
    std::ostringstream out;
    out << _file;
    EXPECT_EQ(out.str(), "\n"
                         " ZEMLogHeader: \n"
                         "                    magic : 0x6703\n"
                         "         Log File version : 2\n"
                         "          Quenzil version : 0.0\n"
                         " Number of records : 1\n"
                         "     Record 1/1\n"
                         "        filename : src/b.c\n"
                         "         mapfile : q.map\n"
                         "\n"
                         "     --------------------------\n");
}

TEST_F(ZEMLogFileTest, KeepsItsRecordsInABufferAndBeyond)
{
    const std::string path = logFile(sources).write(_dir.path("t.log"));
    for (const size_t size : {0, 1, 100, 4096}) {
        const std::unique_ptr<char[]> buffer(size == 0 ? nullptr : new char[size]);
        ZEMLogFile file(buffer.get(), size);
        ASSERT_EQ(file.open(path.c_str(), qipVLRecFile::READ), 0);
        ASSERT_EQ(file.load(), 2);
        const ZEMLogFileRecord& last = *file.toc().last();
        EXPECT_STREQ(last._mapfile, "q.map");
        EXPECT_EQ(last._hits[0], 1u);
        const bool inside = last._mapfile >= buffer.get() && last._mapfile < buffer.get() + size;
        EXPECT_EQ(inside, size == 4096);
    }
}

} // namespace
