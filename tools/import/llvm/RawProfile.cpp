// SPDX-License-Identifier: MIT
#include "tools/import/llvm/RawProfile.h"

#include "tools/import/llvm/CoverageImage.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t MagicSize = 8;
// Other flags are of profiles that are not of Clang's coverage, or whose functions are in debug
// information.
constexpr uint64_t SingleByteFlag = uint64_t(1) << 60;

bool startsWith(const char* bytes, size_t size, const char* magic)
{
    return size >= MagicSize && std::memcmp(bytes, magic, MagicSize) == 0;
}

struct Magic
{
    const char* _bytes;
    bool _isBigEndian;
    bool _is64;
};

const Magic magics[] = {
    {"\x81rforpl\xff", false, true},
    {"\x81Rforpl\xff", false, false},
    {"\xfflprofr\x81", true, true},
    {"\xfflprofR\x81", true, false},
};

const Magic* findMagic(const char* bytes, size_t size)
{
    for (const Magic& magic : magics) {
        if (startsWith(bytes, size, magic._bytes)) {
            return &magic;
        }
    }
    return nullptr;
}

uint64_t versionWord(const char* bytes, size_t size)
{
    const Magic* magic = findMagic(bytes, size);
    if (magic == nullptr) {
        return 0;
    }
    LlvmBytes head(bytes, size, magic->_isBigEndian);
    head.skip(MagicSize);
    return head.u64();
}

// `word` has the version and the flags.
bool isKnownWord(uint64_t word)
{
    const uint64_t version = word & ~SingleByteFlag;
    return version == 5 || (version >= 7 && version <= 10);
}

} // namespace

struct RawProfile::Head
{
    bool _isBigEndian = false;
    bool _is64 = true;
    uint64_t _version = 0; // without flags
    bool _isSingleByte = false;
    uint64_t _idsSize = 0;
    uint64_t _nRecords = 0;
    uint64_t _paddingBefore = 0;
    uint64_t _nCounters = 0;
    uint64_t _paddingBehind = 0;
    uint64_t _bitmapSize = 0;
    uint64_t _bitmapPadding = 0;
    uint64_t _namesSize = 0;
    uint64_t _countersDelta = 0;
    uint64_t _nTables = 0;
    uint64_t _tableNamesSize = 0;
    bool _isRelative = false; // addresses of counters count from the record

    size_t wordSize() const { return _is64 ? 8 : 4; }
    size_t recordSize() const { return _version < 9 ? (_is64 ? 48 : 40) : (_is64 ? 64 : 48); }
    size_t tableSize() const { return _is64 ? 24 : 16; }
    // Addresses count modulo this less one.
    uint64_t wordMask() const { return _is64 ? UINT64_MAX : UINT32_MAX; }
};

bool RawProfile::isRaw(const char* bytes, size_t size)
{
    return findMagic(bytes, size) != nullptr;
}

bool RawProfile::isIndexed(const char* bytes, size_t size)
{
    return startsWith(bytes, size, "\xfflprofi\x81");
}

uint32_t RawProfile::versionOf(const char* bytes, size_t size)
{
    return static_cast<uint32_t>(versionWord(bytes, size));
}

bool RawProfile::isKnown(const char* bytes, size_t size)
{
    return isKnownWord(versionWord(bytes, size));
}

bool RawProfile::isSingleByte(const char* bytes, size_t size)
{
    return (versionWord(bytes, size) & SingleByteFlag) != 0;
}

void ProfilePart::readCounters(const ProfileRecord& record, uint64_t* counters) const
{
    const char* first = _counters + record._start;
    if (_isSingleByte) {
        std::transform(first, first + record._nCounters, counters,
                       [](char byte) { return byte == 0 ? 1 : 0; });
        return;
    }
    LlvmBytes::words(first, record._nCounters, _isBigEndian, counters);
}

bool RawProfile::readHead(LlvmBytes& bytes, Head& head)
{
    head._version = bytes.u64();
    if (!isKnownWord(head._version)) {
        return false;
    }
    head._isSingleByte = (head._version & SingleByteFlag) != 0;
    head._version &= UINT32_MAX;
    head._idsSize = head._version >= 7 ? bytes.u64() : 0;
    head._nRecords = bytes.u64();
    head._paddingBefore = bytes.u64();
    head._nCounters = bytes.u64();
    head._paddingBehind = bytes.u64();
    if (head._version >= 9) {
        head._bitmapSize = bytes.u64();
        head._bitmapPadding = bytes.u64();
    }
    head._namesSize = bytes.u64();
    head._countersDelta = bytes.u64();
    bytes.skip(head._version >= 9 ? 16 : 8);
    if (head._version >= 10) {
        head._nTables = bytes.u64();
        head._tableNamesSize = bytes.u64();
    }
    (void)bytes.u64();
    head._isRelative = head._version >= 8;
    return true;
}

bool RawProfile::readIds(const char* ids, const Head& head, ProfilePart& part)
{
    LlvmBytes bytes(ids, static_cast<size_t>(head._idsSize), head._isBigEndian);
    while (bytes.left() > 0) {
        const uint64_t size = bytes.u64();
        const char* id = bytes.take(size);
        if (bytes.failed()) {
            return false;
        }
        part._binaryIds.emplace_back(id, static_cast<size_t>(size));
        if (head._version > 7) {
            bytes.align(8);
        }
    }
    return true;
}

bool RawProfile::readRecords(const char* data, const Head& head, ProfilePart& part,
                             uint64_t& recordsWithValues)
{
    LlvmBytes bytes(data, static_cast<size_t>(head._nRecords) * head.recordSize(),
                    head._isBigEndian);
    const size_t word = head.wordSize();
    const size_t words = head._version >= 9 ? 3 : 2;
    uint64_t claimed = 0;
    part._records.resize(static_cast<size_t>(head._nRecords));
    for (size_t i = 0; i < part._records.size(); ++i) {
        ProfileRecord& record = part._records[i];
        record._name = bytes.u64();
        record._hash = bytes.u64();
        record._start = bytes.fixed(word) - head._countersDelta;
        record._start += head._isRelative ? i * head.recordSize() : 0;
        record._start &= head.wordMask();
        bytes.skip(words * word);
        record._nCounters = bytes.u32();
        uint32_t values = bytes.u16();
        values |= bytes.u16();
        values |= head._version >= 10 ? bytes.u16() : 0;
        bytes.moveTo((i + 1) * head.recordSize());
        recordsWithValues += values != 0 ? 1 : 0;
        const uint64_t size = uint64_t(record._nCounters) * part.counterSize();
        claimed += size;
        if (record._nCounters == 0 || record._start > part._countersSize ||
            size > part._countersSize - record._start || claimed > part._countersSize) {
            return false;
        }
    }
    return true;
}

// Moves behind the zeros that fill a part of `size` bytes to a multiple of 8.
void RawProfile::skipPadding(LlvmBytes& bytes, uint64_t size)
{
    bytes.skip((8 - size % 8) % 8);
}

bool RawProfile::skipTables(LlvmBytes& bytes, const Head& head)
{
    if (head._nTables > bytes.left() / head.tableSize()) {
        return false;
    }
    const uint64_t size = head._nTables * head.tableSize();
    bytes.skip(size);
    skipPadding(bytes, size);
    bytes.skip(head._tableNamesSize);
    skipPadding(bytes, head._tableNamesSize);
    return !bytes.failed();
}

bool RawProfile::skipValues(LlvmBytes& bytes, uint64_t count)
{
    for (uint64_t i = 0; i < count && bytes.left() > 0; ++i) {
        const size_t start = bytes.position();
        const uint32_t size = bytes.u32();
        if (bytes.failed() || size < 8 || size % 8 != 0) {
            return false;
        }
        bytes.moveTo(start);
        bytes.skip(size);
        if (bytes.failed()) {
            return false;
        }
    }
    return true;
}

// The program that wrote the profile holds its records, with addresses as the linker gave them.
bool RawProfile::readLeftOut(const Head& head, ProfilePart& part,
                             const std::vector<const CoverageImage*>& images)
{
    for (const CoverageImage* image : images) {
        const std::string& data = image->profileData();
        const bool isOther = !part._binaryIds.empty() && !image->buildId().empty() &&
                             std::find(part._binaryIds.begin(), part._binaryIds.end(),
                                       image->buildId()) == part._binaryIds.end();
        if (data.empty() || isOther) {
            continue;
        }
        Head own = head;
        own._nRecords = data.size() / head.recordSize();
        own._countersDelta = image->countersAddress();
        own._isRelative = false;
        uint64_t recordsWithValues = 0;
        if (readRecords(data.data(), own, part, recordsWithValues)) {
            return true;
        }
        part._records.clear();
    }
    return false;
}

RawProfile::Result RawProfile::readPart(LlvmBytes& bytes, Head& head,
                                        const std::vector<const CoverageImage*>& images)
{
    if (!readHead(bytes, head)) {
        return bytes.failed() ? Damaged : UnknownVersion;
    }
    _parts.emplace_back();
    ProfilePart& part = _parts.back();
    part._isBigEndian = head._isBigEndian;
    part._isSingleByte = head._isSingleByte;
    const char* ids = bytes.take(head._idsSize);
    if (ids == nullptr || head._nRecords > bytes.left() / head.recordSize() ||
        !readIds(ids, head, part)) {
        return Damaged;
    }
    const char* data = bytes.take(head._nRecords * head.recordSize());
    bytes.skip(head._paddingBefore);
    if (head._nCounters > bytes.left() / part.counterSize()) {
        return Damaged;
    }
    part._countersSize = static_cast<size_t>(head._nCounters) * part.counterSize();
    part._counters = bytes.take(part._countersSize);
    bytes.skip(head._paddingBehind);
    bytes.skip(head._bitmapSize);
    bytes.skip(head._bitmapPadding);
    const char* names = bytes.take(head._namesSize);
    if (bytes.failed()) {
        return Damaged;
    }
    part._names.assign(names, static_cast<size_t>(head._namesSize));
    skipPadding(bytes, head._namesSize);
    uint64_t recordsWithValues = 0;
    if (!readRecords(data, head, part, recordsWithValues) || !skipTables(bytes, head)) {
        return Damaged;
    }
    if (head._nRecords == 0 && head._nCounters > 0 && !readLeftOut(head, part, images)) {
        return LeftOut;
    }
    return skipValues(bytes, recordsWithValues) ? Ok : Damaged;
}

RawProfile::Result RawProfile::read(const std::string& bytes,
                                    const std::vector<const CoverageImage*>& images)
{
    _parts.clear();
    if (bytes.empty()) {
        return Empty;
    }
    const Magic* magic = findMagic(bytes.data(), bytes.size());
    if (magic == nullptr) {
        return NotRaw;
    }
    LlvmBytes parts(bytes, magic->_isBigEndian);
    Result result = Ok;
    while (result == Ok && parts.left() > 0) {
        const char* start = parts.take(MagicSize);
        if (start == nullptr || !startsWith(start, MagicSize, magic->_bytes)) {
            result = Damaged;
            break;
        }
        Head head;
        head._isBigEndian = magic->_isBigEndian;
        head._is64 = magic->_is64;
        result = readPart(parts, head, images);
        parts.skipZeros();
    }
    if (result != Ok) {
        _parts.clear();
    }
    return result;
}
