// SPDX-License-Identifier: MIT
//
// Asks the compiler's own gcov program: the road for compilers whose files the block readers do not
// know.
#pragma once

#include "tools/import/gcc/GccTree.h"

#include <string>

// Runs the program `gcov` on one unit and gives what it prints: JSON documents, one on each line,
// see GcovDocument.h. Returns false when it cannot be run or fails; `problem` is set
// where that is no fault of gcov's.
bool runGcov(const char* gcov, const GccUnitFiles& files, std::string& json, std::string& problem);
