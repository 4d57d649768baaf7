// SPDX-License-Identifier: MIT
#include "tools/import/llvm/BlockNumbers.h"

#include <algorithm>

namespace {

// A function's counters are numbered from 0, so that the largest is in proportion to their number.
// This is what a table may have for each of them; a damaged one could want gigabytes.
constexpr size_t MostForEach = 16;
constexpr size_t MostForFew = 256;

} // namespace

void BlockNumbers::number()
{
    uint32_t last = 0;
    for (const uint32_t counter : _counters) {
        last = std::max(last, counter);
    }
    _isDense = last < MostForEach * _counters.size() + MostForFew;
    if (!_isDense) {
        std::sort(_counters.begin(), _counters.end());
        _counters.erase(std::unique(_counters.begin(), _counters.end()), _counters.end());
        return;
    }
    _numbers.assign(last + size_t{1}, 0);
    for (const uint32_t counter : _counters) {
        _numbers[counter] = 1;
    }
    _counters.clear();
    for (uint32_t counter = 0; counter <= last; ++counter) {
        if (_numbers[counter] != 0) {
            _numbers[counter] = static_cast<uint32_t>(_counters.size());
            _counters.push_back(counter);
        }
    }
}

uint32_t BlockNumbers::search(uint32_t counter) const
{
    const auto found = std::lower_bound(_counters.begin(), _counters.end(), counter);
    return static_cast<uint32_t>(found - _counters.begin());
}
