// SPDX-License-Identifier: MIT
//
// The last step of every import: writes the finished model as files.
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <string>

// Writes `stem`.map, `stem`.log and `stem`.losses, each as a temporary file that takes its name
// when it is complete. Every file of the model is in both. The log names the map by its absolute
// path. REQUIRES: finishCoverage() has run.
// Returns 0, or a code of qipVLRecFile and in `failure` which file it was. A model without files is
// not written: -11.
[[nodiscard]] int writeCoverage(const CoverageModel& model, const ImportLosses& losses,
                                const std::string& stem, std::string& failure);
