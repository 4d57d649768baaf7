// SPDX-License-Identifier: MIT
//
// Finds the units of a build: each .gcno file and the .gcda file that belongs to it, if it ran.
#pragma once

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
    // Looks through `folder` and all below. Returns false when it cannot be read.
    bool addBuild(const char* folder);

    // Takes counters from `folder` instead of those beside the notes. It holds what a run with
    // GCOV_PREFIX wrote: the path of the notes, or its end when GCOV_PREFIX_STRIP cut some of it.
    // Returns false when it cannot be read.
    bool addRun(const char* folder);

    // The units in the order of their paths, each once.
    std::vector<GccUnitFiles> units() const;

    // How many .gcda files belong to none of the units; valid after units().
    uint64_t strayCounters() const;

private:
    std::string countersOf(const std::string& notes) const;

    std::vector<std::string> _notes;       // absolute
    std::vector<std::string> _counters;    // beside the notes, absolute
    std::vector<std::string> _runFolders;  // absolute, with "/" at the end
    std::vector<std::string> _runCounters; // absolute
};
