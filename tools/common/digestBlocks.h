// SPDX-License-Identifier: MIT
//
// The work of ContentDigest: takes whole blocks of bytes into the state of a SHA-256 digest.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

using DigestState = std::array<uint32_t, 8>;

constexpr size_t DigestBlockSize = 64; // bytes

// Takes `nBlocks` blocks at `bytes`. Uses the processor's own instructions for this digest where it
// has them, which are some six times as fast.
void digestBlocks(DigestState& state, const unsigned char* bytes, size_t nBlocks);

// The same on any processor.
void digestBlocksAnywhere(DigestState& state, const unsigned char* bytes, size_t nBlocks);
