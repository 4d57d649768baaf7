// SPDX-License-Identifier: MIT
//
// Finds the units of a build: each .gcno file and the .gcda file that belongs to it, if it ran.
#pragma once

#include "tools/common/WalkProblems.h"

#include <cstdint>
#include <string>
#include <vector>

struct GccUnitFiles
{
    std::string _notes;    // .gcno
    std::string _counters; // .gcda, empty when the unit never ran
};

class GccTree
{
public:
    // Looks through `folder` and all below. Returns false when it cannot be read. Folders below
    // that cannot be read are problems, and the others are looked through.
    bool addBuild(const char* folder);

    // Takes counters from `folder` instead of those beside the notes. It holds what a run with
    // GCOV_PREFIX wrote: the path of the notes, or its end when GCOV_PREFIX_STRIP cut some of it.
    // Returns false when it cannot be read or holds no counters.
    bool addRun(const char* folder);

    // The units in the order of their paths, each once.
    std::vector<GccUnitFiles> units() const;

    // The .gcda file of the unit with these notes; empty when it never ran.
    std::string countersOf(const std::string& notes) const;

    // The .gcda files that belong to none of the units.
    std::vector<std::string> strayCounters() const;

    // How many of those were left by units of the build whose .gcno file is gone. Each is a
    // problem: what it stands for is missing from the map.
    uint64_t findLostUnits();

    // Whether any unit has counters.
    bool isAnyUnitRun() const;

    // What was met since it was reported last; all folders have to be added before.
    WalkProblems& problems() { return _problems; }

private:
    bool findFiles(const std::string& folder, std::vector<std::string>& notes,
                   std::vector<std::string>& counters);
    bool isOfBuild(const std::string& counters) const;

    std::vector<std::string> _notes;        // absolute
    std::vector<std::string> _counters;     // beside the notes, absolute
    std::vector<std::string> _buildFolders; // absolute, with "/" at the end
    std::vector<std::string> _runFolders;   // likewise
    std::vector<std::string> _runCounters;  // absolute
    WalkProblems _problems;
};
