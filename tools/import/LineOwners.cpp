// SPDX-License-Identifier: MIT
#include "tools/import/LineOwners.h"

#include <algorithm>
#include <queue>

void LineOwners::add(uint32_t first, uint32_t last, uint32_t owner)
{
    if (first <= last) {
        _ranges.push_back({first, last, owner});
    }
}

void LineOwners::addSection(uint32_t first, uint32_t owner)
{
    if (!_sections.empty() && _sections.back()._first == first) {
        _sections.pop_back();
    }
    if (_sections.empty() || _sections.back()._owner != owner) {
        _sections.push_back({first, owner});
    }
}

void LineOwners::build()
{
    // In this order a later range is the inner one.
    const auto isBefore = [](const Range& a, const Range& b) {
        return a._first != b._first ? a._first < b._first : a._last < b._last;
    };
    if (!std::is_sorted(_ranges.begin(), _ranges.end(), isBefore)) {
        std::stable_sort(_ranges.begin(), _ranges.end(), isBefore);
    }
    const auto isOuter = [this](size_t a, size_t b) {
        return _ranges[a]._first != _ranges[b]._first ? _ranges[a]._first < _ranges[b]._first
                                                      : a > b;
    };
    // The ranges around the line at hand; those that have ended leave when they come to the top.
    std::priority_queue<size_t, std::vector<size_t>, decltype(isOuter)> open(isOuter);
    const auto closeUpTo = [&](uint32_t line) {
        while (!open.empty() && _ranges[open.top()]._last < line) {
            const uint32_t behind = _ranges[open.top()]._last + 1;
            open.pop();
            while (!open.empty() && _ranges[open.top()]._last < behind) {
                open.pop();
            }
            addSection(behind, open.empty() ? Nobody : _ranges[open.top()]._owner);
        }
    };
    for (size_t i = 0; i < _ranges.size(); ++i) {
        closeUpTo(_ranges[i]._first);
        open.push(i);
        addSection(_ranges[i]._first, _ranges[open.top()]._owner);
    }
    // A range that ends at the greatest number has no line behind it.
    while (!open.empty() && _ranges[open.top()]._last != UINT32_MAX) {
        closeUpTo(_ranges[open.top()]._last + 1);
    }
}

uint32_t LineOwners::ownerOf(uint32_t line, size_t& hint) const
{
    while (hint < _sections.size() && _sections[hint]._first <= line) {
        ++hint;
    }
    return hint == 0 ? Nobody : _sections[hint - 1]._owner;
}

uint32_t LineOwners::ownerOf(uint32_t line) const
{
    const auto behind =
        std::upper_bound(_sections.begin(), _sections.end(), line,
                         [](uint32_t wanted, const Section& s) { return wanted < s._first; });
    return behind == _sections.begin() ? Nobody : std::prev(behind)->_owner;
}
