// Files of both kinds that are wrong in every way that bytes can be wrong: the result is a code or
// a load, and the readers stay within the file and within its size in memory.

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

RecFileBuilder sampleMap()
{
    return mapFile({{"a.c", {{"f__Fv", 1, 9, {{1, 4}, {5, 9}}}, {"g", 2, 3, {}}}},
                    {"b.c", {{"h", 1, 1, {{1, 1}}}}}});
}

RecFileBuilder sampleLog()
{
    return logFile({{"a.c", "p.map", {3, 0}}, {"b.c", "p.map", {1}}});
}

// Touches everything that a reader of the records would. Returns the number of blocks.
uint64_t walk(ZEMMapFile& file)
{
    uint64_t blocks = 0;
    while (ZEMFileRecord* source = file.toc().first()) {
        EXPECT_NE(source->_filename, nullptr);
        ListIterator<ZEMFuncRecord*> funcs(source->_funcList);
        while (const ZEMFuncRecord* func = funcs.next()) {
            EXPECT_NE(func->_funcname, nullptr);
            for (uint32_t i = 0; i < func->_nBlocks; ++i) {
                EXPECT_EQ(func->_blockMap[i]._owner, func);
                ++blocks;
            }
        }
        file.toc().remove(source);
        delete source;
    }
    return blocks;
}

uint64_t walk(ZEMLogFile& file)
{
    uint64_t counts = 0;
    uint64_t sum = 0;
    ListIterator<ZEMLogFileRecord*> records(file.toc());
    while (const ZEMLogFileRecord* record = records.next()) {
        EXPECT_NE(record->_filename, nullptr);
        EXPECT_NE(record->_mapfile, nullptr);
        for (uint32_t i = 0; i < record->_nBlocks; ++i) {
            sum += record->_hits[i];
            ++counts;
        }
    }
    EXPECT_LE(sum, counts * 0xffffffffull);
    return counts;
}

struct Outcome
{
    int result;
    uint64_t entries;
};

Outcome loadMap(const std::string& path)
{
    ZEMMapFile file;
    int result = file.open(path.c_str(), qipVLRecFile::READ);
    if (result == 0) {
        result = file.load();
    }
    return {result, walk(file)};
}

Outcome loadLog(const std::string& path)
{
    ZEMLogFile file;
    int result = file.open(path.c_str(), qipVLRecFile::READ);
    if (result == 0) {
        result = file.load();
    }
    return {result, walk(file)};
}

bool isKnown(int result)
{
    return result >= -11;
}

class HostileFilesTest : public testing::Test
{
protected:
    // Without a name, so that no load waits until the file's times can tell a change.
    HostileFilesTest() : _fd(memfd_create("file", 0)) {}
    ~HostileFilesTest() override { close(_fd); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(_fd); }
    Outcome map(const RecFileBuilder& builder) const { return loadMap(builder.write(path())); }
    Outcome log(const RecFileBuilder& builder) const { return loadLog(builder.write(path())); }

    TempDir _dir;
    int _fd;
};

TEST_F(HostileFilesTest, CutAtEveryLength)
{
    const size_t mapSize = sampleMap().size();
    for (size_t length = 0; length < mapSize; ++length) {
        EXPECT_LT(map(sampleMap().cutAt(length)).result, 0) << length;
    }
    const size_t logSize = sampleLog().size();
    for (size_t length = 0; length < logSize; ++length) {
        EXPECT_LT(log(sampleLog().cutAt(length)).result, 0) << length;
    }
}

TEST_F(HostileFilesTest, EveryByteChanged)
{
    StdErr quiet;
    for (const int change : {0x01, 0x80, 0xff}) {
        RecFileBuilder builder = sampleMap();
        for (size_t i = 0; i < builder.size(); ++i) {
            const auto byte = static_cast<unsigned char>(builder.bytes()[i]);
            builder.setByte(i, static_cast<unsigned char>(byte ^ change));
            const Outcome outcome = map(builder);
            EXPECT_TRUE(isKnown(outcome.result)) << i;
            EXPECT_LE(outcome.entries, 5 * builder.size()) << i;
            builder.setByte(i, byte);
        }
        builder = sampleLog();
        for (size_t i = 0; i < builder.size(); ++i) {
            const auto byte = static_cast<unsigned char>(builder.bytes()[i]);
            builder.setByte(i, static_cast<unsigned char>(byte ^ change));
            const Outcome outcome = log(builder);
            EXPECT_TRUE(isKnown(outcome.result)) << i;
            EXPECT_LE(outcome.entries, 5 * builder.size()) << i;
            builder.setByte(i, byte);
        }
    }
}

// Each record is well formed, together they would make hundreds of times the file.
TEST_F(HostileFilesTest, OverlappingRecordsDoNotUnfold)
{
    RecFileBuilder builder(64);
    builder.userHeader(logHeader());
    constexpr int N = 2000;
    // Each record claims the ones behind it as its counts.
    for (int i = 0; i < N; ++i) {
        builder.record(LogTag, ByteString().name("a").name("p").u32(0).u32(0).u32(9000).bytes());
    }
    builder.append(std::string(9000 * 4, '\1'));
    const Outcome outcome = log(builder);
    EXPECT_EQ(outcome.result, qipVLRecFile::FileCorrupt);
    EXPECT_LE(outcome.entries * 4, 5 * builder.size() + 64 * 1024);
}

struct Case
{
    const char* name;
    int mapResult;
    int logResult;
    RecFileBuilder (*damage)(RecFileBuilder builder);
};

std::ostream& operator<<(std::ostream& out, const Case& row)
{
    return out << row.name;
}

const Case cases[] = {
    {"AsItShouldBe", 2, 2,
     [](RecFileBuilder b) {
         return b;
     }},
    {"ZeroLength", qipVLRecFile::FileCorrupt, qipVLRecFile::FileCorrupt,
     [](RecFileBuilder b) {
         return b.cutAt(0);
     }},
    {"FileHeaderOnly", qipVLRecFile::FileCorrupt, qipVLRecFile::FileCorrupt,
     [](RecFileBuilder b) {
         return b.cutAt(64);
     }},
    {"HeadersOnly", qipVLRecFile::OpenFailed, qipVLRecFile::OpenFailed,
     [](RecFileBuilder b) {
         return b.cutAt(128);
     }},
    {"WrongContainerMagic", 2, 2,
     [](RecFileBuilder b) {
         return b.setWord(0, 0xffffffff);
     }},
    {"WrongContainerVersion", 2, 2,
     [](RecFileBuilder b) {
         return b.setWord(24, 9);
     }},
    {"WrongMagic", qipVLRecFile::BadMagic, qipVLRecFile::BadMagic,
     [](RecFileBuilder b) {
         return b.setWord(64, 0x6710);
     }},
    {"WrongVersion", qipVLRecFile::BadVersion, qipVLRecFile::BadVersion,
     [](RecFileBuilder b) {
         return b.setWord(76, 0x80000002);
     }},
    {"FirstRecordNowhere", qipVLRecFile::OpenFailed, qipVLRecFile::OpenFailed,
     [](RecFileBuilder b) {
         return b.startAt(0xfffffff0);
     }},
    {"FirstRecordInTheHeader", qipVLRecFile::OpenFailed, qipVLRecFile::OpenFailed,
     [](RecFileBuilder b) {
         return b.startAt(64);
     }},
    {"NoRecords", 0, 0,
     [](RecFileBuilder b) {
         return b.startAt(0);
     }},
    {"LinkToItself", qipVLRecFile::FileCorrupt, qipVLRecFile::FileCorrupt,
     [](RecFileBuilder b) {
         return b.linkTo(0, b.offsetOf(0));
     }},
    {"LinkBack", qipVLRecFile::FileCorrupt, qipVLRecFile::FileCorrupt,
     [](RecFileBuilder b) {
         return b.linkTo(1, b.offsetOf(0));
     }},
    {"HugeName", qipVLRecFile::FileCorrupt, qipVLRecFile::FileCorrupt,
     [](RecFileBuilder b) {
         return b.setWord(b.payloadOf(1), 0xffff0000).cutAt(b.size());
     }},
    {"SizesThatLie", 2, 2,
     [](RecFileBuilder b) {
         return b.setSizes(0, 0xffffffff, 0).setSizes(1, 0xffffffff, 0);
     }},
};

class HostileFilesCaseTest : public testing::TestWithParam<Case>
{
protected:
    TempDir _dir;
};

TEST_P(HostileFilesCaseTest, GivesItsCode)
{
    StdErr quiet;
    const std::string path = _dir.path("file");
    EXPECT_EQ(loadMap(GetParam().damage(sampleMap()).write(path)).result, GetParam().mapResult);
    EXPECT_EQ(loadLog(GetParam().damage(sampleLog()).write(path)).result, GetParam().logResult);
}

INSTANTIATE_TEST_SUITE_P(Files, HostileFilesCaseTest, testing::ValuesIn(cases),
                         [](const testing::TestParamInfo<Case>& row) {
                             return std::string(row.param.name);
                         });

TEST_F(HostileFilesTest, HugeCounts)
{
    const RecFileBuilder map0 = sampleMap();
    // "a.c": length 2, name 4, time 4, blocks 4, then the number of functions.
    EXPECT_EQ(map(RecFileBuilder(map0).setWord(map0.payloadOf(0) + 14, 0xffffffff)).result,
              qipVLRecFile::FileCorrupt);
    // The first function: length 2, name 6, lines 8, then the number of blocks.
    EXPECT_EQ(map(RecFileBuilder(map0).setWord(map0.payloadOf(0) + 34, 0xffffffff)).result,
              qipVLRecFile::FileCorrupt);
    const RecFileBuilder log0 = sampleLog();
    // Two names of 6 and 8 bytes, time, flag, then the number of blocks.
    EXPECT_EQ(log(RecFileBuilder(log0).setWord(log0.payloadOf(0) + 22, 0xffffffff)).result,
              qipVLRecFile::FileCorrupt);
}

TEST_F(HostileFilesTest, ThingsThatAreNoFiles)
{
    EXPECT_EQ(loadMap(_dir.path()).result, qipVLRecFile::FileCorrupt);
    EXPECT_EQ(loadLog(_dir.path()).result, qipVLRecFile::FileCorrupt);
    EXPECT_EQ(loadMap(_dir.path("not there")).result, qipVLRecFile::OpenFailed);
    ASSERT_EQ(mkfifo(_dir.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(loadLog(_dir.path("pipe")).result, qipVLRecFile::OpenFailed);
    EXPECT_EQ(loadLog("/dev/zero").result, qipVLRecFile::OpenFailed);
}

} // namespace
