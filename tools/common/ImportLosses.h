// SPDX-License-Identifier: MIT
//
// What an import left out or changed, counted by kind. Each worker fills its own; they are added
// up, shown in the summary line and kept beside the data files as NAME.losses.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>

struct ImportLosses
{
    uint64_t _systemFunctions = 0;     // in files under /usr
    uint64_t _excludedFunctions = 0;   // by --exclude and --only
    uint64_t _artificialFunctions = 0; // made by the compiler, without text in the source
    uint64_t _blocksWithoutLine = 0;
    uint64_t _blocksOfOtherFiles = 0; // all their lines are in files that are left out
    uint64_t _linesOfOtherFiles = 0;
    // For each file, by path: blocks with lines above 65535, which the source view cannot show.
    std::map<std::string, uint64_t> _blocksPastLastLine;
    uint64_t _linesShownRed = 0;      // by the source view, although a block on them ran
    uint64_t _linesShownBlack = 0;    // or not marked, although no block on them ran
    uint64_t _sourcesOfTwoBuilds = 0; // no headers, yet compiled in several ways
    uint64_t _probeUnits = 0;         // of a build system's tests of the compiler
    uint64_t _clampedCounts = 0;
    uint64_t _negativeCounts = 0;
    uint64_t _unsolvedFunctions = 0; // counters that do not determine every block
    uint64_t _renamedFunctions = 0;  // the stored name differs from the compiler's
    uint64_t _namesWithoutTypes = 0; // parameter types that have no code
    uint64_t _namesNotUnfolded = 0;  // symbols whose text would be out of all proportion
    uint64_t _sourcesNotFound = 0;
    uint64_t _refusedFiles = 0; // path longer than a record can hold
    uint64_t _unitsNotRun = 0;  // no counters
    uint64_t _unitsAsLines = 0; // taken as lines from gcov
    uint64_t _countersWithoutUnit = 0;
    uint64_t _failedUnits = 0;
    uint64_t _unreadFolders = 0; // folders of the build or the run
    uint64_t _linkedFolders = 0; // links to folders that were not looked through
    uint64_t _mostRuns = 0;      // the greatest number of runs that one unit's counters add up

    // Adds the counts of `other`; of `_mostRuns` the greater stays.
    void add(const ImportLosses& other);

    // Whether something that belongs to the build is missing, so that the import is not whole.
    bool isIncomplete() const { return _failedUnits != 0 || _unreadFolders != 0; }

    // One line for each kind that occurred.
    void write(std::ostream& out) const;

    // The same as "310 system functions, 2 negative counts"; empty when nothing occurred.
    std::string text() const;
};
