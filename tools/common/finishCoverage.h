// SPDX-License-Identifier: MIT
//
// The last two steps of every import: put the model into the order and the bounds of the data
// files, then write it.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <string>

// Sorts files by path and functions by place and symbol, arranges the blocks (BlockList.h), makes
// the stored names (FunctionName.h), takes the sources' modification times and keeps counts within
// 0 to 2147483647. Functions without blocks and files without functions are taken out. Works with
// `nThreads` threads; the result does not depend on their number.
void finishCoverage(CoverageModel& model, ImportLosses& losses, unsigned int nThreads);

// Writes `stem`.map, `stem`.log and `stem`.losses, each as a temporary file that takes its name
// when it is complete. Every file of the model is in both. The log names the map by its absolute
// path. REQUIRES: finishCoverage() has run.
// Returns 0, or a code of qipVLRecFile and in `failure` which file it was. A model without files is
// not written: -11.
[[nodiscard]] int writeCoverage(const CoverageModel& model, const ImportLosses& losses,
                                const std::string& stem, std::string& failure);
