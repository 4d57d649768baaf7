// SPDX-License-Identifier: MIT
#include "tools/common/InputFile.h"

#include "qip/Support/qipAssert.h"
#include "qip/Support/qipFileState.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

InputFile::InputFile() = default;

InputFile::~InputFile()
{
    if (_fd >= 0) {
        ::close(_fd);
    }
}

bool InputFile::fail(const char* problem)
{
    _problem = problem;
    return false;
}

bool InputFile::open(const std::string& path)
{
    qipAssert(_fd < 0);
    // Without O_NONBLOCK a pipe without a writer would hold the program for ever.
    _fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    if (_fd < 0 || fstat(_fd, &status) != 0) {
        return fail(std::strerror(errno));
    }
    _size = static_cast<uint64_t>(status.st_size);
    return S_ISREG(status.st_mode) || fail("Not a regular file");
}

bool InputFile::openToWatch(const std::string& path)
{
    if (!open(path)) {
        return false;
    }
    auto state = std::make_unique<qipFileState>();
    const char* problem = state->watch(_fd);
    if (problem != nullptr) {
        return fail(problem);
    }
    _size = static_cast<uint64_t>(state->size());
    _watched = std::move(state);
    return true;
}

bool InputFile::append(std::string& bytes, size_t size)
{
    const size_t before = bytes.size();
    const bool isRead = readAt(_position, size, bytes);
    _position += bytes.size() - before;
    return isRead;
}

bool InputFile::next(char* bytes, size_t size, size_t& got)
{
    const uint64_t there = _position < this->size() ? this->size() - _position : 0;
    const size_t wanted = static_cast<size_t>(std::min<uint64_t>(size, there));
    got = readInto(_position, wanted, bytes);
    _position += got;
    return got == wanted;
}

bool InputFile::readAt(uint64_t offset, size_t size, std::string& bytes)
{
    const size_t before = bytes.size();
    const uint64_t there = offset < this->size() ? this->size() - offset : 0;
    const size_t wanted = static_cast<size_t>(std::min<uint64_t>(size, there));
    bytes.resize(before + wanted);
    const size_t got = readInto(offset, wanted, &bytes[before]);
    bytes.resize(before + got);
    return got == wanted;
}

bool InputFile::fill(uint64_t offset, size_t size, char* bytes)
{
    return readInto(offset, size, bytes) == size;
}

// Returns how many of the bytes could be read; with problem() set when it is not all.
size_t InputFile::readInto(uint64_t offset, size_t size, char* bytes)
{
    size_t done = 0;
    while (done < size) {
        const ssize_t got =
            pread(_fd, bytes + done, size - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            (void)fail(got < 0 ? std::strerror(errno) : "It became shorter while it was read");
            break;
        }
        done += static_cast<size_t>(got);
    }
    return done;
}

bool InputFile::isUnchanged()
{
    qipAssert(_watched != nullptr);
    const char* change = _watched->change(_fd);
    return change == nullptr || fail(change);
}
