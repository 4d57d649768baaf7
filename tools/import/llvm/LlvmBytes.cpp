// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmBytes.h"

#include <algorithm>

void LlvmBytes::fail()
{
    _failed = true;
    _position = _end;
}

uint64_t LlvmBytes::longLeb()
{
    uint64_t value = 0;
    for (unsigned int shift = 0; shift < 70; shift += 7) {
        if (_position == _end) {
            break;
        }
        const unsigned char byte = _data[_position++];
        if (shift == 63 && byte > 1) {
            break;
        }
        value |= uint64_t(byte & 0x7f) << shift;
        if (byte < 0x80) {
            return value;
        }
    }
    fail();
    return 0;
}

size_t LlvmBytes::lebCount()
{
    const uint64_t value = leb();
    if (value > left()) {
        fail();
        return 0;
    }
    return static_cast<size_t>(value);
}

const char* LlvmBytes::take(uint64_t size)
{
    if (size > left()) {
        fail();
        return nullptr;
    }
    const auto* start = reinterpret_cast<const char*>(_data + _position);
    _position += static_cast<size_t>(size);
    return start;
}

void LlvmBytes::align(size_t unit)
{
    const size_t rest = _position % unit;
    _position = rest == 0 ? _position : std::min(_end, _position + (unit - rest));
}

void LlvmBytes::skipZeros()
{
    while (_position < _end && _data[_position] == 0) {
        ++_position;
    }
}
