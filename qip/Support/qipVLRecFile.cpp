// SPDX-License-Identifier: MIT
#include "qip/Support/qipVLRecFile.h"

#include "qip/Support/qipCString.h"
#include "qip/Support/qipEndian.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <new>

namespace {

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

} // namespace

qipVLRecFile::qipVLRecFile()
    : _fp(nullptr), _mode(READ), _filename(nullptr), _header(0), _currentRecord(nullptr)
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

bool qipVLRecFile::closeStream()
{
    _fp = nullptr;
    return _stream.close();
}

int qipVLRecFile::open(const char* filename, Mode mode, int userHeaderSz)
{
    _failure = qipVLFailure();
    if (filename == nullptr) {
        return failed(BadParameter, BadParameter);
    }
    if (!qipCString::replace(_filename, filename)) {
        return failed(OutOfMemory, OutOfMemory);
    }

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
    if (!_stream.openForReading(_filename)) {
        return failedToOpen();
    }
    _fp = _stream.fp();
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

// With errno from what failed.
int qipVLRecFile::failedToOpen()
{
    if (hasChanged()) {
        return failed(OpenFailed, OpenFailed);
    }
    _failure._reason = errno == EOPNOTSUPP ? "no regular file" : std::strerror(errno);
    return failed(OpenFailed, errno == ENOMEM ? OutOfMemory : OpenFailed);
}

// Whether somebody writes to the file; that is the reason then.
bool qipVLRecFile::hasChanged()
{
    const char* change = _stream.change();
    if (change != nullptr) {
        _failure = qipVLFailure();
        _failure._isChanging = true;
        _failure._reason = change;
    }
    return change != nullptr;
}

// `code` is what the caller is told. A read that failed looks like the end of the file to whoever
// asked for more bytes.
int qipVLRecFile::failedToRead(int code)
{
    if (_fp != nullptr && std::ferror(_fp) != 0) {
        _failure._reason = std::strerror(_stream.readError());
        return failed(code, ReadFailed);
    }
    // What a half-written file seems to be wrong with says nothing.
    return hasChanged() ? failed(code, FileCorrupt) : failed(code, code);
}

int qipVLRecFile::openForWriting(int userHeaderSz)
{
    if (!_stream.openForWriting(_filename)) {
        return OpenFailed;
    }
    _fp = _stream.fp();
    // Nothing of a file that this object had open before.
    _header = qipVLHeader(userHeaderSz);
    _header._firstOffset = static_cast<uint32_t>(userHeaderSz) + qipVLHeader::Size;
    _header.write(_fp); // what went wrong shows when the stream is flushed
    const int result = writeHeader();
    return result == NoError ? flush() : result;
}

// Gives the system what the stream holds.
int qipVLRecFile::flush()
{
    return _stream.flush() ? NoError : WriteFailed;
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
    int result = flush();
    if (result == NoError) {
        std::rewind(_fp); // forgets errors
        result = _header.write(_fp);
    }
    if (result == NoError) {
        result = writeHeader();
    }
    if (result == NoError) {
        result = flush();
    }
    if (result != NoError) {
        return result;
    }
    return closeStream() ? NoError : WriteFailed;
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
    if (hasChanged()) {
        return failed(FileCorrupt, FileCorrupt);
    }
    _failure = qipVLFailure();
    return result;
}

int qipVLRecFile::walk()
{
    CycleFinder cycle;
    int64_t bytesRead = 0;
    const int64_t readLimit = ReadFactor * _stream.size() + ReadSlack;
    int count = 0;
    int64_t here = ftello(_fp); // the stream's position
    uint32_t offset = _header._firstOffset;
    while (offset != 0) {
        _failure._record = count + 1;
        _failure._offset = offset;
        if (cycle.comesBack(offset) || bytesRead > readLimit) {
            return FileCorrupt;
        }
        const bool isThere = _stream.seekTo(offset, here);
        _fp = _stream.fp();
        if (!isThere) {
            return failed(FileCorrupt, _fp == nullptr ? OutOfMemory : FileCorrupt);
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
        errno = EFBIG;
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
