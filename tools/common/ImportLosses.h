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
    uint64_t _markedFunctions = 0;     // wholly excluded by markers in their source
    uint64_t _markedBlocks = 0;        // basic blocks, those of these functions included
    uint64_t _sourcesNotSearched = 0;  // for markers: no file, or too large for a source
    uint64_t _unreadSources = 0;       // so that markers in them are not known
    uint64_t _artificialFunctions = 0; // made by the compiler, without text in the source
    uint64_t _blocksWithoutLine = 0;
    uint64_t _blocksOfOtherFiles = 0; // all their lines are in files that are left out
    uint64_t _linesOfOtherFiles = 0;
    // For each file, by path: blocks with lines above 65535, which the source view cannot show.
    std::map<std::string, uint64_t> _blocksPastLastLine;
    uint64_t _linesShownRed = 0;         // by the source view, although a block on them ran
    uint64_t _linesShownBlack = 0;       // or not marked, although no block on them ran
    uint64_t _sourcesOfTwoBuilds = 0;    // no headers, yet compiled in several ways
    uint64_t _guessedEnds = 0;           // of functions: a document gives no more than the start
    uint64_t _linesOutsideFunctions = 0; // given to a function with the file's name
    uint64_t _functionsWithoutLines = 0; // other functions have all lines of theirs
    uint64_t _linesWithoutNumber = 0;
    uint64_t _unknownRecords = 0; // of a document
    uint64_t _ambiguousSources = 0;
    uint64_t _probeUnits = 0; // of a build system's tests of the compiler
    uint64_t _clampedCounts = 0;
    uint64_t _negativeCounts = 0;
    uint64_t _unsolvedFunctions = 0; // counters that do not determine every block
    uint64_t _renamedFunctions = 0;  // the stored name differs from the compiler's
    uint64_t _namesWithoutTypes = 0; // parameter types that have no code
    uint64_t _namesNotUnfolded = 0;  // symbols whose text would be out of all proportion
    uint64_t _damagedFunctions = 0;  // left out: what the program says of them makes no sense
    uint64_t _staleFunctions = 0;    // counters belong to another state of the source; taken as 0
    uint64_t _sharedCounters = 0;    // functions of one name in two files; each has the sum
    uint64_t _profilesOfOthers = 0;  // of programs that are not among the inputs
    uint64_t _regionsOfMacros = 0;   // text of macros; the use of the macro counts
    uint64_t _sourcesNotFound = 0;
    uint64_t _refusedFiles = 0; // path longer than a record can hold
    uint64_t _unitsNotRun = 0;  // no counters
    uint64_t _unitsAsLines = 0; // taken as lines from gcov
    uint64_t _countersWithoutUnit = 0;
    uint64_t _failedUnits = 0;
    uint64_t _unreadFolders = 0; // of the inputs, and links and files in them
    uint64_t _linkedFolders = 0; // links to folders that were not looked through
    uint64_t _mostRuns = 0;      // the greatest number of runs that one unit's counters add up

    // Adds the counts of `other`; of `_mostRuns` the greater stays.
    void add(const ImportLosses& other);

    // Whether something that belongs to the build is missing, so that the import is not whole.
    bool isIncomplete() const
    {
        return _failedUnits != 0 || _unreadFolders != 0 || _damagedFunctions != 0 ||
               _unreadSources != 0;
    }

    // One line for each kind that occurred.
    void write(std::ostream& out) const;

    // The same as "310 system functions, 2 negative counts"; empty when nothing occurred.
    std::string text() const;
};
