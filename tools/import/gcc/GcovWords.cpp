// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovWords.h"

namespace {

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
    _lengthShift = _major >= FirstMajorWithBytes ? 0 : 2;
    _stamp = word();
    if (_major >= FirstMajorWithBytes) {
        word(); // checksum of the whole file's functions
    }
    return true;
}

// No record's head follows: here is the file's end, the word that closes it, or less than a head.
bool GcovWords::endRecords()
{
    if (_isClosed) {
        _position += 4;
        return false;
    }
    return left() > 0 && fail();
}

const char* GcovWords::otherCompiler()
{
    return "built by a GCC older than 9, or by a clang++ older than 11: use a later one";
}

std::string_view GcovWords::skipNotesHead()
{
    if (isOfClang()) {
        return std::string_view();
    }
    bool isNull = false;
    const std::string_view folder = text(isNull);
    word(); // whether unexecuted blocks are supported
    return folder;
}

void GcovWords::extend(const unsigned char* data, size_t size)
{
    _data = data;
    confine(_position, size);
}
