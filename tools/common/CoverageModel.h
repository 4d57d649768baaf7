// SPDX-License-Identifier: MIT
//
// What an importer hands over: files, their functions, which lines each block of a function
// touches, and the counts of one run. Importers fill it, finishCoverage() puts it into the order
// and the bounds of the data files, and writeCoverage() writes it as a map file and a log file.
//
// Everything except the counts must follow from the build alone, so that each run of one build
// gives the same map.
#pragma once

#include "tools/common/FunctionText.h"

#include <cstdint>
#include <string>
#include <vector>

// One line that a block touches, from 1.
struct CovLine
{
    uint32_t _block = 0; // index into CovFunction::_hits
    uint32_t _line = 0;

    bool operator==(const CovLine& other) const
    {
        return _block == other._block && _line == other._line;
    }
};

// A block as the files keep it: from its first to its last line, both its own; 0 and 0 when the
// source view shows it nowhere.
struct CovBlock
{
    uint32_t _startLine = 0;
    uint32_t _stopLine = 0;
    int64_t _hits = 0;
};

struct CovFunction
{
    std::vector<std::string> _symbols; // of all its instances, sorted, each once
    // What the first of _symbols say, for as many as the importer had to know. finishCoverage()
    // reads the others and frees all.
    std::vector<FunctionText> _texts;
    std::string _storedName; // as the map stores it, see FunctionName.h; set by finishCoverage()
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    std::vector<int64_t> _hits;    // of each block; negative ones come from damaged counts
    std::vector<CovLine> _lines;   // by block, then line, each once
    std::vector<CovBlock> _blocks; // set by finishCoverage(), see BlockList.h
};

struct CovFile
{
    std::string _path;          // absolute
    uint32_t _timeModified = 0; // seconds since the epoch, 0 when the file is not there
    std::vector<CovFunction> _functions;
};

struct CoverageModel
{
    std::vector<CovFile> _files;
    uint32_t _executionTime = 0; // of the run, seconds since the epoch, 0 when it is not known
    bool _isBoolean = false;     // counts only say whether a block ran
};
