// SPDX-License-Identifier: MIT
//
// Big-endian words in memory and on disk. The only place that knows byte order: every data file is
// big-endian whatever the host is, and nothing is written or read by overlaying a struct.
#pragma once

#include <cstddef>
#include <cstdint>

// The number whose big-endian bytes stand at `bytes`, which needs no alignment.
inline uint16_t qipGetBig16(const unsigned char* bytes)
{
    return static_cast<uint16_t>((bytes[0] << 8) | bytes[1]);
}
inline uint32_t qipGetBig32(const unsigned char* bytes)
{
    return (static_cast<uint32_t>(bytes[0]) << 24) | (static_cast<uint32_t>(bytes[1]) << 16) |
           (static_cast<uint32_t>(bytes[2]) << 8) | bytes[3];
}

// Store `value` as big-endian bytes.
inline void qipPutBig16(unsigned char* bytes, uint16_t value)
{
    bytes[0] = static_cast<unsigned char>(value >> 8);
    bytes[1] = static_cast<unsigned char>(value);
}
inline void qipPutBig32(unsigned char* bytes, uint32_t value)
{
    bytes[0] = static_cast<unsigned char>(value >> 24);
    bytes[1] = static_cast<unsigned char>(value >> 16);
    bytes[2] = static_cast<unsigned char>(value >> 8);
    bytes[3] = static_cast<unsigned char>(value);
}

// Stores `count` words as big-endian bytes, which need no alignment and are others than the words'.
void qipPutBig32(unsigned char* bytes, const uint32_t* words, size_t count);

// Turns `count` words that were read from a file into the host's order, in place.
void qipBigToHost32(uint32_t* words, size_t count);
