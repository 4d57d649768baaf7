// SPDX-License-Identifier: MIT
//
// One unit of a build: reads its notes and counters, solves the flow and gives its functions with
// their blocks. Units are independent of each other, so that threads may share them out.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"
#include "tools/import/gcc/GccTree.h"
#include "tools/import/gcc/GcnoFile.h"
#include "tools/import/gcc/SourceFilter.h"

#include <string>
#include <unordered_map>
#include <vector>

class GcdaFile;

struct GccUnitFunction
{
    std::string _path; // of the source file, absolute
    CovFunction _function;
};

class GccUnit
{
public:
    // Borrows `filter` for its life.
    explicit GccUnit(const SourceFilter& filter);

    // Reads true basic blocks. A unit whose notes are damaged gives no functions; one whose
    // counters cannot be used gives all its functions with counts of 0. Both set failure().
    // Returns false, with no functions, for a version that the readers do not know.
    bool readBlocks(const GccUnitFiles& files);

    // The same from memory; `counters` is null for a unit that never ran.
    bool readBlocks(const std::string& notesBytes, const std::string* counterBytes);

    // Asks the program `gcov` for lines instead and makes a block of each.
    void readLines(const GccUnitFiles& files, const char* gcov);

    std::vector<GccUnitFunction>& functions() { return _functions; }
    const ImportLosses& losses() const { return _losses; }
    // What went wrong, without the name of the unit; empty when nothing did.
    const std::string& failure() const { return _failure; }
    // When the unit ran last, in seconds since the epoch; 0 when it did not.
    uint32_t executionTime() const { return _executionTime; }

private:
    struct Source
    {
        std::string _path;
        SourceFilter::Answer _answer;
    };

    const Source& source(const std::string& folder, const std::string& file);
    bool isWanted(const GcnoFunction& function, const Source& source);
    bool useCounters(GcdaFile& counters, const GcnoFile& notes, std::string& failure);
    void addBlocks(const GcnoFunction& function, const std::vector<int64_t>& counts,
                   std::vector<CovBlock>& blocks);
    void fail(const std::string& reason);
    void failCounters(const std::string& reason);

    const SourceFilter& _filter;
    std::unordered_map<std::string, Source> _sources; // by the name in the notes
    std::vector<GccUnitFunction> _functions;
    ImportLosses _losses;
    std::string _failure;
    std::string _countersPath;    // empty when they came from memory
    std::string _countersProblem; // why they could not be read
    uint32_t _executionTime = 0;
};
