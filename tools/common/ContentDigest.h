// SPDX-License-Identifier: MIT
//
// The SHA-256 digest of bytes that come in pieces, by which a file can be named after its content.
// The program sha256sum prints the same.
#pragma once

#include "tools/common/digestBlocks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

class ContentDigest
{
public:
    ContentDigest();

    void add(const unsigned char* bytes, size_t size);

    // The digest of all bytes added, as 64 hexadecimal digits. Ends the object's use.
    std::string text();

private:
    static constexpr size_t BlockSize = DigestBlockSize;

    DigestState _state;
    std::array<unsigned char, BlockSize> _waiting; // bytes of a block that is not full
    size_t _nWaiting = 0;
    uint64_t _size = 0; // of all bytes
};
