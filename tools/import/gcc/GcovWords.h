// SPDX-License-Identifier: MIT
//
// Reads the words of a .gcno or .gcda file from memory. Both kinds open with a magic number and a
// version stamp, in the byte order of the machine that wrote them, and go on with records:
//
//   tag, length, then `length` bytes (compilers before version 12 count words of 4 bytes)
//
// clang++ --coverage leaves files of the form that GCC 4.8 had, with its version.
//
// A read past the end gives 0 and sets failed(), so that a reader may check once at its end.
#pragma once

#include "qip/Support/qipAssert.h"
#include "qip/Support/qipEndian.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

class GcovWords
{
public:
    static constexpr uint32_t NotesMagic = 0x67636e6f;    // "gcno"
    static constexpr uint32_t CountersMagic = 0x67636461; // "gcda"

    // The compiler versions whose layout is known.
    static constexpr int FirstMajor = 9;
    static constexpr int LastMajor = 14;
    // And the one whose form clang++ writes.
    static constexpr uint32_t ClangVersion = 0x3430382a; // "408*"

    static constexpr size_t RecordHeadSize = 8; // bytes

    // One record's header; its content is the `_size` bytes at `_start`.
    struct Record
    {
        uint32_t _tag = 0;
        size_t _start = 0;
        size_t _size = 0;
        bool _isZeroed = false; // counters that are all zero and therefore left out
    };

    // Borrows `size` bytes at `data` for its life.
    GcovWords(const unsigned char* data, size_t size);

    // Reads magic number and stamp and sets byte order and units by them. Returns false when the
    // magic number is not `magic`.
    bool readHead(uint32_t magic);

    // The compiler's major version by the stamp, 0 when it is not one; valid after readHead().
    int major() const { return _major; }
    bool isKnown() const { return (_major >= FirstMajor && _major <= LastMajor) || isOfClang(); }
    // Whether the notes have no folder, and no more of a function's place than its first line.
    bool isOfClang() const { return _version == ClangVersion; }
    uint32_t stamp() const { return _stamp; }
    // What a version below FirstMajor means, for a message.
    static const char* otherCompiler();

    uint32_t word();
    // The word at `position`, in bytes from the file's start, without a look at the end.
    // REQUIRES: position + 4 <= end.
    uint32_t wordAt(size_t position) const;
    // A count of 64 bits, lower word first.
    int64_t count();
    // A length and that much text, which stays in the borrowed bytes; `isNull` tells a missing
    // string from an empty one.
    std::string_view text(bool& isNull) { return withoutPadding(paddedText(isNull)); }
    // The same with the zeros behind the text. Texts of equal bytes are equal.
    std::string_view paddedText(bool& isNull);
    static std::string_view withoutPadding(std::string_view padded)
    {
        return padded.substr(0, padded.find('\0'));
    }

    // Moves behind what the notes have between the head and the first record. Returns the working
    // folder, empty for those of clang++.
    std::string_view skipNotesHead();

    // Reads the header of the next record and moves behind its content. Returns false at the end of
    // the file, and with failed() set when the record is cut short.
    bool nextRecord(Record& record);

    // Reads the header alone, wherever the content ends. Returns false like nextRecord().
    bool readRecordHead(Record& record);

    // Whether the zero word behind the last record was met. Only counters have one.
    bool isClosed() const { return _isClosed; }

    size_t position() const { return _position; }
    // Moves to `position` and lets reads go up to `end`, both in bytes from the file's start.
    // REQUIRES: position <= end <= size of the file.
    void confine(size_t position, size_t end);
    // Goes on at the same position with more of the same file: `size` bytes at `data`, borrowed.
    void extend(const unsigned char* data, size_t size);
    size_t left() const { return _end - _position; }
    bool failed() const { return _failed; }

private:
    // From this major version on lengths are in bytes.
    static constexpr int FirstMajorWithBytes = 12;

    bool endRecords();
    bool fail()
    {
        _position = _end;
        _failed = true;
        return false;
    }

    const unsigned char* _data;
    size_t _position = 0;
    size_t _end;
    bool _isBigEndian = false;
    bool _failed = false;
    bool _isClosed = false;
    int _major = 0;
    int _lengthShift = 2; // of the units that lengths are in, to bytes
    uint32_t _version = 0;
    uint32_t _stamp = 0;
};

// What a file of millions of words spends its time in.

inline uint32_t GcovWords::wordAt(size_t position) const
{
    const uint32_t value = qipGetBig32(_data + position);
    return _isBigEndian ? value : __builtin_bswap32(value);
}

inline uint32_t GcovWords::word()
{
    if (left() < 4) {
        (void)fail();
        return 0;
    }
    _position += 4;
    return wordAt(_position - 4);
}

inline int64_t GcovWords::count()
{
    const uint64_t low = word();
    const uint64_t high = word();
    return static_cast<int64_t>(high << 32 | low);
}

inline std::string_view GcovWords::paddedText(bool& isNull)
{
    const uint64_t length = word();
    const uint64_t bytes = length << _lengthShift;
    isNull = bytes == 0;
    if (bytes > left()) {
        (void)fail();
        return std::string_view();
    }
    const char* start = reinterpret_cast<const char*>(_data + _position);
    _position += bytes;
    return std::string_view(start, bytes);
}

inline bool GcovWords::readRecordHead(Record& record)
{
    record._tag = left() < 4 ? 0 : wordAt(_position);
    _isClosed = record._tag == 0 && left() >= 4;
    if (record._tag == 0 || left() < RecordHeadSize) {
        return endRecords();
    }
    const int32_t length = static_cast<int32_t>(wordAt(_position + 4));
    record._isZeroed = length < 0;
    const uint64_t units = record._isZeroed ? 0 : static_cast<uint64_t>(length);
    record._size = units << _lengthShift;
    _position += RecordHeadSize;
    record._start = _position;
    return true;
}

inline bool GcovWords::nextRecord(Record& record)
{
    if (!readRecordHead(record)) {
        return false;
    }
    if (record._size > left()) {
        return fail();
    }
    _position += record._size;
    return true;
}

inline void GcovWords::confine(size_t position, size_t end)
{
    qipAssert(position <= end);
    _position = position;
    _end = end;
}
