// SPDX-License-Identifier: MIT
#include "tools/import/gcc/ContentKey.h"

#include <cstring>

namespace {

// Each word waits for the one before it in its lanes, so that several keys at once take no longer
// than one.
constexpr size_t Keys = 4;
constexpr size_t StepSize = Keys * sizeof(uint64_t);

uint64_t wordAt(const char* bytes)
{
    uint64_t word = 0;
    memcpy(&word, bytes, sizeof(word));
    return word;
}

} // namespace

// Two lanes with steps of their own, each of which can be undone: a value that differs leaves both
// lanes different, and they meet again only together.
void ContentKey::add(uint64_t value)
{
    _low = (_low ^ value) * 0xff51afd7ed558ccd;
    _low ^= _low >> 32;
    _high = (_high + value) * 0xc4ceb9fe1a85ec53;
    _high = _high << 31 | _high >> 33;
}

// Adds `size` bytes as keys of their own, each of every fourth word. REQUIRES: whole steps.
void ContentKey::addSteps(const char* bytes, size_t size)
{
    ContentKey keys[Keys];
    for (const char* const end = bytes + size; bytes != end; bytes += StepSize) {
        for (size_t i = 0; i < Keys; ++i) {
            keys[i].add(wordAt(bytes + i * sizeof(uint64_t)));
        }
    }
    for (const ContentKey& key : keys) {
        add(key._low);
        add(key._high);
    }
}

void ContentKey::add(const void* data, size_t size)
{
    const char* bytes = static_cast<const char*>(data);
    if (size >= 8 * StepSize) {
        const size_t steps = size - size % StepSize;
        addSteps(bytes, steps);
        add(steps); // tells where the keys end
        bytes += steps;
        size -= steps;
    }
    uint64_t word = 0;
    for (; size >= sizeof(word); size -= sizeof(word), bytes += sizeof(word)) {
        add(wordAt(bytes));
    }
    if (size > 0) { // nothing may have no address
        memcpy(&word, bytes, size);
    }
    // The length in the unused byte tells "a" from "a" with a zero behind.
    add(word | static_cast<uint64_t>(size) << 56);
}
