// SPDX-License-Identifier: MIT
//
// Turns the lines that blocks touch into blocks that the source view shows rightly. The view lets a
// later block replace an earlier one on its line, shows together only blocks of one function that
// follow each other and start on one line, and paints the lines behind the start of a block that
// never ran. So, for each file:
//
//   - Lines that one block alone touches, without a line of another block between them, are one
//     stretch: a block from the first of them to the last.
//   - On a line that several blocks touch each has a block of that one line.
//   - A line that several functions touch is shown by one of them, the one with the most lines
//     (else the first in file order): its own blocks and one more with the hits of the others. When
//     a function around them has no code there, two lambdas on a line, the innermost such function
//     shows the line: one block for each of them. Each basic block of the others that touches such
//     lines has one block with lines 0 for all of them.
//   - Lines past 65535 do not fit; they too are one block with lines 0.
//
// Thereby a line is red exactly when no block that touches it ran, whatever the counts are.
// docs/importing.md has examples.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

// The greatest line that a block can name.
constexpr uint32_t GreatestBlockLine = 65535;

// Fills CovFunction::_blocks of every function of `file`, sorted by start and stop line, and
// CovFile::_sums. Counts what lies past the last line in `losses`. The cost is linear in lines,
// apart from sorting each function's blocks and the lines that several functions touch.
void arrangeBlocks(CovFile& file, ImportLosses& losses);
