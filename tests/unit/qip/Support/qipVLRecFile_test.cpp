#include "qip/Support/qipVLRecFile.h"

#include "tests/support/RecFileBuilder.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <ostream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Seen
{
    unsigned int tag;
    unsigned int size;
    unsigned int realSize;
    std::string payload;
};

// Reads `_consume` bytes of each record (all of its payload when that is negative) and writes
// `_user` as user header.
class RecordedFile : public qipVLRecFile
{
public:
    void dump(std::ostream& out) override { out << _header; }

    FILE* stream() { return _fp; }
    qipVLHeader& head() { return _header; }
    void leavePending(unsigned int tag, const char* data, unsigned int size)
    {
        _currentRecord = new qipVLRecord;
        _currentRecord->_tag = tag;
        _currentRecord->_size = size;
        _currentRecord->_realSize = size;
        _currentRecord->_data = data;
    }

    std::vector<Seen> _seen;
    std::string _user;
    std::string _userRead;
    size_t _userSize = 0;
    int _headerResult = 0;
    long _consume = -1;
    size_t _stopAt = static_cast<size_t>(-1);
    int _stopResult = 0;
    std::function<void()> _whileItIsRead; // called for each record

protected:
    int readHeader() override
    {
        _userRead.resize(_userSize);
        EXPECT_EQ(fread(_userRead.data(), 1, _userSize, _fp), _userSize);
        return _headerResult;
    }

    int writeHeader() override
    {
        EXPECT_EQ(fwrite(_user.data(), 1, _user.size(), _fp), _user.size());
        return _headerResult;
    }

    int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) override
    {
        std::string payload(_consume < 0 ? size : static_cast<size_t>(_consume), '\0');
        payload.resize(fread(payload.data(), 1, payload.size(), _fp));
        if (_whileItIsRead) {
            _whileItIsRead();
        }
        if (_seen.size() == _stopAt) {
            return _stopResult;
        }
        _seen.push_back({tag, size, realSize, payload});
        return 0;
    }
};

class qipVLRecFileTest : public testing::Test
{
protected:
    // Opens what the builder has and loads it; an open that fails is the result.
    int load(const RecFileBuilder& builder)
    {
        const int result = _file.open(builder.write(path()).c_str(), qipVLRecFile::READ, 0);
        return result != 0 ? result : _file.load();
    }

    int write(const std::string& user = "")
    {
        _file._user = user;
        return _file.open(path().c_str(), qipVLRecFile::WRITE, static_cast<int>(user.size()));
    }

    std::string path() const { return _dir.path("data"); }
    std::string onDisk() const { return TempDir::read(path()); }

    TempDir _dir;
    RecordedFile _file;
};

int openDescriptors()
{
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

// Writing.

TEST_F(qipVLRecFileTest, WritesHeadersAndRecordsByteForByte)
{
    ASSERT_EQ(write("USERHEAD"), 0);
    EXPECT_EQ(_file.newRecord(100, "abc", 3), 0);
    EXPECT_EQ(_file.newRecord(7, "\0\1", 2), 0);
    EXPECT_EQ(_file.close(), 0);
    const unsigned char expected[] = {0,   0,   0x67, 0x10, 0,   0,   0,   37,  0,   0,
                                      0,   2,   0,    0,    0,   8, // magic, total, records, U
                                      0,   0,   0,    72,   0,   0,   0,   91,  0,   0,
                                      0,   1,   0,    0,    0,   0, // first, last, version
                                      0,   0,   0,    0,    0,   0,   0,   0,   0,   0,
                                      0,   0,   0,    0,    0,   0, //
                                      0,   0,   0,    0,    0,   0,   0,   0,   0,   0,
                                      0,   0,   0,    0,    0,   0,             //
                                      'U', 'S', 'E',  'R',  'H', 'E', 'A', 'D', //
                                      0,   0,   0,    91,   0,   0,   0,   3,   0,   0,
                                      0,   3,   0,    0,    0,   100, 'a', 'b', 'c', //
                                      0,   0,   0,    0,    0,   0,   0,   2,   0,   0,
                                      0,   2,   0,    0,    0,   7,   0,   1};
    EXPECT_EQ(onDisk(), std::string(reinterpret_cast<const char*>(expected), sizeof expected));
}

TEST_F(qipVLRecFileTest, OneRecordIsFirstAndLast)
{
    ASSERT_EQ(write("12345678"), 0);
    ASSERT_EQ(_file.newRecord(100, "abcde", 5), 0);
    ASSERT_EQ(_file.close(), 0);
    RecordedFile read;
    read._userSize = 8;
    ASSERT_EQ(read.open(path().c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(read._userRead, "12345678");
    EXPECT_EQ(read.header()._firstOffset, 72u);
    EXPECT_EQ(read.header()._lastOffset, 72u);
    EXPECT_EQ(read.header()._nRecords, 1u);
    EXPECT_EQ(read.header()._nTotal, 21u);
    EXPECT_EQ(read.load(), 1);
    EXPECT_EQ(read._seen[0].payload, "abcde");
}

TEST_F(qipVLRecFileTest, RecordOfNothingChangesNothing)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    const std::string before = onDisk();
    EXPECT_EQ(_file.newRecord(100, nullptr, 3), 0);
    EXPECT_EQ(_file.newRecord(100, "abc", 0), 0);
    EXPECT_EQ(onDisk(), before);
    EXPECT_EQ(_file.header()._nRecords, 1u);
    EXPECT_EQ(_file.header()._nTotal, 19u);
}

TEST_F(qipVLRecFileTest, CountsReachTheDiskOnlyWithClose)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    EXPECT_EQ(onDisk().substr(4, 8), std::string(8, '\0'));
    EXPECT_EQ(onDisk().size(), 64u + 16 + 3);
    ASSERT_EQ(_file.close(), 0);
    EXPECT_EQ(onDisk().substr(4, 8), ByteString().u32(19).u32(1).bytes());
}

TEST_F(qipVLRecFileTest, RecordsWrittenBeforeAnEndWithoutCloseAreReadable)
{
    {
        RecordedFile file;
        ASSERT_EQ(file.open(path().c_str(), qipVLRecFile::WRITE, 0), 0);
        ASSERT_EQ(file.newRecord(100, "abc", 3), 0);
        ASSERT_EQ(file.newRecord(100, "de", 2), 0);
    }
    ASSERT_EQ(_file.open(path().c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(_file.load(), 2);
    EXPECT_EQ(_file.header()._nRecords, 0u);
}

TEST_F(qipVLRecFileTest, CloseWritesAPendingRecord)
{
    ASSERT_EQ(write(), 0);
    _file.leavePending(9, "xyz", 3);
    EXPECT_EQ(_file.close(), 0);
    RecordedFile read;
    ASSERT_EQ(read.open(path().c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(read.load(), 1);
    EXPECT_EQ(read._seen[0].payload, "xyz");
}

TEST_F(qipVLRecFileTest, OpenTruncatesForWriting)
{
    _dir.write("data", std::string(1000, 'x'));
    ASSERT_EQ(write(), 0);
    EXPECT_EQ(onDisk().size(), 64u);
}

TEST_F(qipVLRecFileTest, OpenCompletesAFileThatIsBeingWritten)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    ASSERT_EQ(_file.open(path().c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(_file.header()._nRecords, 1u);
    EXPECT_EQ(_file.load(), 1);
}

TEST_F(qipVLRecFileTest, ClosedFileTakesRecordsWithoutWritingThem)
{
    EXPECT_EQ(_file.update(), 0);
    EXPECT_EQ(_file.newRecord(100, "abc", 3), 0);
    EXPECT_EQ(_file.header()._nRecords, 1u);
    EXPECT_EQ(_file.close(), 0);
}

TEST_F(qipVLRecFileTest, UpdateWithoutAPendingRecordWritesNothing)
{
    ASSERT_EQ(write(), 0);
    EXPECT_EQ(_file.update(), 0);
    EXPECT_EQ(onDisk().size(), 64u);
}

TEST_F(qipVLRecFileTest, AnotherFileStartsWithAFreshHeader)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    ASSERT_EQ(_file.close(), 0);
    const std::string once = onDisk();
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    ASSERT_EQ(_file.close(), 0);
    EXPECT_EQ(onDisk(), once);
    // Also after a file of another magic number and version, as readers let in.
    RecFileBuilder other(0);
    other.setWord(0, 0x09090909).setWord(24, 7).setByte(63, 'x');
    ASSERT_EQ(load(other.record(1, "abc")), 1);
    ASSERT_EQ(write(), 0);
    EXPECT_EQ(_file.header()._nRecords, 0u);
    EXPECT_EQ(onDisk().substr(4, 8), std::string(8, '\0'))
        << "the counts while it is being written";
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    ASSERT_EQ(_file.close(), 0);
    EXPECT_EQ(onDisk(), once);
}

TEST_F(qipVLRecFileTest, ReaderTakesNoRecord)
{
    RecFileBuilder builder(0);
    ASSERT_EQ(load(builder.record(1, "abc")), 1);
    EXPECT_EQ(_file.newRecord(100, "abc", 3), -3);
    EXPECT_EQ(_file.header()._nRecords, 1u);
    EXPECT_EQ(onDisk(), builder.bytes());
}

TEST_F(qipVLRecFileTest, FullDiskFails)
{
    errno = 0;
    EXPECT_EQ(_file.open("/dev/full", qipVLRecFile::WRITE, 0), -3);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(_file.stream(), nullptr);
}

// A file may grow to a limit and no further, as on a disk that gets full.
class qipVLRecFileFullTest : public qipVLRecFileTest
{
protected:
    void limit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit sizes = {bytes, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &sizes), 0);
        errno = 0;
    }

    // What the test prints may go to a file, too.
    void TearDown() override
    {
        const rlimit sizes = {RLIM_INFINITY, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &sizes), 0);
    }
};

TEST_F(qipVLRecFileFullTest, RecordThatDoesNotFitFails)
{
    ASSERT_EQ(write(), 0);
    limit(70);
    EXPECT_EQ(_file.newRecord(100, "abc", 3), -3);
    EXPECT_EQ(errno, EFBIG);
    EXPECT_EQ(_file.header()._nRecords, 0u);
}

TEST_F(qipVLRecFileFullTest, CloseTellsThatTheLastBytesAreNotThere)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    limit(0);
    EXPECT_EQ(_file.close(), -3);
    EXPECT_EQ(errno, EFBIG);
}

TEST_F(qipVLRecFileFullTest, CloseTellsThatTheLastLinkIsNotThere)
{
    ASSERT_EQ(write(), 0);
    ASSERT_EQ(_file.newRecord(100, "abc", 3), 0);
    ASSERT_EQ(_file.newRecord(100, "def", 3), 0); // the link to it waits in the stream
    limit(64);
    EXPECT_EQ(_file.close(), -3);
}

TEST_F(qipVLRecFileTest, RecordPast32BitOffsetsIsRefused)
{
    ASSERT_EQ(write(), 0);
    std::filesystem::resize_file(path(), 1ull << 32); // sparse
    EXPECT_EQ(_file.newRecord(100, "abc", 3), -3);
    EXPECT_EQ(std::filesystem::file_size(path()), 1ull << 32);
    EXPECT_EQ(_file.header()._lastOffset, 0u);
    EXPECT_EQ(_file.header()._nRecords, 0u);
}

TEST_F(qipVLRecFileTest, LastPossibleOffsetIsWritten)
{
    ASSERT_EQ(write(), 0);
    std::filesystem::resize_file(path(), (1ull << 32) - 1); // sparse
    EXPECT_EQ(_file.newRecord(100, "abc", 3), 0);
    EXPECT_EQ(_file.header()._lastOffset, 0xffffffffu);
    EXPECT_EQ(_file.newRecord(100, "abc", 3), -3);
}

TEST_F(qipVLRecFileTest, UserHeaderThatFailsEndsOpenAndClose)
{
    _file._headerResult = -5;
    EXPECT_EQ(write(), qipVLRecFile::BadMagic);
    EXPECT_EQ(_file.stream(), nullptr);
    _file._headerResult = 0;
    ASSERT_EQ(write(), 0);
    _file._headerResult = 4;
    EXPECT_EQ(_file.close(), 4);
}

// Reading.

TEST_F(qipVLRecFileTest, LoadGivesEveryRecordInChainOrder)
{
    RecFileBuilder builder(0);
    builder.record(100, "first").record(0, "").record(0xffffffff, "third").setSizes(2, 5, 9);
    EXPECT_EQ(load(builder), 3);
    ASSERT_EQ(_file._seen.size(), 3u);
    EXPECT_EQ(_file._seen[0].tag, 100u);
    EXPECT_EQ(_file._seen[0].payload, "first");
    EXPECT_EQ(_file._seen[1].size, 0u);
    EXPECT_EQ(_file._seen[2].tag, 0xffffffffu);
    EXPECT_EQ(_file._seen[2].payload, "third");
    EXPECT_EQ(_file._seen[2].realSize, 9u);
}

TEST_F(qipVLRecFileTest, LoadsAnyNumberOfTimes)
{
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(1, "b")), 2);
    EXPECT_EQ(_file.load(), 2);
    EXPECT_EQ(_file._seen.size(), 4u);
    EXPECT_EQ(_file._seen[2].payload, "a");
}

TEST_F(qipVLRecFileTest, StreamMayBeLeftAnywhere)
{
    const std::string big(300 * 1024, 'x'); // more than any buffer
    for (const long consume : {0L, 1L, 1000L, 400L * 1024}) {
        _file._consume = consume;
        _file._seen.clear();
        EXPECT_EQ(load(RecFileBuilder(0).record(1, big).record(2, "b").record(3, big)), 3);
        EXPECT_EQ(_file._seen[1].tag, 2u);
        EXPECT_EQ(_file._seen[2].tag, 3u);
    }
}

TEST_F(qipVLRecFileTest, LoadWithoutAnOpenFileIsShutDown)
{
    EXPECT_EQ(_file.load(), qipVLRecFile::ShutDown);
}

TEST_F(qipVLRecFileTest, FileWithoutRecordsIsOpenFailed)
{
    EXPECT_EQ(load(RecFileBuilder(64)), qipVLRecFile::OpenFailed);
}

TEST_F(qipVLRecFileTest, FirstOffsetZeroIsNoRecords)
{
    EXPECT_EQ(load(RecFileBuilder(64).startAt(0)), 0);
}

TEST_F(qipVLRecFileTest, NumberOfRecordsInTheHeaderIsNotLookedAt)
{
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(1, "b").setWord(8, 1)), 2);
}

TEST_F(qipVLRecFileTest, LoadStopsAtACutRecordHeader)
{
    RecFileBuilder builder(0);
    builder.record(1, "abc").record(2, "def");
    for (size_t length = builder.offsetOf(1); length < builder.payloadOf(1); ++length) {
        RecFileBuilder cut = builder;
        _file._seen.clear();
        EXPECT_EQ(load(cut.cutAt(length)), qipVLRecFile::OpenFailed) << length;
        EXPECT_EQ(_file._seen.size(), 1u) << "the record before it stays given out";
    }
}

TEST_F(qipVLRecFileTest, CutFileHeaderIsCorrupt)
{
    for (size_t length = 0; length < 64; ++length) {
        EXPECT_EQ(load(RecFileBuilder(0).cutAt(length)), qipVLRecFile::FileCorrupt) << length;
        EXPECT_EQ(_file.stream(), nullptr);
        EXPECT_EQ(_file.load(), qipVLRecFile::ShutDown);
    }
}

TEST_F(qipVLRecFileTest, WrongMagicAndVersionLoadAsIfRight)
{
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").setWord(0, 0x1234).setWord(24, 99)), 1);
}

TEST_F(qipVLRecFileTest, CloseLeavesAReaderOpen)
{
    ASSERT_EQ(load(RecFileBuilder(0).record(1, "a")), 1);
    EXPECT_EQ(_file.close(), 0);
    EXPECT_NE(_file.stream(), nullptr);
    EXPECT_EQ(_file.load(), 1);
}

TEST_F(qipVLRecFileTest, OpenAgainGivesUpTheStreamThatWasRead)
{
    const int before = openDescriptors();
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(load(RecFileBuilder(0).record(1, "a")), 1);
    }
    EXPECT_EQ(openDescriptors(), before + 1);
}

TEST_F(qipVLRecFileTest, FailedOpenLeavesNoStream)
{
    const int before = openDescriptors();
    _file._headerResult = 3;
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a")), 3);
    EXPECT_EQ(_file.stream(), nullptr);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(_file.load(), qipVLRecFile::ShutDown);
}

TEST_F(qipVLRecFileTest, NegativeResultOfARecordEndsLoad)
{
    _file._stopAt = 1;
    _file._stopResult = -77;
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(2, "b").record(3, "c")), -77);
    EXPECT_EQ(_file._seen.size(), 1u);
}

TEST_F(qipVLRecFileTest, PositiveResultOfARecordGoesOn)
{
    _file._stopAt = 0;
    _file._stopResult = 5;
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(2, "b")), 2);
}

TEST_F(qipVLRecFileTest, ChainMayGoBackwardsAndSkip)
{
    RecFileBuilder builder(0);
    builder.record(1, "a").append("unused bytes").record(2, "b").record(3, "c");
    builder.startAt(builder.offsetOf(2));
    builder.linkTo(2, builder.offsetOf(1)).linkTo(1, builder.offsetOf(0)).linkTo(0, 0);
    EXPECT_EQ(load(builder), 3);
    EXPECT_EQ(_file._seen[0].tag, 3u);
    EXPECT_EQ(_file._seen[1].tag, 2u);
    EXPECT_EQ(_file._seen[2].tag, 1u);
}

TEST_F(qipVLRecFileTest, LongBackwardChainEnds)
{
    RecFileBuilder builder(0);
    constexpr size_t N = 1000;
    for (size_t i = 0; i < N; ++i) {
        builder.record(static_cast<uint32_t>(i), "payload " + std::to_string(i));
    }
    builder.startAt(builder.offsetOf(N - 1)).linkTo(0, 0);
    for (size_t i = 1; i < N; ++i) {
        builder.linkTo(i, builder.offsetOf(i - 1));
    }
    const int before = openDescriptors();
    EXPECT_EQ(load(builder), static_cast<int>(N));
    EXPECT_EQ(_file.load(), static_cast<int>(N));
    EXPECT_EQ(openDescriptors(), before + 1);
    ASSERT_EQ(_file._seen.size(), 2 * N);
    for (size_t i = 0; i < 2 * N; ++i) {
        EXPECT_EQ(_file._seen[i].payload, "payload " + std::to_string(N - 1 - i % N));
    }
}

TEST_F(qipVLRecFileTest, LinkPastTheEndIsACutRecordHeader)
{
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").linkTo(0, 5000)), qipVLRecFile::OpenFailed);
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").linkTo(0, 0xffffffff)),
              qipVLRecFile::OpenFailed);
}

// Every tail and length of a ring is found, and no record is given out more than a few times.
TEST_F(qipVLRecFileTest, RingIsCorrupt)
{
    for (size_t n = 1; n <= 12; ++n) {
        for (size_t back = 0; back < n; ++back) {
            RecFileBuilder builder(0);
            for (size_t i = 0; i < n; ++i) {
                builder.record(static_cast<uint32_t>(i), "x");
            }
            builder.linkTo(n - 1, builder.offsetOf(back));
            _file._seen.clear();
            EXPECT_EQ(load(builder), qipVLRecFile::FileCorrupt)
                << n << " records, back to " << back;
            EXPECT_GE(_file._seen.size(), n);
            EXPECT_LE(_file._seen.size(), 4 * n);
        }
    }
}

TEST_F(qipVLRecFileTest, RecordsThatReadEachOthersBytesAreCorrupt)
{
    RecFileBuilder builder(0);
    for (int i = 0; i < 2000; ++i) {
        builder.record(1, "");
    }
    builder.append(std::string(50000, 'x'));
    _file._consume = 40000;
    EXPECT_EQ(load(builder), qipVLRecFile::FileCorrupt);
    EXPECT_LT(_file._seen.size(), 20u);
}

TEST_F(qipVLRecFileTest, SmallFileMayOverlapALittle)
{
    RecFileBuilder builder(0);
    for (int i = 0; i < 100; ++i) {
        builder.record(1, "abcdefgh");
    }
    _file._consume = 32; // its own bytes and the next record's
    EXPECT_EQ(load(builder), 100);
}

// Opening.

// One byte of many, of the same length, and right behind the writing of the file.
TEST_F(qipVLRecFileTest, AFileThatIsWrittenToWhileItIsReadIsCorrupt)
{
    _file._whileItIsRead = [this] {
        const int fd = open(path().c_str(), O_WRONLY);
        EXPECT_EQ(pwrite(fd, "x", 1, 64 + 16), 1);
        close(fd);
    };
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(1, "b")), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(_file._seen.size(), 2u);
    EXPECT_EQ(_file.failure()._cause, qipVLRecFile::FileCorrupt);
    EXPECT_STREQ(_file.failure()._reason, "It was written to while it was read");
    EXPECT_EQ(_file.failure()._record, 0);
    EXPECT_STREQ(_file.failure().advice(), "read it again when nobody writes to it any more");
    // Still so: its state is that of its opening.
    _file._whileItIsRead = nullptr;
    EXPECT_EQ(_file.load(), qipVLRecFile::FileCorrupt);
    ASSERT_EQ(_file.open(path().c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(_file.load(), 2);
    EXPECT_EQ(_file.failure()._reason, nullptr);
}

// What seems to be wrong with it then is no damage.
TEST_F(qipVLRecFileTest, AFileThatIsCutWhileItIsReadIsToldAsSuch)
{
    const std::string large(300 * 1000, 'x'); // more than a buffer
    _file._whileItIsRead = [this] {
        EXPECT_EQ(truncate(path().c_str(), 1000), 0);
    };
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(1, large).record(1, large)),
              qipVLRecFile::OpenFailed);
    EXPECT_STREQ(_file.failure()._reason, "It was written to while it was read");
    EXPECT_EQ(_file.failure()._record, 0);
}

TEST_F(qipVLRecFileTest, AFileThatIsExchangedWhileItIsReadIsReadToItsEnd)
{
    _file._whileItIsRead = [this] {
        std::filesystem::rename(_dir.write("new", "something else"), path());
    };
    EXPECT_EQ(load(RecFileBuilder(0).record(1, "a").record(1, "b")), 2);
}

TEST_F(qipVLRecFileTest, NullNameIsABadParameter)
{
    EXPECT_EQ(_file.open(nullptr, qipVLRecFile::READ, 0), qipVLRecFile::BadParameter);
    EXPECT_EQ(_file.filename(), nullptr);
}

TEST_F(qipVLRecFileTest, UnknownModeIsReported)
{
    StdErr err;
    EXPECT_EQ(_file.open("x", static_cast<qipVLRecFile::Mode>(2), 0), qipVLRecFile::BadParameter);
    EXPECT_EQ(err.text(), " Unknown mode in qipVLRecFile::open \n");
}

TEST_F(qipVLRecFileTest, KeepsACopyOfTheName)
{
    std::string name = _dir.path("not there");
    EXPECT_EQ(_file.open(name.c_str(), qipVLRecFile::READ, 0), qipVLRecFile::OpenFailed);
    const std::string copy = name;
    name.assign(name.size(), '#');
    EXPECT_EQ(_file.filename(), copy);
}

TEST_F(qipVLRecFileTest, NameMayHaveBlanksAndAnyBytes)
{
    RecFileBuilder(0).record(1, "a").write(_dir.path("a b \xc3\xa4 \xff"));
    ASSERT_EQ(_file.open(_dir.path("a b \xc3\xa4 \xff").c_str(), qipVLRecFile::READ, 0), 0);
    EXPECT_EQ(_file.load(), 1);
}

TEST_F(qipVLRecFileTest, DirectoryIsCorrupt)
{
    EXPECT_EQ(_file.open(_dir.path().c_str(), qipVLRecFile::READ, 0), qipVLRecFile::FileCorrupt);
}

TEST_F(qipVLRecFileTest, DirectoryCannotBeWritten)
{
    EXPECT_EQ(_file.open(_dir.path().c_str(), qipVLRecFile::WRITE, 0), qipVLRecFile::OpenFailed);
}

TEST_F(qipVLRecFileTest, PipesAndDevicesAreNotOpened)
{
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_EQ(_file.open(path().c_str(), qipVLRecFile::READ, 0), qipVLRecFile::OpenFailed);
    EXPECT_EQ(_file.open("/dev/zero", qipVLRecFile::READ, 0), qipVLRecFile::OpenFailed);
    EXPECT_EQ(_file.stream(), nullptr);
}

// Texts.

TEST(qipVLRecFileErrorTest, EveryCodeHasItsText)
{
    const char* texts[] = {"No error",           "fopen failed",   "fread failed",
                           "fwrite failed",      "create failed",  "bad magic number",
                           "bad version number", "out of memory",  "double-freing entry",
                           "file corrupt",       "file shut down", "bad parameter"};
    for (int code = 0; code > -12; --code) {
        EXPECT_STREQ(qipVLRecFile::error(code), texts[-code]);
    }
    EXPECT_STREQ(qipVLRecFile::error(-12), "Unknown error");
    EXPECT_STREQ(qipVLRecFile::error(1), "Unknown error");
}

} // namespace
