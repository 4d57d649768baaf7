// SPDX-License-Identifier: MIT
//
// The step of every import behind the reading: puts the model into the order and the bounds of the
// data files. writeCoverage() comes next.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

// Sorts files by path and functions by place and symbol, arranges the blocks (BlockList.h), makes
// the stored names (FunctionName.h), takes the sources' modification times and keeps counts within
// 0 to 2147483647. Functions without blocks and files without functions are taken out. Works with
// `nThreads` threads; the result does not depend on their number.
void finishCoverage(CoverageModel& model, ImportLosses& losses, unsigned int nThreads);
