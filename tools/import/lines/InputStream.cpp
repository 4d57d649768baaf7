// SPDX-License-Identifier: MIT
#include "tools/import/lines/InputStream.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t PieceSize = 64 * 1024;
constexpr int GzipWindow = 15 + 16; // the largest window, with a gzip head and checksum
const char magic[] = "\x1f\x8b";

} // namespace

InputStream::~InputStream()
{
    if (_isStarted) {
        inflateEnd(&_packed);
    }
}

bool InputStream::fail(const std::string& problem)
{
    _problem = problem;
    return false;
}

// Gets bytes from the file when all have been used; none at its end.
bool InputStream::refill()
{
    if (_used < _filled) {
        return true;
    }
    _used = 0;
    return _file.next(_raw.data(), _raw.size(), _filled) || fail(_file.problem());
}

bool InputStream::open(const std::string& path)
{
    if (!_file.openToWatch(path)) {
        return fail(_file.problem());
    }
    _raw.resize(PieceSize);
    if (!refill()) {
        return false;
    }
    _isPacked = _filled >= 2 && std::memcmp(_raw.data(), magic, 2) == 0;
    if (_isPacked) {
        _isStarted = inflateInit2(&_packed, GzipWindow) == Z_OK;
        return _isStarted || fail("there is no memory to unpack it");
    }
    return true;
}

// First what open() looked at, then straight from the file.
bool InputStream::readPlain(char* to, size_t size, size_t& got)
{
    got = std::min(size, _filled - _used);
    std::memcpy(to, _raw.data() + _used, got);
    _used += got;
    if (got == size) {
        return true;
    }
    size_t step = 0;
    const bool isRead = _file.next(to + got, size - got, step);
    got += step;
    return (isRead && (got == size || _file.isUnchanged())) || fail(_file.problem());
}

// Looks for another member behind the one that has ended.
InputStream::Step InputStream::endMember()
{
    bool isPadding = false;
    for (;;) {
        if (!refill()) {
            return Failed;
        }
        if (_used == _filled) {
            return _file.isUnchanged() || fail(_file.problem()) ? Finished : Failed;
        }
        if (_raw[_used] != '\0') {
            break;
        }
        isPadding = true;
        ++_used;
    }
    if (isPadding || _raw[_used] != magic[0]) {
        fail("there is something else behind the gzipped data");
        return Failed;
    }
    inflateReset(&_packed);
    return More;
}

InputStream::Step InputStream::unpack()
{
    if (!refill()) {
        return Failed;
    }
    if (_used == _filled) {
        fail("its gzipped data ends early");
        return Failed;
    }
    _packed.next_in = reinterpret_cast<Bytef*>(_raw.data() + _used);
    _packed.avail_in = static_cast<uInt>(_filled - _used);
    const int result = inflate(&_packed, Z_NO_FLUSH);
    _used = _filled - _packed.avail_in;
    if (result == Z_STREAM_END) {
        return endMember();
    }
    if (result != Z_OK && result != Z_BUF_ERROR) {
        fail(result == Z_MEM_ERROR ? "there is no memory to unpack it"
                                   : "its gzipped data is damaged");
        return Failed;
    }
    return More;
}

bool InputStream::read(char* to, size_t size, size_t& got)
{
    got = 0;
    if (!_isPacked) {
        return readPlain(to, size, got);
    }
    size = std::min<size_t>(size, 1u << 30);
    _packed.next_out = reinterpret_cast<Bytef*>(to);
    _packed.avail_out = static_cast<uInt>(size);
    while (!_isFinished && _packed.avail_out != 0) {
        const Step step = unpack();
        if (step == Failed) {
            return false;
        }
        _isFinished = step == Finished;
    }
    got = size - _packed.avail_out;
    return true;
}
