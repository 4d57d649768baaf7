// SPDX-License-Identifier: MIT
//
// A build that is read once, and the counters of several runs of it: those that each left in a
// folder of its own, written with GCOV_PREFIX.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/gcc/GccTree.h"
#include "tools/import/gcc/GccUnit.h"
#include "tools/import/gcc/GraphStore.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class GccRuns
{
public:
    // `build` has the folders of the build and no run. Borrows `gcov` for its life.
    GccRuns(const GccTree& build, const char* gcov) : _build(build), _gcov(gcov) {}

    // Reads the notes of the units; `takesLines` asks gcov for all of them. Borrows `sources` for
    // its life.
    void readNotes(const std::vector<GccUnitFiles>& units, bool takesLines, SourceTable& sources,
                   ImportLosses& losses, unsigned int nThreads);

    // Adds the counters of the run in `folder` to the store. Returns false, with a line on the
    // standard error stream, when it holds none of the build.
    bool addRun(const char* folder, ImportLosses& losses, unsigned int nThreads);

    // When the units of the run that was added last wrote their counters, in seconds since the
    // epoch: the last of them.
    uint32_t executionTime() const { return _executionTime; }

    // How many units have counters of no run that was added.
    uint64_t unitsNotRun() const;

    // The greatest number of runs that the counters of one unit add up, over all that were added.
    uint64_t mostRuns() const;

    GraphStore& store() { return _store; }

private:
    struct Unit
    {
        std::string _notes;
        std::unique_ptr<GccUnit> _unit;
        bool _hasRun = false;
        uint64_t _runs = 0; // that its counters say they add up
    };

    std::vector<GccUnit*> units() const;
    void collect(ImportLosses& losses);

    const GccTree _build;
    const char* _gcov;
    GraphStore _store;
    std::vector<Unit> _units;
    uint32_t _executionTime = 0;
};
