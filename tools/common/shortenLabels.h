// SPDX-License-Identifier: MIT
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/FunctionName.h"

// Whether shortenLabels() may give the function with this stored name another one. It needs the
// function's united text then, as the only one in CovFunction::_texts.
bool mayNeedShortLabel(const std::string& stored, const NameStyle& style);

// Gives the functions of a model, which have their names, shorter ones where the function report
// would be too wide (see ShortLabels.h); all of a class that has one. Frees the texts. Nothing to
// do with full names.
void shortenLabels(CoverageModel& model, const NameStyle& style, unsigned int nThreads);
