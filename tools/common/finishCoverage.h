// SPDX-License-Identifier: MIT
//
// The step of every import behind the reading: puts the model into the order and the bounds of the
// data files. countRun() and CoverageWriter come next, for each run.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/FunctionName.h"
#include "tools/common/ImportLosses.h"

// Sorts files by path and functions by place and symbols, makes the blocks (BlockList.h) and the
// stored names in the given style (FunctionName.h), and takes the sources' modification times.
// Functions without lines and files without functions are taken out. Works with `nThreads` threads;
// the result does not depend on their number.
void finishCoverage(CoverageModel& model, const NameStyle& style, ImportLosses& losses,
                    unsigned int nThreads);
