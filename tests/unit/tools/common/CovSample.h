// SPDX-License-Identifier: MIT
//
// Functions of a coverage model for tests, with the counts of a run.
#pragma once

#include "tools/common/CoverageModel.h"

#include <cstdint>
#include <string>
#include <vector>

// A basic block touches the lines named, and ran as often as it says.
struct CovSampleBlock
{
    std::vector<uint32_t> lines; // ascending
    int64_t hits;
};

// A basic block that touches its first and its last line.
struct CovSampleRange
{
    uint32_t start;
    uint32_t stop;
    int64_t hits;
};

// Appends the counts of the blocks to `counts`, which the function's sums number.
inline CovFunction covFunction(std::vector<int64_t>& counts, const char* symbol, uint32_t start,
                               uint32_t end, const std::vector<CovSampleBlock>& blocks)
{
    CovFunction result;
    result._symbols = {symbol};
    result._startLine = start;
    result._endLine = end;
    for (const CovSampleBlock& block : blocks) {
        for (const uint32_t line : block.lines) {
            result._lines.push_back({result._nBasicBlocks, line});
        }
        ++result._nBasicBlocks;
        result._sums.push_back(CovTerm::alone(static_cast<uint32_t>(counts.size())));
        counts.push_back(block.hits);
    }
    return result;
}

inline CovFunction covFunction(std::vector<int64_t>& counts, const char* symbol, uint32_t start,
                               uint32_t end, const std::vector<CovSampleRange>& blocks)
{
    std::vector<CovSampleBlock> lines;
    for (const CovSampleRange& block : blocks) {
        lines.push_back({{block.start}, block.hits});
        if (block.stop != block.start) {
            lines.back().lines.push_back(block.stop);
        }
    }
    return covFunction(counts, symbol, start, end, lines);
}
