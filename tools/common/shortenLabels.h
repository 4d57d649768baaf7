// SPDX-License-Identifier: MIT
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/FunctionName.h"

// Gives the functions of a model, which have their names, shorter ones where the function report
// would be too wide (see ShortLabels.h); all of a class that has one. Nothing to do with full
// names.
void shortenLabels(CoverageModel& model, const NameStyle& style);
