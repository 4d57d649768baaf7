// SPDX-License-Identifier: MIT
//
// Reads a unit's notes and solves its graphs as for a unit that never ran.
#include "fuzz/fuzzTarget.h"
#include "tools/import/gcc/GccUnit.h"

#include <string>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    SourceFilter filter;
    filter.keepSystem();
    ImportedBuild build(filter);
    GraphStore store;
    GccUnit unit(build._sources, store);
    (void)unit.readBlocks(std::string(reinterpret_cast<const char*>(data), size), nullptr);
    ImportLosses losses;
    std::vector<int64_t> counts;
    (void)store.solve(1, build, counts, losses);
    return 0;
}
