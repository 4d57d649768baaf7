// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovWords.h"

#include "qip/Support/qipAssert.h"
#include "qip/Support/qipEndian.h"

#include <cstring>

namespace {

// From this version on lengths are in bytes.
constexpr int FirstMajorWithBytes = 12;

// The stamp is four characters: 'A' + tens of the major version, its ones, and two that do not
// matter here. Versions below 10 have their number first in older compilers and 'A' in later ones.
int majorOf(uint32_t version)
{
    const int tens = static_cast<int>(version >> 24);
    const int ones = static_cast<int>((version >> 16) & 0xff) - '0';
    if (tens >= '0' && tens <= '9') {
        return tens - '0';
    }
    if (tens < 'A' || tens > 'Z' || ones < 0 || ones > 9) {
        return 0;
    }
    return (tens - 'A') * 10 + ones;
}

} // namespace

GcovWords::GcovWords(const unsigned char* data, size_t size) : _data(data), _end(size) {}

bool GcovWords::readHead(uint32_t magic)
{
    _isBigEndian = true;
    const uint32_t first = word();
    if (first == __builtin_bswap32(magic)) {
        _isBigEndian = false;
    } else if (first != magic) {
        return false;
    }
    _version = word();
    if (failed()) {
        return false;
    }
    _major = majorOf(_version);
    _stamp = word();
    if (_major >= FirstMajorWithBytes) {
        word(); // checksum of the whole file's functions
    }
    return true;
}

const char* GcovWords::otherCompiler()
{
    return "built by a GCC older than 9, or by a clang++ older than 11: use a later one";
}

uint32_t GcovWords::word()
{
    if (left() < 4) {
        _position = _end;
        _failed = true;
        return 0;
    }
    const uint32_t value = qipGetBig32(_data + _position);
    _position += 4;
    return _isBigEndian ? value : __builtin_bswap32(value);
}

int64_t GcovWords::count()
{
    const uint64_t low = word();
    const uint64_t high = word();
    return static_cast<int64_t>(high << 32 | low);
}

std::string GcovWords::text(bool& isNull)
{
    const uint64_t length = word();
    const uint64_t bytes = _major >= FirstMajorWithBytes ? length : length * 4;
    isNull = bytes == 0;
    if (bytes > left()) {
        _position = _end;
        _failed = true;
        return std::string();
    }
    const char* start = reinterpret_cast<const char*>(_data + _position);
    _position += bytes;
    return std::string(start, strnlen(start, bytes));
}

std::string GcovWords::skipNotesHead()
{
    if (isOfClang()) {
        return std::string();
    }
    bool isNull = false;
    std::string folder = text(isNull);
    word(); // whether unexecuted blocks are supported
    return folder;
}

bool GcovWords::readRecordHead(Record& record)
{
    if (left() == 0) {
        return false;
    }
    record._tag = word();
    _isClosed = record._tag == 0 && !failed();
    if (record._tag == 0) {
        return false;
    }
    const int32_t length = static_cast<int32_t>(word());
    record._isZeroed = length < 0;
    const uint64_t units = record._isZeroed ? 0 : static_cast<uint64_t>(length);
    record._size = _major >= FirstMajorWithBytes ? units : units * 4;
    record._start = _position;
    return !failed();
}

bool GcovWords::nextRecord(Record& record)
{
    if (!readRecordHead(record)) {
        return false;
    }
    if (record._size > left()) {
        _position = _end;
        _failed = true;
        return false;
    }
    _position += record._size;
    return true;
}

void GcovWords::extend(const unsigned char* data, size_t size)
{
    _data = data;
    confine(_position, size);
}

void GcovWords::confine(size_t position, size_t end)
{
    qipAssert(position <= end);
    _position = position;
    _end = end;
}
