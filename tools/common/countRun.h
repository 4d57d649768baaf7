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

// `counts` are those that the terms of the model number. Fills `result._files` and counts in
// `losses` what had to be bounded. Works with `nThreads` threads.
// REQUIRES: finishCoverage() has run; `counts` has all that the terms number.
void countRun(const CoverageModel& model, const std::vector<int64_t>& counts,
              CoverageCounts& result, ImportLosses& losses, unsigned int nThreads);
