// SPDX-License-Identifier: MIT
//
// Takes the bytes for what llvm-cov export writes, and makes the functions of it.
#include "fuzz/fuzzTarget.h"
#include "tools/import/llvm/CoverageBuild.h"
#include "tools/import/llvm/ExportedImage.h"
#include "tools/import/llvm/RunCounters.h"

#include <cstdlib>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    auto image = std::make_unique<CoverageImage>();
    ExportedImage exported(image.get());
    LlvmExport document(exported);
    // In two pieces, somewhere.
    const auto* bytes = reinterpret_cast<const char*>(data);
    if (!document.receive(bytes, size / 3) ||
        !document.receive(bytes + size / 3, size - size / 3)) {
        return 0;
    }
    SourceFilter filter;
    filter.keepSystem();
    ImportedBuild build(filter);
    ImportLosses losses;
    CoverageBuild functions;
    functions.add(std::move(image));
    functions.read(build, losses, 1);
    RunCounters counters(functions.plan());
    RunCounters::Found found;
    counters.add(exported.part(), 0, found);
    std::vector<int64_t> counts;
    (void)counters.evaluate(counts, 1);
    if (counts.size() != build._nCounts) {
        std::abort();
    }
    return 0;
}
