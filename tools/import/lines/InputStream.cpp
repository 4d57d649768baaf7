// SPDX-License-Identifier: MIT
#include "tools/import/lines/InputStream.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t PieceSize = 64 * 1024;
constexpr int GzipWindow = 15 + 16; // the largest window, with a gzip head and checksum
const char magic[] = "\x1f\x8b";

Bytef* bytesOf(std::string& text, size_t at)
{
    return reinterpret_cast<Bytef*>(&text[at]);
}

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
    if (_used < _raw.size()) {
        return true;
    }
    _raw.clear();
    _used = 0;
    return _file.append(_raw, PieceSize) || fail(_file.problem());
}

bool InputStream::open(const std::string& path)
{
    if (!_file.openToWatch(path)) {
        return fail(_file.problem());
    }
    if (!refill()) {
        return false;
    }
    _isPacked = _raw.compare(0, 2, magic) == 0;
    if (_isPacked) {
        _isStarted = inflateInit2(&_packed, GzipWindow) == Z_OK;
        return _isStarted || fail("there is no memory to unpack it");
    }
    return true;
}

bool InputStream::readPlain(char* to, size_t size, size_t& got)
{
    while (got < size) {
        if (!refill()) {
            return false;
        }
        const size_t step = std::min(size - got, _raw.size() - _used);
        if (step == 0) {
            return _file.isUnchanged() || fail(_file.problem());
        }
        std::memcpy(to + got, _raw.data() + _used, step);
        _used += step;
        got += step;
    }
    return true;
}

// Looks for another member behind the one that has ended.
InputStream::Step InputStream::endMember()
{
    bool isPadding = false;
    for (;;) {
        if (!refill()) {
            return Failed;
        }
        if (_used == _raw.size()) {
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
    if (_used == _raw.size()) {
        fail("its gzipped data ends early");
        return Failed;
    }
    _packed.next_in = bytesOf(_raw, _used);
    _packed.avail_in = static_cast<uInt>(_raw.size() - _used);
    const int result = inflate(&_packed, Z_NO_FLUSH);
    _used = _raw.size() - _packed.avail_in;
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
