// SPDX-License-Identifier: MIT
//
// Asks the viewer's own SrcCoverage what it will draw for a file, and compares that with the counts
// that the blocks were made of.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

// A line must be drawn as untested exactly when no block that touches it ran. Counts in `losses`
// each line of `file` that will not. REQUIRES: arrangeBlocks() has run. The cost is linear.
void checkView(const CovFile& file, ImportLosses& losses);
