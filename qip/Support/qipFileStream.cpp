// SPDX-License-Identifier: MIT
#include "qip/Support/qipFileStream.h"

#include "qip/Support/qipOpenFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace {

// One system call for this many bytes of records; larger arrays bypass the buffer. A file that is
// smaller gets a buffer of its size: there may be thousands of them.
constexpr size_t StreamBufferSize = 128 * 1024;

// Each seek to an earlier place fills the buffer again. A chain that goes back this often gets a
// small one, so that a file of nothing but such links takes seconds and not minutes.
constexpr int ManyStepsBack = 256;
constexpr size_t SmallBufferSize = 4096;

} // namespace

qipFileStream::qipFileStream() : _fp(nullptr), _source{-1, 0, 0, 0}, _change(nullptr), _stepsBack(0)
{}

qipFileStream::~qipFileStream()
{
    close();
}

bool qipFileStream::close()
{
    const int reason = errno;
    bool isGood = true;
    if (_fp != nullptr) {
        isGood = std::fclose(_fp) == 0;
        _fp = nullptr;
    }
    _buffer.reset();
    errno = isGood ? reason : errno;
    return isGood;
}

bool qipFileStream::openForReading(const char* filename)
{
    close();
    _change = nullptr;
    struct stat status = {};
    const int fd = qipOpenFile(filename, status);
    if (fd < 0) {
        return false;
    }
    _change = _state.watch(fd);
    if (_change != nullptr) {
        ::close(fd);
        return false;
    }
    _stepsBack = 0;
    _source.reads = 0;
    // One byte more, so that the read that fills it meets the end.
    const auto size = std::clamp<int64_t>(_state.size() + 1, SmallBufferSize, StreamBufferSize);
    return openStream(fd, "rb", static_cast<size_t>(size));
}

const char* qipFileStream::change()
{
    if (_fp != nullptr) {
        _change = _state.change(_source.fd);
    }
    return _change;
}

bool qipFileStream::openForWriting(const char* filename)
{
    close();
    const int fd = ::open(filename, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return fd >= 0 && openStream(fd, "wb", StreamBufferSize);
}

// Makes the stream that reads from or writes to `fd`, which is closed with it, or at once without
// memory.
bool qipFileStream::openStream(int fd, const char* mode, size_t bufferSize)
{
    const cookie_io_functions_t calls = {readSource, writeSource, seekSource, closeSource};
    _source.fd = fd;
    _source.position = 0;
    _fp = fopencookie(&_source, mode, calls);
    if (_fp == nullptr) {
        ::close(fd);
        return false;
    }
    // Without memory for it the stream's own small buffer serves.
    _buffer.reset(new (std::nothrow) char[bufferSize]);
    if (_buffer) {
        std::setvbuf(_fp, _buffer.get(), _IOFBF, bufferSize);
    }
    return true;
}

ssize_t qipFileStream::readSource(void* source, char* bytes, size_t size)
{
    auto* from = static_cast<Source*>(source);
    const ssize_t result = pread(from->fd, bytes, size, from->position);
    if (result < 0) {
        from->error = errno;
    }
    from->position += std::max<ssize_t>(result, 0);
    ++from->reads;
    return result;
}

// All the bytes, or 0 and the reason in errno.
ssize_t qipFileStream::writeSource(void* source, const char* bytes, size_t size)
{
    auto* to = static_cast<Source*>(source);
    size_t done = 0;
    while (done < size) {
        const ssize_t result = pwrite(to->fd, bytes + done, size - done, to->position);
        if (result < 0) {
            return 0;
        }
        done += static_cast<size_t>(result);
        to->position += result;
    }
    return static_cast<ssize_t>(size);
}

int qipFileStream::seekSource(void* source, off64_t* offset, int whence)
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

int qipFileStream::closeSource(void* source)
{
    return ::close(static_cast<Source*>(source)->fd);
}

bool qipFileStream::flush()
{
    return std::fflush(_fp) == 0 && std::ferror(_fp) == 0;
}

// A stream's buffer can only be chosen while it is fresh, so the file gets another stream. False
// when there is none any more.
bool qipFileStream::takeSmallBuffer()
{
    const int fd = dup(_source.fd);
    if (fd < 0) {
        return true; // slow is better than not at all
    }
    close();
    return openStream(fd, "rb", SmallBufferSize);
}

// Passes over bytes that were fetched already.
bool qipFileStream::skip(int64_t count)
{
    char passed[1024];
    while (count > 0) {
        const auto size = static_cast<size_t>(std::min<int64_t>(count, sizeof passed));
        if (std::fread(passed, size, 1, _fp) != 1) {
            return false;
        }
        count -= static_cast<int64_t>(size);
    }
    return true;
}

// A seek of stdio gives up the buffer, so none is made to where the stream stands already, as
// writers put each record right behind the last, or to what the buffer holds.
bool qipFileStream::seekTo(int64_t target, int64_t here)
{
    if (target == here) {
        return true;
    }
    if (target > here && target <= _source.position) {
        return skip(target - here);
    }
    if (target < here && _stepsBack < ManyStepsBack && ++_stepsBack == ManyStepsBack &&
        !takeSmallBuffer()) {
        return false;
    }
    return fseeko(_fp, target, SEEK_SET) == 0;
}
