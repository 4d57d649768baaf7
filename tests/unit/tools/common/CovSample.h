// SPDX-License-Identifier: MIT
//
// Functions of a coverage model for tests, from the first and the last line of each block.
#pragma once

#include "tools/common/CoverageModel.h"

#include <cstdint>
#include <string>
#include <vector>

// A function whose blocks touch the lines named, hits being those given.
struct CovSampleBlock
{
    std::vector<uint32_t> lines; // ascending
    int64_t hits;
};

inline CovFunction covFunction(const char* symbol, uint32_t start, uint32_t end,
                               const std::vector<CovSampleBlock>& blocks)
{
    CovFunction result;
    result._symbols = {symbol};
    result._startLine = start;
    result._endLine = end;
    for (const CovSampleBlock& block : blocks) {
        for (const uint32_t line : block.lines) {
            result._lines.push_back({static_cast<uint32_t>(result._hits.size()), line});
        }
        result._hits.push_back(block.hits);
    }
    return result;
}

// A function each of whose blocks touches its first and its last line.
inline CovFunction covFunction(const char* symbol, uint32_t start, uint32_t end,
                               const std::vector<CovBlock>& blocks)
{
    std::vector<CovSampleBlock> lines;
    for (const CovBlock& block : blocks) {
        lines.push_back({{block._startLine}, block._hits});
        if (block._stopLine != block._startLine) {
            lines.back().lines.push_back(block._stopLine);
        }
    }
    return covFunction(symbol, start, end, lines);
}
