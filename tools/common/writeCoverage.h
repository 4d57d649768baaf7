// SPDX-License-Identifier: MIT
//
// The last step of every import: writes the finished model as files that cannot lie, whatever
// happens meanwhile.
//
//   NAME-<digest>.map   named after its content, so that it never changes and builds do not
//                       overwrite each other's. On the disk before anything names it
//   NAME.losses         what was left out
//   NAME.log            names the map. Takes its name last, so that there is the old one or this
#pragma once

#include "tools/common/CoverageModel.h"
#include "tools/common/ImportLosses.h"

#include <string>

struct CoverageOutput
{
    std::string _folder = "."; // made when it is not there
    std::string _name = "coverage";
    bool _isRelative = false; // the log names the map as seen from the current folder
};

struct CoverageResult
{
    std::string _map;     // as the log names it
    std::string _problem; // "cannot write FILE: reason" when there are no new files
};

// Writes the model. Every file of it is in both, map and log. A map that is there with the same
// bytes is left as it is. REQUIRES: finishCoverage() has run.
// Returns false, and an older log, its map and its losses are as they were, when something cannot
// be written or the model has no files.
[[nodiscard]] bool writeCoverage(const CoverageModel& model, const ImportLosses& losses,
                                 const CoverageOutput& output, CoverageResult& result);
