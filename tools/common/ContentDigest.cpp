// SPDX-License-Identifier: MIT
#include "tools/common/ContentDigest.h"

ContentDigest::ContentDigest() : _state{}
{
    sha256_init(&_state);
}

void ContentDigest::add(const unsigned char* bytes, size_t size)
{
    sha256_update(&_state, size, bytes);
}

std::string ContentDigest::text()
{
    unsigned char digest[SHA256_DIGEST_SIZE];
    sha256_digest(&_state, sizeof(digest), digest);
    const char digits[] = "0123456789abcdef";
    std::string result;
    for (const unsigned char byte : digest) {
        result += digits[byte >> 4];
        result += digits[byte & 15];
    }
    return result;
}
