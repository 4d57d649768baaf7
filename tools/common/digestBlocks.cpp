// SPDX-License-Identifier: MIT
#include "tools/common/digestBlocks.h"

#include "qip/Support/qipEndian.h"

#ifdef __x86_64__
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace {

// The standard's (FIPS 180-4): the first bits behind the point of the cube roots of the first 64
// primes.
alignas(16) constexpr uint32_t roundConstants[64] = {
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

void digestBlock(DigestState& state, const unsigned char* block)
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
    auto [a, b, c, d, e, f, g, h] = state;
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
        state[i] += result[i];
    }
}

#ifdef __x86_64__

bool hasInstructions()
{
    constexpr unsigned int ByteOrder = 1u << 9;  // SSSE3
    constexpr unsigned int Blending = 1u << 19;  // SSE4.1
    constexpr unsigned int Digesting = 1u << 29; // SHA
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    unsigned int d = 0;
    return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & ByteOrder) != 0 && (c & Blending) != 0 &&
           __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & Digesting) != 0;
}

// Four words of the message at a time. The instructions want the state as a, b, e, f and c, d, g,
// h, the first in the highest place.
__attribute__((target("sha,sse4.1"))) void
digestByInstructions(DigestState& state, const unsigned char* bytes, size_t nBlocks)
{
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
    const auto* constants = reinterpret_cast<const __m128i*>(roundConstants);
    auto* words = reinterpret_cast<__m128i*>(state.data());
    __m128i low = _mm_shuffle_epi32(_mm_loadu_si128(words), 0xb1);      // c, d, a, b
    __m128i high = _mm_shuffle_epi32(_mm_loadu_si128(words + 1), 0x1b); // e, f, g, h
    __m128i abef = _mm_alignr_epi8(low, high, 8);
    __m128i cdgh = _mm_blend_epi16(high, low, 0xf0);
    for (; nBlocks > 0; --nBlocks, bytes += DigestBlockSize) {
        const __m128i abefBefore = abef;
        const __m128i cdghBefore = cdgh;
        __m128i message[16];
#pragma GCC unroll 16
        for (size_t i = 0; i < 16; ++i) {
            if (i < 4) {
                const auto* at = reinterpret_cast<const __m128i*>(bytes) + i;
                message[i] = _mm_shuffle_epi8(_mm_loadu_si128(at), bigEndian);
            } else {
                const __m128i early = _mm_sha256msg1_epu32(message[i - 4], message[i - 3]);
                const __m128i between = _mm_alignr_epi8(message[i - 1], message[i - 2], 4);
                message[i] = _mm_sha256msg2_epu32(_mm_add_epi32(early, between), message[i - 1]);
            }
            const __m128i sums = _mm_add_epi32(message[i], _mm_load_si128(constants + i));
            cdgh = _mm_sha256rnds2_epu32(cdgh, abef, sums);
            abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(sums, 0x0e));
        }
        abef = _mm_add_epi32(abef, abefBefore);
        cdgh = _mm_add_epi32(cdgh, cdghBefore);
    }
    low = _mm_shuffle_epi32(abef, 0x1b);
    high = _mm_shuffle_epi32(cdgh, 0xb1);
    _mm_storeu_si128(words, _mm_blend_epi16(low, high, 0xf0));
    _mm_storeu_si128(words + 1, _mm_alignr_epi8(high, low, 8));
}

#else

bool hasInstructions()
{
    return false;
}

void digestByInstructions(DigestState& state, const unsigned char* bytes, size_t nBlocks)
{
    digestBlocksAnywhere(state, bytes, nBlocks);
}

#endif

} // namespace

void digestBlocksAnywhere(DigestState& state, const unsigned char* bytes, size_t nBlocks)
{
    for (size_t i = 0; i < nBlocks; ++i) {
        digestBlock(state, bytes + i * DigestBlockSize);
    }
}

void digestBlocks(DigestState& state, const unsigned char* bytes, size_t nBlocks)
{
    static const bool isFast = hasInstructions();
    (isFast ? digestByInstructions : digestBlocksAnywhere)(state, bytes, nBlocks);
}
