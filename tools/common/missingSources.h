// SPDX-License-Identifier: MIT
//
// Source files that are not where the build was made: the viewer has their numbers, not their text.
#pragma once

#include "tools/common/CoverageModel.h"

#include <string>
#include <vector>

// Says how many sources of the finished model are not there, the first ones by name, and under
// which other folder most of them are found, if any, with the option of zem-import that says so as
// a shell reads it. Looks below the current folder, the `folders` given and the ones above those.
// Empty when all are there.
std::string missingSources(const CoverageModel& model, const std::vector<std::string>& folders);
