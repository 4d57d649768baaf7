// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmBytes.h"

#include <algorithm>

LlvmBytes::Leb LlvmBytes::longLeb(const unsigned char* at, const unsigned char* end)
{
    uint64_t value = 0;
    for (unsigned int shift = 0; shift < 70 && at != end; shift += 7) {
        const unsigned char byte = *at++;
        if (shift == 63 && byte > 1) {
            break;
        }
        value |= uint64_t(byte & 0x7f) << shift;
        if (byte < 0x80) {
            return {value, at};
        }
    }
    return {0, nullptr};
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
    const auto* start = reinterpret_cast<const char*>(_at);
    _at += static_cast<size_t>(size);
    return start;
}

void LlvmBytes::align(size_t unit)
{
    const size_t rest = position() % unit;
    _at += rest == 0 ? 0 : std::min(left(), unit - rest);
}

void LlvmBytes::skipZeros()
{
    while (_at != _end && *_at == 0) {
        ++_at;
    }
}
