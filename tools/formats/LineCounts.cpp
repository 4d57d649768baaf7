// SPDX-License-Identifier: MIT
#include "tools/formats/LineCounts.h"

#include "zem/Data/ZEMBlkRecord.h"

#include <algorithm>

LineCounts::LineCounts() : _run(0) {}

void LineCounts::clear()
{
    _ranges.clear();
    _open.clear();
    _lines.clear();
    _run = 0;
}

void LineCounts::add(const ZEMBlkRecord* blocks, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        const ZEMBlkRecord& block = blocks[i];
        if (block._startLine != 0 && block._stopLine != 0) {
            // One that ends before it begins is shown where it begins.
            _ranges.push_back(
                {block._startLine, std::max(block._startLine, block._stopLine), block._nHits});
        }
    }
}

void LineCounts::push(const Range& range)
{
    _open.push_back(range);
    std::push_heap(_open.begin(), _open.end(),
                   [](const Range& a, const Range& b) { return a.hits < b.hits; });
}

// Only the largest counts: one below it that has ended waits until it is the largest.
void LineCounts::dropBefore(uint32_t line)
{
    while (!_open.empty() && _open.front().stop < line) {
        std::pop_heap(_open.begin(), _open.end(),
                      [](const Range& a, const Range& b) { return a.hits < b.hits; });
        _open.pop_back();
    }
}

void LineCounts::finish()
{
    const auto startsBefore = [](const Range& a, const Range& b) {
        return a.start < b.start;
    };
    if (!std::is_sorted(_ranges.begin(), _ranges.end(), startsBefore)) {
        std::sort(_ranges.begin(), _ranges.end(), startsBefore);
    }
    size_t next = 0;
    uint32_t line = 0;
    while (next < _ranges.size() || !_open.empty()) {
        if (_open.empty()) {
            line = _ranges[next].start;
        }
        while (next < _ranges.size() && _ranges[next].start == line) {
            push(_ranges[next++]);
        }
        dropBefore(line);
        if (!_open.empty()) {
            _lines.push_back({line, _open.front().hits});
            _run += _open.front().hits != 0 ? 1 : 0;
            ++line;
        }
    }
}
