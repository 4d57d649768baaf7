// SPDX-License-Identifier: MIT
#include "qip/Support/qipVLRecFile.h"

#include "qip/Support/qipEndian.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One system call for this many bytes of records; larger arrays bypass the buffer. A file that is
// smaller gets a buffer of its size: there may be thousands of them.
constexpr size_t StreamBufferSize = 128 * 1024;

// Each seek to an earlier place fills the buffer again. A chain that goes back this often gets a
// small one, so that a file of nothing but such links takes seconds and not minutes.
constexpr int ManyStepsBack = 256;
constexpr size_t SmallBufferSize = 4096;

// A file whose records do not overlap is read at most once. Past this factor and slack its records
// lie about their place.
constexpr int64_t ReadFactor = 4;
constexpr int64_t ReadSlack = 64 * 1024;

// Sees a chain of offsets come back to one that it has been at, in constant memory: every offset is
// compared with one remembered offset, which moves up at each power of two.
class CycleFinder
{
public:
    bool comesBack(uint32_t offset)
    {
        if (offset == _remembered) {
            return true;
        }
        if (_steps == _limit) {
            _remembered = offset;
            _limit *= 2;
            _steps = 0;
        }
        ++_steps;
        return false;
    }

private:
    uint32_t _remembered = 0; // no record has offset 0
    uint64_t _steps = 1;      // since the remembered offset was taken
    uint64_t _limit = 1;
};

// A descriptor of the file and its size in bytes; -1 when it cannot be read.
int openRegularFile(const char* filename, int64_t& size)
{
    // Without O_NONBLOCK a pipe without a writer would hold the program for ever.
    const int fd = ::open(filename, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return -1;
    }
    struct stat status = {};
    if (fstat(fd, &status) != 0 || !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))) {
        ::close(fd);
        errno = 0; // there is a better reason than the system's
        return -1;
    }
    size = status.st_size;
    return fd;
}

} // namespace

qipVLRecFile::qipVLRecFile()
    : _fp(nullptr), _mode(READ), _filename(nullptr), _header(0),
      _currentRecord(nullptr), _source{-1, 0, 0}, _fileSize(0), _stepsBack(0)
{}

qipVLRecFile::~qipVLRecFile()
{
    closeStream();
    delete[] _filename;
    delete _currentRecord;
}

int qipVLRecFile::readHeader()
{
    return NoError;
}

int qipVLRecFile::writeHeader()
{
    return NoError;
}

void qipVLRecFile::closeStream()
{
    if (_fp != nullptr) {
        std::fclose(_fp);
        _fp = nullptr;
    }
    _streamBuffer.reset();
}

int qipVLRecFile::open(const char* filename, Mode mode, int userHeaderSz)
{
    if (filename == nullptr) {
        return failed(BadParameter, BadParameter);
    }
    _failure = qipVLFailure();
    char* copy = new (std::nothrow) char[std::strlen(filename) + 1];
    if (copy == nullptr) {
        return failed(OutOfMemory, OutOfMemory);
    }
    std::strcpy(copy, filename);
    delete[] _filename;
    _filename = copy;

    if (_fp != nullptr) {
        close();
        // What close() leaves open is a stream for reading.
        closeStream();
    }

    int result;
    switch (mode) {
    case READ:
        result = openForReading();
        break;
    case WRITE:
        result = openForWriting(userHeaderSz);
        break;
    default:
        std::cerr << " Unknown mode in qipVLRecFile::open " << std::endl;
        return BadParameter;
    }
    if (result != NoError) {
        closeStream();
        return failed(result, result);
    }
    _mode = mode;
    return NoError;
}

int qipVLRecFile::openForReading()
{
    const int fd = openRegularFile(_filename, _fileSize);
    // One byte more, so that the read that fills it meets the end.
    const auto size = std::clamp<int64_t>(_fileSize + 1, SmallBufferSize, StreamBufferSize);
    if (fd < 0 || !openStream(fd, static_cast<size_t>(size))) {
        return failedToOpen();
    }
    _stepsBack = 0;
    if (_header.read(_fp) < 0) {
        return failedToRead(FileCorrupt);
    }
    const int result = readHeader();
    return result == NoError ? NoError : failedToRead(result);
}

int qipVLRecFile::failed(int code, int cause)
{
    if (_failure._cause == NoError) {
        _failure._cause = cause;
    }
    return code;
}

// With errno from what failed, 0 for a file of a kind that is not read.
int qipVLRecFile::failedToOpen()
{
    _failure._reason = errno == 0 ? "no regular file" : std::strerror(errno);
    return failed(OpenFailed, errno == ENOMEM ? OutOfMemory : OpenFailed);
}

// `code` is what the caller is told. A read that failed looks like the end of the file to whoever
// asked for more bytes.
int qipVLRecFile::failedToRead(int code)
{
    if (_fp != nullptr && std::ferror(_fp) != 0) {
        _failure._reason = std::strerror(_source.error);
        return failed(code, ReadFailed);
    }
    return failed(code, code);
}

// Makes the stream that reads from `fd`, which is closed with it, or at once without memory.
bool qipVLRecFile::openStream(int fd, size_t bufferSize)
{
    const cookie_io_functions_t calls = {readSource, nullptr, seekSource, closeSource};
    _source = {fd, 0, 0};
    _fp = fopencookie(&_source, "rb", calls);
    if (_fp == nullptr) {
        ::close(fd);
        return false;
    }
    // Without memory for it the stream's own small buffer serves.
    _streamBuffer.reset(new (std::nothrow) char[bufferSize]);
    if (_streamBuffer) {
        std::setvbuf(_fp, _streamBuffer.get(), _IOFBF, bufferSize);
    }
    return true;
}

ssize_t qipVLRecFile::readSource(void* source, char* bytes, size_t size)
{
    auto* from = static_cast<Source*>(source);
    const ssize_t result = pread(from->fd, bytes, size, from->position);
    if (result < 0) {
        from->error = errno;
    }
    from->position += std::max<ssize_t>(result, 0);
    return result;
}

int qipVLRecFile::seekSource(void* source, off64_t* offset, int whence)
{
    auto* from = static_cast<Source*>(source);
    switch (whence) {
    case SEEK_CUR:
        from->position += *offset;
        break;
    case SEEK_END:
        from->position = lseek(from->fd, *offset, SEEK_END);
        break;
    default:
        from->position = *offset;
    }
    *offset = from->position;
    return from->position < 0 ? -1 : 0;
}

int qipVLRecFile::closeSource(void* source)
{
    return ::close(static_cast<Source*>(source)->fd);
}

// A stream's buffer can only be chosen while it is fresh, so the file gets another stream. False
// when there is none any more.
bool qipVLRecFile::takeSmallBuffer()
{
    const int fd = dup(_source.fd);
    if (fd < 0) {
        return true; // slow is better than not at all
    }
    closeStream();
    return openStream(fd, SmallBufferSize);
}

int qipVLRecFile::openForWriting(int userHeaderSz)
{
    _fp = std::fopen(_filename, "wb");
    if (_fp == nullptr) {
        return OpenFailed;
    }
    // Nothing of a file that this object had open before.
    _header = qipVLHeader(userHeaderSz);
    _header._firstOffset = static_cast<uint32_t>(userHeaderSz) + qipVLHeader::Size;
    _header.write(_fp); // a full disk shows at the first record, and at close()
    const int result = writeHeader();
    if (result != NoError) {
        return result;
    }
    std::fflush(_fp);
    return NoError;
}

int qipVLRecFile::close()
{
    if (_fp == nullptr || _mode == READ) {
        return NoError;
    }
    if (_currentRecord != nullptr) {
        const int result = update();
        if (result != NoError) {
            return result;
        }
    }
    std::fflush(_fp);
    std::rewind(_fp);
    int result = _header.write(_fp);
    if (result == NoError) {
        result = writeHeader();
    }
    if (result != NoError) {
        return result;
    }
    std::fflush(_fp);
    closeStream();
    return NoError;
}

// A seek gives up the stream's buffer, so none is made where the stream
// already stands, at `here`: writers put each record right behind the last.
int qipVLRecFile::seekTo(uint32_t offset, int64_t here)
{
    const off_t target = static_cast<off_t>(offset);
    if (here == target) {
        return NoError;
    }
    if (target < here && _stepsBack < ManyStepsBack && ++_stepsBack == ManyStepsBack &&
        !takeSmallBuffer()) {
        return FileCorrupt;
    }
    return fseeko(_fp, target, SEEK_SET) == 0 ? NoError : FileCorrupt;
}

int qipVLRecFile::load()
{
    _failure = qipVLFailure();
    if (_fp == nullptr) {
        return failed(ShutDown, ShutDown);
    }
    const int result = walk();
    if (result < 0) {
        return failedToRead(result);
    }
    _failure = qipVLFailure();
    return result;
}

int qipVLRecFile::walk()
{
    CycleFinder cycle;
    int64_t bytesRead = 0;
    const int64_t readLimit = ReadFactor * _fileSize + ReadSlack;
    int count = 0;
    int64_t here = ftello(_fp); // the stream's position
    uint32_t offset = _header._firstOffset;
    while (offset != 0) {
        _failure._record = count + 1;
        _failure._offset = offset;
        if (cycle.comesBack(offset) || bytesRead > readLimit) {
            return FileCorrupt;
        }
        if (seekTo(offset, here) != NoError) {
            return FileCorrupt;
        }
        qipVLRecord record;
        int result = record.read(_fp);
        if (result < 0) {
            // No file failed to open: it ends before the record does.
            const bool ends = std::ferror(_fp) == 0;
            return ends ? failed(result, FileCorrupt) : result;
        }
        result = processRecord(record._tag, record._size, record._realSize);
        if (result < 0) {
            return result;
        }
        here = ftello(_fp);
        bytesRead += here - offset - qipVLRecord::HeaderSize;
        ++count;
        offset = record._nextRec;
    }
    return count;
}

int qipVLRecFile::newRecord(unsigned int tag, const char* data, unsigned int size)
{
    if (data == nullptr || size == 0) {
        return NoError;
    }
    delete _currentRecord;
    _currentRecord = new (std::nothrow) qipVLRecord;
    if (_currentRecord == nullptr) {
        return OutOfMemory;
    }
    _currentRecord->_size = size;
    _currentRecord->_realSize = size;
    _currentRecord->_tag = tag;
    _currentRecord->_data = data;
    const int result = update();
    if (result == NoError) {
        _header._nRecords += 1;
        _header._nTotal += size + qipVLRecord::HeaderSize;
    }
    delete _currentRecord;
    _currentRecord = nullptr;
    return result;
}

int qipVLRecFile::update()
{
    if (_fp == nullptr || _currentRecord == nullptr) {
        return NoError;
    }
    const uint32_t previous = _header._lastOffset;
    if (std::fflush(_fp) != 0 || fseeko(_fp, 0, SEEK_END) != 0) {
        return ShutDown;
    }
    const off_t end = ftello(_fp);
    if (end < 0) {
        return ShutDown;
    }
    if (end > static_cast<off_t>(UINT32_MAX)) {
        return WriteFailed;
    }
    _header._lastOffset = static_cast<uint32_t>(end);
    if (_currentRecord->write(_fp) != NoError ||
        std::fwrite(_currentRecord->_data, _currentRecord->_size, 1, _fp) != 1) {
        return WriteFailed;
    }
    // A full disk shows only here.
    if (std::fflush(_fp) != 0) {
        return WriteFailed;
    }
    return previous == 0 ? NoError : link(previous);
}

// Makes the record at `previousRecord` point to the one just written.
int qipVLRecFile::link(uint32_t previousRecord)
{
    if (fseeko(_fp, static_cast<off_t>(previousRecord), SEEK_SET) != 0) {
        return ShutDown;
    }
    unsigned char bytes[4];
    qipPutBig32(bytes, _header._lastOffset);
    return std::fwrite(bytes, sizeof bytes, 1, _fp) == 1 ? NoError : WriteFailed;
}

const char* qipVLRecFile::error(int code)
{
    switch (code) {
    case NoError:
        return "No error";
    case OpenFailed:
        return "fopen failed";
    case ReadFailed:
        return "fread failed";
    case WriteFailed:
        return "fwrite failed";
    case CreateFailed:
        return "create failed";
    case BadMagic:
        return "bad magic number";
    case BadVersion:
        return "bad version number";
    case OutOfMemory:
        return "out of memory";
    case DoubleFree:
        return "double-freing entry";
    case FileCorrupt:
        return "file corrupt";
    case ShutDown:
        return "file shut down";
    case BadParameter:
        return "bad parameter";
    default:
        return "Unknown error";
    }
}
