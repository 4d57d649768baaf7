// SPDX-License-Identifier: MIT
//
// The functions of all documents of gcov, each different one once, and what each run counted on
// their lines. Filled by all threads at once, then asked for the build and for the counts of each
// run.
//
// Lines that a document has in no function (those of inlined functions of a header) belong to the
// function around them that another document has, or else to one that has the name of the file.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/ImportedBuild.h"
#include "tools/import/gcov/GcovDocument.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_set>
#include <vector>

class GcovCopies
{
public:
    explicit GcovCopies(size_t nRuns) : _counts(nRuns) {}

    // Adds what the run counted on the lines of a function of the source file `file`. Returns false
    // when there are more lines than a build can have.
    bool add(size_t run, uint32_t file, const GcovFunction& function);

    // The same for lines in no function.
    bool addStrays(size_t run, uint32_t file, const std::vector<GcovLine>& lines);

    // Gives the functions away, once, when all documents are in. `build` had none before.
    void fillBuild(ImportedBuild& build, ImportLosses& losses);

    // Gives the counts of a run away. REQUIRES: fillBuild() was called.
    void takeCounts(size_t run, std::vector<int64_t>& counts);

private:
    struct CopyHash
    {
        size_t operator()(const FunctionCopy& copy) const;
    };
    struct CopyEqual
    {
        bool operator()(const FunctionCopy& a, const FunctionCopy& b) const;
    };

    bool add(size_t run, FunctionCopy& copy, const std::vector<GcovLine>& lines);
    void placeStrays(ImportedBuild& build, ImportLosses& losses) const;

    std::mutex _guard;
    std::unordered_set<FunctionCopy, CopyHash, CopyEqual> _copies;
    std::unordered_set<FunctionCopy, CopyHash, CopyEqual> _strays; // no symbols, no ranges
    std::vector<std::vector<int64_t>> _counts; // of each run; what is behind the end is 0
    uint32_t _nCounts = 0;
};
