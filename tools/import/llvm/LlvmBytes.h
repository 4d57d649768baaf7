// SPDX-License-Identifier: MIT
//
// Numbers as Clang's coverage sections and profiles keep them: of fixed size in the byte order of
// the file, or LEB128 (7 bits in each byte, lowest first, bit 7 set when another byte follows).
// Reads never leave the bytes given: one that would gives 0 and sets failed(), so that a reader may
// check once at its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class LlvmBytes
{
public:
    // Lines, columns, counters and indices are below this.
    static constexpr uint64_t NumberBound = UINT32_MAX;

    // Borrows `size` bytes at `data` for its life.
    LlvmBytes(const char* data, size_t size, bool isBigEndian = false)
        : _start(reinterpret_cast<const unsigned char*>(data)), _at(_start), _end(_start + size),
          _isBigEndian(isBigEndian)
    {}
    explicit LlvmBytes(const std::string& bytes, bool isBigEndian = false)
        : LlvmBytes(bytes.data(), bytes.size(), isBigEndian)
    {}

    uint16_t u16() { return static_cast<uint16_t>(fixed(2)); }
    uint32_t u32() { return static_cast<uint32_t>(fixed(4)); }
    uint64_t u64() { return fixed(8); }
    // A number of `size` bytes, at most 8.
    uint64_t fixed(size_t size)
    {
        if (left() < size) {
            fail();
            return 0;
        }
        const uint64_t value = numberAt(_at, size, _isBigEndian);
        _at += size;
        return value;
    }

    // Reads `count` numbers of 8 bytes at `data`.
    static void words(const char* data, size_t count, bool isBigEndian, uint64_t* values)
    {
        const auto* bytes = reinterpret_cast<const unsigned char*>(data);
        if (isBigEndian) {
            for (size_t i = 0; i < count; ++i) {
                values[i] = numberAt(bytes + 8 * i, 8, true);
            }
        } else {
            for (size_t i = 0; i < count; ++i) {
                values[i] = numberAt(bytes + 8 * i, 8, false);
            }
        }
    }

    // At most 10 bytes and 64 bits.
    uint64_t leb()
    {
        if (_at != _end && *_at < 0x80) { // nearly all have one byte
            return *_at++;
        }
        const Leb number = longLeb(_at, _end);
        _failed = _failed || number._behind == nullptr;
        _at = number._behind == nullptr ? _end : number._behind;
        return number._value;
    }
    // Fails when it is not below `bound`.
    uint32_t lebBelow(uint64_t bound)
    {
        const uint64_t value = leb();
        if (value >= bound) {
            fail();
            return 0;
        }
        return static_cast<uint32_t>(value);
    }
    // The number of things that follow, each of at least one byte: fails when it is above left().
    size_t lebCount();

    // The next `size` bytes, or null when there are fewer.
    const char* take(uint64_t size);
    void skip(uint64_t size) { (void)take(size); }
    // Moves to the next multiple of `unit` bytes from the start, or to the end when that is nearer.
    void align(size_t unit);
    // Moves behind zero bytes.
    void skipZeros();
    // REQUIRES: position <= size.
    void moveTo(size_t position) { _at = _start + position; }

    size_t position() const { return static_cast<size_t>(_at - _start); }
    size_t left() const { return static_cast<size_t>(_end - _at); }
    bool failed() const { return _failed; }
    // Gives up: moves to the end, and all that follows is 0.
    void fail()
    {
        _failed = true;
        _at = _end;
    }

private:
    // Compilers make one load of each loop.
    static uint64_t numberAt(const unsigned char* bytes, size_t size, bool isBigEndian)
    {
        uint64_t value = 0;
        if (isBigEndian) {
            for (size_t i = 0; i < size; ++i) {
                value = value << 8 | bytes[i];
            }
        } else if (size == 8) {
            for (size_t i = 0; i < 8; ++i) {
                value |= uint64_t(bytes[i]) << 8 * i;
            }
        } else {
            for (size_t i = size; i > 0; --i) {
                value = value << 8 | bytes[i - 1];
            }
        }
        return value;
    }
    // A number and where it ends; null, and the number 0, when it is damaged.
    struct Leb
    {
        uint64_t _value;
        const unsigned char* _behind;
    };
    // Knows of no object: the position of one that a loop keeps for itself stays in a register.
    static Leb longLeb(const unsigned char* at, const unsigned char* end);

    const unsigned char* _start;
    const unsigned char* _at;
    const unsigned char* _end;
    bool _isBigEndian;
    bool _failed = false;
};
