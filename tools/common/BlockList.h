// SPDX-License-Identifier: MIT
//
// Puts the blocks of one function into the order in which the source view reads them. Depends on
// the blocks' lines and places alone, never on counts.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

// Sorts by (start, stop), equal ones in the order given, and moves starts so that a block of
// several lines has its start line to itself: the source view shows blocks with one start line
// together and paints only the first one's other lines. Of several long blocks with one start line
// the one that ends first keeps it; the others start on the next line that is free, and one that
// reaches its own stop line on the way stays there. Blocks with a line above 65535 are taken out.
// Counts both in `losses`.
void arrangeBlocks(std::vector<CovBlock>& blocks, ImportLosses& losses);
