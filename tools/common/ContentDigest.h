// SPDX-License-Identifier: MIT
//
// The SHA-256 digest of bytes that come in pieces, by which a file can be named after its content.
// The program sha256sum prints the same.
#pragma once

#include <cstddef>
#include <nettle/sha2.h>
#include <string>

class ContentDigest
{
public:
    ContentDigest();

    void add(const unsigned char* bytes, size_t size);

    // The digest of all bytes added, as 64 hexadecimal digits. Ends the object's use.
    std::string text();

private:
    sha256_ctx _state;
};
