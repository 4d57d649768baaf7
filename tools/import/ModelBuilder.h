// SPDX-License-Identifier: MIT
//
// Makes the functions of a coverage model from the copies that the units of a build hold. A
// header's function comes from each unit that includes it, a template's once for each instance, a
// library's from its static and its shared form; and an optimised function holds lines of those
// that were put into it. In the model there is one function for one place in the source:
//
//   - Copies with one file, one range and one name (templateName()) are one function.
//   - When its copies, and what other functions hold of it, are equal, block for block, their
//     counts are added up. Otherwise it has a block for each line, which ran as often as, in each
//     copy, the block on that line that ran most.
//   - A line in the range of another function of its file belongs to the innermost one there.
//   - Lines in a file that is not the function's own, and in no function there, make an entry of
//     the function in that file.
//   - A function that the compiler made has no lines but those that it holds of others.
//
// So the model depends on the set of copies alone, not on their order. It says how the count of
// each block follows from those of a run, whatever they are: the work is done once for all runs.
// docs/importing.md has examples.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"
#include "tools/import/ImportedBuild.h"

// With `keepsInstances` functions of different symbols stay apart. Takes the copies of `build`.
// Works with `nThreads` threads; the result does not depend on their number. `model` had no files
// before.
void buildModel(ImportedBuild& build, bool keepsInstances, unsigned int nThreads,
                CoverageModel& model, ImportLosses& losses);
