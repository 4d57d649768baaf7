// SPDX-License-Identifier: MIT
//
// Numbers the blocks of one function: each different counter is one, in the order of the counters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class BlockNumbers
{
public:
    // Back to none; keeps the memory.
    void clear() { _counters.clear(); }
    // Takes a counter, any number of times.
    void add(uint32_t counter) { _counters.push_back(counter); }
    // Numbers what was added. The cost is linear, but for counters that no compiler writes.
    void number();

    // The counter of each block. REQUIRES: number() has run.
    const std::vector<uint32_t>& counters() const { return _counters; }
    // The block of a counter. REQUIRES: it was added, and number() has run.
    uint32_t of(uint32_t counter) const { return _isDense ? _numbers[counter] : search(counter); }

private:
    uint32_t search(uint32_t counter) const;

    std::vector<uint32_t> _counters;
    bool _isDense = false;
    std::vector<uint32_t> _numbers; // by counter, when they are dense
};
