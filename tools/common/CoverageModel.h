// SPDX-License-Identifier: MIT
//
// The structure that an importer's functions have in a map: files, their functions, which lines
// each block of a function touches, and how the count of each block follows from what a run
// counted. ModelBuilder fills it, finishCoverage() puts it into the order and the bounds of the
// data files, countRun() finds the counts of a run, and CoverageWriter writes it as a map file and
// a log file for each run.
//
// It holds no counts and follows from the build alone, so that each run of one build has the same
// map.
//
// There are two kinds of blocks. A *basic block* is what the importer counts; it touches lines. A
// *block* of the map goes from one line to another; arrangeBlocks() makes these.
#pragma once

#include "tools/common/FunctionText.h"

#include <cstdint>
#include <string>
#include <vector>

// One line that a basic block touches, from 1.
struct CovLine
{
    uint32_t _block = 0; // number among the function's basic blocks
    uint32_t _line = 0;

    bool operator==(const CovLine& other) const
    {
        return _block == other._block && _line == other._line;
    }
};

// A part of how a count is made: the terms up to the one that ends a sum belong together. Such a
// sum adds up maxima, each of the terms up to one that ends it. Most sums are one term, which ends
// both.
struct CovTerm
{
    static constexpr uint32_t GreatestCount = (1u << 30) - 1;

    uint32_t _count : 30; // number of what is counted
    uint32_t _endsMaximum : 1;
    uint32_t _endsSum : 1;

    static CovTerm alone(uint32_t count) { return {count & GreatestCount, 1, 1}; }
};

// A block as the files keep it: from its first to its last line, both its own; 0 and 0 when the
// source view shows it nowhere.
struct CovBlock
{
    uint16_t _startLine = 0;
    uint16_t _stopLine = 0;
    uint32_t _value = 0; // number among the values of the file, see CovFile
};

struct CovFunction
{
    // Of all its instances, sorted, each once; freed by finishCoverage(), which names the function.
    std::vector<std::string> _symbols;
    // What the first of _symbols say, for as many as the importer had to know. finishCoverage()
    // reads the others and frees all.
    std::vector<FunctionText> _texts;
    std::string _storedName; // as the map stores it, see FunctionName.h; set by finishCoverage()
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    bool _isPart = false; // lines in this file of a function that is another's
    uint32_t _nBasicBlocks = 0;
    // Of each basic block, from the counts of a run. Empty when each is one count, and these stand
    // side by side from `_firstCount` on, as nearly always.
    std::vector<CovTerm> _sums;
    uint32_t _firstCount = 0;
    std::vector<CovLine> _lines;   // by basic block, then line, each once
    std::vector<CovBlock> _blocks; // set by finishCoverage(), see BlockList.h
};

// The values of a file are, for one run, the counts of the basic blocks of its functions one after
// another, and behind them those of `_sums`.
struct CovFile
{
    std::string _path;          // absolute
    uint32_t _timeModified = 0; // seconds since the epoch, 0 when the file is not there
    std::vector<CovFunction> _functions;
    std::vector<CovTerm> _sums; // of other values of the file; set by finishCoverage()
};

struct CoverageModel
{
    std::vector<CovFile> _files;
    bool _isBoolean = false; // counts only say whether a block ran
};
