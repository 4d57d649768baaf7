// SPDX-License-Identifier: MIT
//
// Leaves out of a model what its sources mark as not to be tested (ExclusionMarkers.h).
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <iosfwd>

// Reads each source of `model` that is there and takes the marked lines out of the functions, so
// that finishCoverage(), which comes next, makes no blocks of them. Counts in `losses` the blocks
// and the functions that have no other lines, and the sources that cannot be read. A marker
// without its other end is a line on `err`; of very many only the first ones. Works with `nThreads`
// threads; the result does not depend on their number.
void excludeMarked(CoverageModel& model, ImportLosses& losses, std::ostream& err,
                   unsigned int nThreads);
