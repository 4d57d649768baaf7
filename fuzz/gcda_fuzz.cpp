// SPDX-License-Identifier: MIT
//
// Reads counters, which stand behind the notes that they belong to: two bytes with the length of
// the notes, the notes, the counters. Then arranges the blocks and bounds the counts.
#include "fuzz/fuzzTarget.h"
#include "tools/common/finishCoverage.h"
#include "tools/import/ModelBuilder.h"
#include "tools/import/gcc/GccUnit.h"

#include <algorithm>
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
    GccUnit unit(filter);
    (void)unit.readBlocks(text.substr(0, length), &counters);
    CoverageModel model;
    ModelBuilder builder(model);
    for (GccUnitFunction& entry : unit.functions()) {
        builder.add(entry._path, entry._function);
    }
    ImportLosses losses;
    finishCoverage(model, NameStyle(), losses, 1);
    return 0;
}
