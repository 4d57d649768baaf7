// SPDX-License-Identifier: MIT
//
// Finds the counts of one run for the blocks of a finished model, and compares what the source view
// will show of them with what ran (checkView.h).
#pragma once

#include "tools/common/CoverageCounts.h"
#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <cstdint>
#include <vector>

// Keeps counts between 0 and this; every view can show it.
constexpr int64_t GreatestCount = 2147483647;

// What countRun() remembers of the runs of one model. What the source view shows as untested
// depends on which counts are 0 alone, and most runs of a program leave most files the same.
struct ComparedRuns
{
    struct File
    {
        bool _isThere = false;
        std::vector<uint32_t> _values; // of the last run
        uint64_t _linesShownRed = 0;
        uint64_t _linesShownBlack = 0;
    };
    std::vector<File> _files; // empty before the first run
};

// `counts` are those that the terms of the model number. Fills `result._files` and counts in
// `losses` what had to be bounded. Works with `nThreads` threads.
// `before` has been given for each run of this model, if for any; then `result` is empty or what
// was filled for the run before, whose memory and counts it uses where they are the same.
// REQUIRES: finishCoverage() has run; `counts` has all that the terms number.
void countRun(const CoverageModel& model, const std::vector<int64_t>& counts,
              CoverageCounts& result, ImportLosses& losses, unsigned int nThreads,
              ComparedRuns* before = nullptr);
