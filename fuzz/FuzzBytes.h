// SPDX-License-Identifier: MIT
//
// Decisions of a fuzz target that makes up its input, taken from the fuzzer's bytes one by one. At
// their end every decision is 0, so that a short input is a small case.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

class FuzzBytes
{
public:
    // Borrows `size` bytes at `data`.
    FuzzBytes(const uint8_t* data, size_t size) : _data(data), _size(size) {}

    bool isEmpty() const { return _size == 0; }

    uint8_t byte()
    {
        if (_size == 0) {
            return 0;
        }
        --_size;
        return *_data++;
    }

    // A number below `n`, which is no more than 256 and not 0.
    uint32_t below(uint32_t n) { return byte() % n; }

    uint32_t word()
    {
        uint32_t result = 0;
        for (int i = 0; i < 4; ++i) {
            result = result << 8 | byte();
        }
        return result;
    }

    // What stands before the next byte `end`, or all that is left; the byte is passed.
    std::string until(char end)
    {
        const void* found = _size == 0 ? nullptr : std::memchr(_data, end, _size);
        const size_t length = found == nullptr
                                  ? _size
                                  : static_cast<size_t>(static_cast<const uint8_t*>(found) - _data);
        const std::string result(reinterpret_cast<const char*>(_data), length);
        pass(length + (found == nullptr ? 0 : 1));
        return result;
    }

    // At most `most` bytes that are not 0.
    std::string name(size_t most)
    {
        std::string result;
        for (size_t length = byte() % (most + 1); length > 0 && _size > 0; --length) {
            const auto c = static_cast<char>(byte());
            result += c == '\0' ? '_' : c;
        }
        return result;
    }

private:
    void pass(size_t count)
    {
        count = std::min(count, _size);
        _data += count;
        _size -= count;
    }

    const uint8_t* _data;
    size_t _size;
};
