// SPDX-License-Identifier: MIT
#include "tools/common/ContentDigest.h"

#include "qip/Support/qipEndian.h"

#include <algorithm>
#include <cstring>

namespace {

// The standard's (FIPS 180-4): the first bits behind the point of the square roots of the first 8
// primes.
constexpr DigestState startState = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                    0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

} // namespace

ContentDigest::ContentDigest() : _state(startState), _waiting{} {}

void ContentDigest::add(const unsigned char* bytes, size_t size)
{
    _size += size;
    while (size > 0) {
        if (_nWaiting == 0 && size >= BlockSize) {
            const size_t nBlocks = size / BlockSize;
            digestBlocks(_state, bytes, nBlocks);
            bytes += nBlocks * BlockSize;
            size -= nBlocks * BlockSize;
            continue;
        }
        const size_t taken = std::min(size, BlockSize - _nWaiting);
        std::memcpy(&_waiting[_nWaiting], bytes, taken);
        _nWaiting += taken;
        bytes += taken;
        size -= taken;
        if (_nWaiting == BlockSize) {
            digestBlocks(_state, _waiting.data(), 1);
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
