// SPDX-License-Identifier: MIT
//
// Lines and their counts in few bytes each: for every line the distance from the one before it and
// the count, each in groups of seven bits, the lower ones first, with the eighth bit set where more
// follow. A count stands in twice its size, and one more below zero.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class PackedLines
{
public:
    // Appends the bytes of a line to `bytes`. `distance` is that from the line before.
    static void append(std::vector<char>& bytes, uint32_t distance, int64_t count)
    {
        appendNumber(bytes, distance);
        const auto sign = static_cast<uint64_t>(count < 0 ? -1 : 0);
        appendNumber(bytes, (static_cast<uint64_t>(count) << 1) ^ sign);
    }

    // Reads `nLines` lines from bytes that append() made. Borrows them.
    PackedLines(const char* bytes, size_t nLines) : _at(bytes), _left(nLines) {}

    // Goes to the next line. Returns false at the end.
    bool next()
    {
        if (_left == 0) {
            return false;
        }
        --_left;
        _line += static_cast<uint32_t>(takeNumber());
        const uint64_t number = takeNumber();
        _count = static_cast<int64_t>((number >> 1) ^ (~(number & 1) + 1));
        return true;
    }
    uint32_t line() const { return _line; }
    int64_t count() const { return _count; }

private:
    static void appendNumber(std::vector<char>& bytes, uint64_t number)
    {
        for (; number >= 0x80; number >>= 7) {
            bytes.push_back(static_cast<char>(number | 0x80));
        }
        bytes.push_back(static_cast<char>(number));
    }
    uint64_t takeNumber()
    {
        uint64_t number = 0;
        for (unsigned int shift = 0;; shift += 7) {
            const auto byte = static_cast<unsigned char>(*_at++);
            number |= uint64_t{byte & 0x7fu} << shift;
            if (byte < 0x80) {
                return number;
            }
        }
    }

    const char* _at;
    size_t _left;
    uint32_t _line = 0;
    int64_t _count = 0;
};
