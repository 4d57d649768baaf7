// SPDX-License-Identifier: MIT
//
// How often the lines of a file or a function ran: each line that a block touches, from its first
// to its last, ran as often as that one of its blocks that ran most. So a line ran exactly when one
// of its blocks did, as the source view has it. A block whose first or last line is unknown (0) has
// no lines, as there.
//
//     counts.clear();
//     counts.add(func._blockMap, func._nBlocks);   for each function
//     counts.finish();
//
// Takes time in proportion to blocks and lines, and to sort blocks that are in no order. May throw
// std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class ZEMBlkRecord;

class LineCounts
{
public:
    struct Line
    {
        uint32_t number; // from 1
        uint32_t hits;
    };

    LineCounts();

    // Forgets all blocks and lines; the memory stays for the next.
    void clear();
    // Notes `count` blocks, of which nothing is kept.
    void add(const ZEMBlkRecord* blocks, size_t count);
    // Works out the lines.
    void finish();

    // In order, each once. What finish() left.
    const std::vector<Line>& lines() const { return _lines; }
    int64_t found() const { return static_cast<int64_t>(_lines.size()); }
    // Those that ran.
    int64_t run() const { return _run; }

private:
    struct Range
    {
        uint32_t start;
        uint32_t stop;
        uint32_t hits;
    };

    void push(const Range& range);
    void dropBefore(uint32_t line);

    std::vector<Range> _ranges;
    std::vector<Range> _open; // a heap of those that reach the line at hand, the largest hits first
    std::vector<Line> _lines;
    int64_t _run;
};
