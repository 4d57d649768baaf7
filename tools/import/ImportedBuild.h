// SPDX-License-Identifier: MIT
//
// What an importer says of a build: its functions, with no counts. It follows from the build alone.
#pragma once

#include "tools/import/FunctionCopy.h"
#include "tools/import/SourceTable.h"

#include <cstdint>
#include <vector>

struct ImportedBuild
{
    // Runs can count so many blocks.
    static constexpr uint32_t MostCounts = 1u << 30;

    // Borrows both for its life.
    explicit ImportedBuild(const SourceFilter& filter, const PathMap& moves = PathMap::none())
        : _sources(filter, moves)
    {}

    SourceTable _sources; // numbers the source files of the copies
    std::vector<FunctionCopy> _copies;
    uint32_t _nCounts = 0;   // that each run has; no more than MostCounts
    bool _isBoolean = false; // counts only say whether a block ran
};
