// SPDX-License-Identifier: MIT
//
// Finds how often each block of a function ran. Only the arcs off a spanning tree have counters;
// what flows into a block flows out of it, and that determines the others.
#pragma once

#include "tools/import/gcc/GcnoFile.h"

#include <vector>

// Fills the counts of the `arcs` on the tree from those off it, and `counts` with one number for
// each of the `nBlocks` blocks. Returns false when the counters do not determine every block; those
// are 0 then. The cost is linear in blocks and arcs. Damaged counters may give any number, also a
// negative one.
bool solveFlow(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts);

// The same for a function as it was read.
bool solveFlow(GcnoFunction& function, std::vector<int64_t>& counts);
