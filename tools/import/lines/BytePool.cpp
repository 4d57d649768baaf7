// SPDX-License-Identifier: MIT
#include "tools/import/lines/BytePool.h"

#include <cstring>

const char* BytePool::keep(const char* bytes, size_t size)
{
    constexpr size_t ChunkSize = 256 * 1024;
    if (size == 0) {
        return "";
    }
    if (size > ChunkSize / 8) {
        _chunks.emplace_back(new char[size]);
        std::memcpy(_chunks.back().get(), bytes, size);
        return _chunks.back().get();
    }
    if (size > _left) {
        _chunks.emplace_back(new char[ChunkSize]);
        _free = _chunks.back().get();
        _left = ChunkSize;
    }
    char* copy = _free;
    std::memcpy(copy, bytes, size);
    _free += size;
    _left -= size;
    return copy;
}
