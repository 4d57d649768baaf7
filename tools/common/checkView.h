// SPDX-License-Identifier: MIT
//
// Asks the viewer's own SrcCoverage what it will draw for a file, and compares that with the counts
// that the blocks were made of. What it draws for blocks that share no lines is plain and found
// without it, which is the case of nearly all files.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <cstdint>
#include <vector>

// A line must be drawn as untested exactly when no block that touches it ran. Counts in `losses`
// each line of `file` that will not. `values` are those of the file, `counts` those of its blocks
// in the order of the map. REQUIRES: arrangeBlocks() has run. The cost is linear.
void checkView(const CovFile& file, const std::vector<uint32_t>& values,
               const std::vector<uint32_t>& counts, ImportLosses& losses);
