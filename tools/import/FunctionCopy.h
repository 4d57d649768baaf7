// SPDX-License-Identifier: MIT
//
// One function as one unit compiled it: its place, the lines that its blocks touch and where a run
// counts them. Importers make copies; ModelBuilder unites those of one place in the source.
#pragma once

#include "tools/common/CoverageModel.h"

#include <cstdint>
#include <string>
#include <vector>

// One line that a block touches.
struct CopyLine
{
    uint32_t _block = 0; // from 0
    uint32_t _file = 0;  // number of the source file
    uint32_t _line = 0;  // from 1

    bool operator<(const CopyLine& other) const
    {
        return _block != other._block ? _block < other._block
               : _file != other._file ? _file < other._file
                                      : _line < other._line;
    }
    bool operator==(const CopyLine& other) const
    {
        return _block == other._block && _file == other._file && _line == other._line;
    }
};

struct FunctionCopy
{
    std::string _symbol; // as the compiler names it
    uint32_t _file = 0;  // number of the source file
    uint32_t _startLine = 0;
    uint32_t _startColumn = 0; // 0 when it is not known
    uint32_t _endLine = 0;
    uint32_t _endColumn = 0;
    // The compiler keeps the function's body apart, under the same symbol: a coroutine's. Its end
    // is not known.
    bool _isBody = false;
    // Made by the compiler: only lines that it holds of other functions count.
    bool _isHidden = false;
    // Where the counts of a run have that of block 0; those of the other blocks follow. Copies may
    // share counts.
    uint32_t _firstCount = 0;
    std::vector<CopyLine> _lines; // sorted, each once
    // Instead of _lines, when all are in `_file`: they take less memory, and nearly always become
    // the lines of a function of the model as they are.
    std::vector<CovLine> _ownLines;

    bool hasLines() const { return !_lines.empty() || !_ownLines.empty(); }

    // Makes _lines of _ownLines.
    void spreadLines()
    {
        _lines.reserve(_lines.size() + _ownLines.size());
        for (const CovLine& line : _ownLines) {
            _lines.push_back({line._block, _file, line._line});
        }
        std::vector<CovLine>().swap(_ownLines);
    }
};
