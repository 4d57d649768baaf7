// SPDX-License-Identifier: MIT
//
// What an importer hands over: files, their functions, the functions' blocks and the counts of one
// run. Importers fill it, finishCoverage() puts it into the order and the bounds of the data files,
// and writeCoverage() writes it as a map file and a log file.
//
// Everything except the counts must follow from the build alone, so that each run of one build
// gives the same map.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Lines count from 1, both ends belong to the block.
struct CovBlock
{
    uint32_t _startLine = 0;
    uint32_t _stopLine = 0;
    int64_t _hits = 0; // may be negative as it comes from a damaged count
};

struct CovFunction
{
    std::string _symbol;     // as the compiler names it; copies in several units share it
    std::string _storedName; // as the map stores it, see FunctionName.h; set by finishCoverage()
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    std::vector<CovBlock> _blocks;
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
