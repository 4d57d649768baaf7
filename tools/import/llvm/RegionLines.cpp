// SPDX-License-Identifier: MIT
#include "tools/import/llvm/RegionLines.h"

#include "tools/import/llvm/TextPosition.h"

#include <algorithm>

namespace {

TextPosition startOf(const RegionLines::Region& region)
{
    return textPosition(region._startLine, region._startColumn);
}

TextPosition endOf(const RegionLines::Region& region)
{
    return textPosition(region._endLine, region._endColumn);
}

// Outer regions first.
bool before(const RegionLines::Region& a, const RegionLines::Region& b)
{
    if (startOf(a) != startOf(b)) {
        return startOf(a) < startOf(b);
    }
    if (endOf(a) != endOf(b)) {
        return endOf(a) > endOf(b);
    }
    return a._rank != b._rank ? a._rank < b._rank : a._block < b._block;
}

bool sameRange(const RegionLines::Region& a, const RegionLines::Region& b)
{
    return startOf(a) == startOf(b) && endOf(a) == endOf(b);
}

bool isEmpty(const RegionLines::Region& region)
{
    return startOf(region) == endOf(region);
}

// Whether `region` ends where the other begins, or before.
bool endsBefore(const RegionLines::Region& region, const RegionLines::Region& other)
{
    return endOf(region) <= startOf(other);
}

} // namespace

uint64_t RegionLines::bound() const
{
    uint32_t first = UINT32_MAX;
    uint32_t last = 0;
    for (const Region& region : _regions) {
        first = std::min(first, region._startLine);
        last = std::max(last, region._endLine);
    }
    return last < first ? 0 : uint64_t(last - first) + _regions.size();
}

void RegionLines::touch(const Region& region)
{
    if (region._block != NoBlock) {
        _lines->push_back({region._block, _file, _line});
    }
}

// Gives each line up to `line` to the innermost region around its start. `beginsText`: on the last
// of them a region with text begins.
void RegionLines::goTo(uint32_t line, bool beginsText)
{
    while (_line < line) {
        ++_line;
        while (!_open.empty() && _open.back()->_endLine < _line) {
            _open.pop_back();
        }
        if (_open.empty()) {
            _line = line;
            return;
        }
        const bool isHidden = _open.back()->_isGap && _line == line && beginsText;
        if (!isHidden && (_open.back()->_endLine > _line || _open.back()->_endColumn > 1)) {
            touch(*_open.back());
        }
    }
}

void RegionLines::begin(const Region& region)
{
    while (!_open.empty() && endsBefore(*_open.back(), region)) {
        _open.pop_back();
    }
    if (!isEmpty(region)) {
        if (!region._isGap) {
            touch(region);
        }
        _open.push_back(&region);
    } else if (!_open.empty() && !_open.back()->_isGap) {
        touch(*_open.back());
    }
}

void RegionLines::append(uint32_t file, std::vector<CopyLine>& lines)
{
    // Compilers write them in this order, but for gaps and macros here and there.
    if (!std::is_sorted(_regions.begin(), _regions.end(), before)) {
        std::sort(_regions.begin(), _regions.end(), before);
    }
    _lines = &lines;
    _file = file;
    _line = _regions.empty() ? 0 : _regions.front()._startLine;
    _open.clear();
    const Region* first = nullptr; // of those with the same range
    for (const Region& region : _regions) {
        if (first == nullptr || !sameRange(*first, region)) {
            first = &region;
        } else if (first->_rank != region._rank) {
            continue;
        }
        goTo(region._startLine, region._block != NoBlock && !region._isGap);
        begin(region);
    }
    while (!_open.empty()) {
        goTo(_open.back()->_endLine, false);
        _open.pop_back();
    }
}
