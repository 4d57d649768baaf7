// SPDX-License-Identifier: MIT
#include "tools/common/ContentDigest.h"

#include "qip/Support/qipEndian.h"

#include <algorithm>
#include <cstring>

namespace {

// Both tables are the standard's (FIPS 180-4): the first bits behind the point of the square roots
// of the first 8 primes, and of the cube roots of the first 64.
constexpr std::array<uint32_t, 8> startState = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                                0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

constexpr uint32_t roundConstants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

uint32_t rotate(uint32_t word, int bits)
{
    return word >> bits | word << (32 - bits);
}

} // namespace

ContentDigest::ContentDigest() : _state(startState), _waiting{} {}

void ContentDigest::addBlock(const unsigned char* block)
{
    uint32_t words[64];
    for (size_t i = 0; i < 16; ++i) {
        words[i] = qipGetBig32(block + 4 * i);
    }
    for (size_t i = 16; i < 64; ++i) {
        const uint32_t early = words[i - 15];
        const uint32_t late = words[i - 2];
        words[i] = words[i - 16] + (rotate(early, 7) ^ rotate(early, 18) ^ early >> 3) +
                   words[i - 7] + (rotate(late, 17) ^ rotate(late, 19) ^ late >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = _state;
    for (size_t i = 0; i < 64; ++i) {
        const uint32_t first = h + (rotate(e, 6) ^ rotate(e, 11) ^ rotate(e, 25)) +
                               ((e & f) ^ (~e & g)) + roundConstants[i] + words[i];
        const uint32_t second =
            (rotate(a, 2) ^ rotate(a, 13) ^ rotate(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const uint32_t result[8] = {a, b, c, d, e, f, g, h};
    for (size_t i = 0; i < 8; ++i) {
        _state[i] += result[i];
    }
}

void ContentDigest::add(const unsigned char* bytes, size_t size)
{
    _size += size;
    while (size > 0) {
        if (_nWaiting == 0 && size >= BlockSize) {
            addBlock(bytes);
            bytes += BlockSize;
            size -= BlockSize;
            continue;
        }
        const size_t taken = std::min(size, BlockSize - _nWaiting);
        std::memcpy(&_waiting[_nWaiting], bytes, taken);
        _nWaiting += taken;
        bytes += taken;
        size -= taken;
        if (_nWaiting == BlockSize) {
            addBlock(_waiting.data());
            _nWaiting = 0;
        }
    }
}

// Behind the bytes stand a bit that is set, zeros up to the end of a block, and in its last 8 bytes
// how many bits there were.
std::string ContentDigest::text()
{
    const uint64_t bits = _size * 8;
    const unsigned char end = 0x80;
    add(&end, 1);
    const unsigned char zeros[BlockSize] = {};
    add(zeros, (2 * BlockSize - 8 - _nWaiting) % BlockSize);
    unsigned char size[8];
    qipPutBig32(size, static_cast<uint32_t>(bits >> 32));
    qipPutBig32(size + 4, static_cast<uint32_t>(bits));
    add(size, sizeof size);

    const char digits[] = "0123456789abcdef";
    std::string result;
    for (const uint32_t word : _state) {
        for (int shift = 28; shift >= 0; shift -= 4) {
            result += digits[word >> shift & 15];
        }
    }
    return result;
}
