// SPDX-License-Identifier: MIT
//
// What importing does behind the reading. The source view must show the blocks rightly whatever
// lines and counts an input gives. Used by fuzz targets.
#pragma once

#include "tools/common/countRun.h"
#include "tools/common/finishCoverage.h"
#include "tools/import/Importer.h"
#include "tools/import/ModelBuilder.h"

#include <cstdlib>

inline void importAndCheck(Importer& importer)
{
    SourceFilter filter;
    filter.keepSystem();
    ImportedBuild build(filter);
    ImportLosses losses;
    if (!importer.readBuild(build, losses, 1)) {
        return;
    }
    CoverageModel model;
    buildModel(build, false, 1, model, losses);
    finishCoverage(model, NameStyle(), losses, 1);
    for (size_t i = 0; i < importer.runs(); ++i) {
        ImportedRun run;
        if (!importer.readRun(i, run, losses, 1)) {
            continue;
        }
        CoverageCounts counts;
        countRun(model, run._counts, counts, losses, 1);
    }
    if (losses._linesShownRed + losses._linesShownBlack != 0) {
        std::abort();
    }
}
