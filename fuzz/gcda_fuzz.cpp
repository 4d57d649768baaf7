// SPDX-License-Identifier: MIT
//
// Reads counters, which stand behind the notes that they belong to: two bytes with the length of
// the notes, the notes, the counters. Then makes the blocks, which the source view must show
// rightly whatever the lines and counts are.
#include "fuzz/fuzzTarget.h"
#include "tools/common/countRun.h"
#include "tools/common/finishCoverage.h"
#include "tools/import/ModelBuilder.h"
#include "tools/import/gcc/GccUnit.h"

#include <algorithm>
#include <cstdlib>
#include <string>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char*>(data + 2), size - 2);
    const size_t length = std::min<size_t>(text.size(), data[0] << 8 | data[1]);
    const std::string counters = text.substr(length);

    SourceFilter filter;
    filter.keepSystem();
    ImportedBuild build(filter);
    GraphStore store;
    GccUnit unit(build._sources, store);
    (void)unit.readBlocks(text.substr(0, length), &counters);
    ImportLosses losses;
    std::vector<int64_t> counts;
    if (!store.solve(1, build, counts, losses)) {
        return 0;
    }
    CoverageModel model;
    buildModel(build, false, 1, model, losses);
    finishCoverage(model, NameStyle(), losses, 1);
    CoverageCounts result;
    countRun(model, counts, result, losses, 1);
    if (losses._linesShownRed + losses._linesShownBlack != 0) {
        std::abort();
    }
    return 0;
}
