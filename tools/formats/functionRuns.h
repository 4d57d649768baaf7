// SPDX-License-Identifier: MIT
//
// How often a function was called, as far as blocks can say.
#pragma once

#include <cstdint>

class ZEMFuncRecord;

// The runs of the first block of `function` that has lines: maps have blocks in the order of their
// lines, and the one that a function enters comes first. Of a function that ran although that block
// did not, the runs of its block that ran most: it is no function that never ran.
uint32_t functionRuns(const ZEMFuncRecord& function);
