// SPDX-License-Identifier: MIT
//
// The step of every import behind the reading: puts the model into the order and the bounds of the
// data files. writeCoverage() comes next.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/FunctionName.h"
#include "tools/common/ImportLosses.h"

// Sorts files by path and functions by place and symbols, makes the blocks (BlockList.h), compares
// them with what the source view will draw (checkView.h), makes the stored names in the given style
// (FunctionName.h), and takes the sources' modification times. Functions without lines and files
// without functions are taken out. What the blocks were made of is freed. Works with `nThreads`
// threads; the result does not depend on their number.
void finishCoverage(CoverageModel& model, const NameStyle& style, ImportLosses& losses,
                    unsigned int nThreads);
