// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcCoverage.h"

#include "qip/Support/ListIterator.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Lines/SrcLine.h"
#include "zem/Lines/SrcLineTable.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr int64_t LargestCount = INT32_MAX;
// Widths stay so small that sums of a few of them fit an int.
constexpr int64_t LargestWidth = 1 << 28;
constexpr int SeparatorWidth = 2; // what each of several counts takes beside its digits

// Counts are unsigned in the record and signed on the line, where negative values mean something.
int32_t clamped(int64_t hits)
{
    return static_cast<int32_t>(std::min(hits, LargestCount));
}

int digits(int32_t n)
{
    int count = 1;
    while (n >= 10) {
        n /= 10;
        ++count;
    }
    return count;
}

} // namespace

SrcCoverage::SrcCoverage(SrcLineTable& lines)
    : _lines(lines), _hitDetailWidth(LeastWidth), _maxBlocksOnLine(LeastWidth), _complete(true)
{
    memset(_notPainted, 0xff, sizeof _notPainted);
}

int SrcCoverage::load(const ZEMFileRecord& file)
{
    ListIterator<ZEMFuncRecord*> it(file._funcList);
    while (const ZEMFuncRecord* func = it.next()) {
        loadBlocks(func->_blockMap, func->_nBlocks);
    }
    return _complete ? 0 : -1;
}

void SrcCoverage::loadBlocks(const ZEMBlkRecord* blocks, uint32_t count)
{
    uint32_t i = 0;
    while (i < count) {
        const ZEMBlkRecord& block = blocks[i];
        ++i;
        if (block._startLine == 0 || block._stopLine == 0) {
            continue;
        }
        showFirst(block);
        int64_t width = digits(clamped(block._nHits));
        const uint32_t first = i - 1;
        while (i < count && blocks[i]._startLine == block._startLine) {
            ++i;
        }
        if (i - first > 1) {
            width = showTogether(blocks + first, i - first);
        }
        _hitDetailWidth =
            static_cast<int>(std::max<int64_t>(_hitDetailWidth, std::min(width, LargestWidth)));
    }
}

// The block by itself: its count on its first line, and when it never ran the lines behind that.
void SrcCoverage::showFirst(const ZEMBlkRecord& block)
{
    const int start = block._startLine - 1;
    if (SrcLine* line = _lines.line(start)) {
        line->showBlock(clamped(block._nHits));
        changed(start);
    }
    if (block._nHits == 0) {
        paintUnrun(start + 1, block._stopLine - 1);
    }
}

// Lines are counted from 0 here, both ends inclusive.
void SrcCoverage::paintUnrun(int first, int last)
{
    last = static_cast<int>(std::min<long>(last, _lines.nLines() - 1));
    for (int n = nextChanged(first, last); n <= last; n = nextChanged(n + 1, last)) {
        _lines.line(n)->showBlock(SrcLine::InsideUnrun);
        _notPainted[n / WordBits] &= ~(uint64_t{1} << (n % WordBits));
    }
}

void SrcCoverage::changed(int line)
{
    _notPainted[line / WordBits] |= uint64_t{1} << (line % WordBits);
}

// The first line from `line` to `last` that is not painted; behind `last` when all are.
int SrcCoverage::nextChanged(int line, int last) const
{
    while (line <= last) {
        const uint64_t rest = _notPainted[line / WordBits] >> (line % WordBits);
        if (rest != 0) {
            return line + __builtin_ctzll(rest);
        }
        line += WordBits - line % WordBits;
    }
    return line;
}

// Shows `count` blocks with a common first line on the last line of the first of them. Returns the
// characters that their counts take.
int64_t SrcCoverage::showTogether(const ZEMBlkRecord* blocks, uint32_t count)
{
    int64_t sum = 0;
    int64_t width = 0;
    for (uint32_t i = 0; i < count; ++i) {
        sum += blocks[i]._nHits;
        width += SeparatorWidth + digits(clamped(blocks[i]._nHits));
    }
    const auto shown = static_cast<int32_t>(std::min<int64_t>(count, LargestWidth));
    _maxBlocksOnLine = std::max(_maxBlocksOnLine, shown);

    const int stop = blocks[0]._stopLine - 1;
    SrcLine* line = _lines.line(stop);
    int32_t* map = line == nullptr ? nullptr : new (std::nothrow) int32_t[count];
    if (map == nullptr) {
        _complete = _complete && line == nullptr;
    } else {
        for (uint32_t i = 0; i < count; ++i) {
            map[i] = clamped(blocks[i]._nHits);
        }
        // One count is on the line already when the first block is all on one line. On a line that
        // has none the last block is not shown; on one that has more, no more than there are.
        const int64_t nBlocks = std::min<int64_t>(int64_t{line->_nBlocks} + count - 1, shown);
        line->showBlocks(map, static_cast<int32_t>(nBlocks), clamped(sum));
        changed(stop);
    }
    return width;
}
