// SPDX-License-Identifier: MIT
#include "tools/import/gcc/ContentKey.h"

#include <cstring>

// Two lanes with steps of their own, each of which can be undone: a value that differs leaves both
// lanes different, and they meet again only together.
void ContentKey::add(uint64_t value)
{
    _low = (_low ^ value) * 0xff51afd7ed558ccd;
    _low ^= _low >> 32;
    _high = (_high + value) * 0xc4ceb9fe1a85ec53;
    _high = _high << 31 | _high >> 33;
}

void ContentKey::add(const void* data, size_t size)
{
    const char* bytes = static_cast<const char*>(data);
    uint64_t word = 0;
    for (; size >= sizeof(word); size -= sizeof(word), bytes += sizeof(word)) {
        memcpy(&word, bytes, sizeof(word));
        add(word);
    }
    word = 0;
    if (size > 0) { // nothing may have no address
        memcpy(&word, bytes, size);
    }
    // The length in the unused byte tells "a" from "a" with a zero behind.
    add(word | static_cast<uint64_t>(size) << 56);
}
