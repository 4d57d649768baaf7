// SPDX-License-Identifier: MIT
//
// 128 bits that stand for a piece of content: equal content has equal keys, and two pieces that
// differ have the same key only by an accident that no build will see.
#pragma once

#include <cstddef>
#include <cstdint>

class ContentKey
{
public:
    void add(const void* data, size_t size);
    void add(uint64_t value);

    uint64_t low() const { return _low; }
    bool operator==(const ContentKey& other) const
    {
        return _low == other._low && _high == other._high;
    }

private:
    void addSteps(const char* bytes, size_t size);

    uint64_t _low = 0x9e3779b97f4a7c15;
    uint64_t _high = 0xc2b2ae3d27d4eb4f;
};

struct ContentKeyHash
{
    size_t operator()(const ContentKey& key) const { return static_cast<size_t>(key.low()); }
};
