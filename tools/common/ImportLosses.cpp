// SPDX-License-Identifier: MIT
#include "tools/common/ImportLosses.h"

#include <algorithm>
#include <ostream>

namespace {

struct LossKind
{
    uint64_t ImportLosses::*count;
    const char* text;
};

const LossKind lossKinds[] = {
    {&ImportLosses::_failedUnits, "units with an error"},
    {&ImportLosses::_unreadFolders, "folders not read"},
    {&ImportLosses::_unitsNotRun, "units that never ran"},
    {&ImportLosses::_unitsAsLines, "units taken as lines from gcov"},
    {&ImportLosses::_countersWithoutUnit, "counter files without a unit"},
    {&ImportLosses::_systemFunctions, "system functions"},
    {&ImportLosses::_excludedFunctions, "excluded functions"},
    {&ImportLosses::_artificialFunctions, "compiler-made functions"},
    {&ImportLosses::_blocksWithoutLine, "blocks without a line"},
    {&ImportLosses::_blocksOfOtherFiles, "blocks of included text"},
    {&ImportLosses::_linesOfOtherFiles, "lines of included text"},
    {&ImportLosses::_blocksPastLastLine, "blocks past line 65535"},
    {&ImportLosses::_adjustedBlocks, "blocks started a line later"},
    {&ImportLosses::_clampedCounts, "counts clamped at 2147483647"},
    {&ImportLosses::_negativeCounts, "negative counts taken as 0"},
    {&ImportLosses::_unsolvedFunctions, "functions with unknown counts taken as 0"},
    {&ImportLosses::_renamedFunctions, "functions renamed"},
    {&ImportLosses::_namesWithoutTypes, "names without parameter types"},
    {&ImportLosses::_sourcesNotFound, "sources not found"},
    {&ImportLosses::_refusedFiles, "files with a path too long"},
};

} // namespace

void ImportLosses::add(const ImportLosses& other)
{
    for (const LossKind& kind : lossKinds) {
        this->*kind.count += other.*kind.count;
    }
    _mostRuns = std::max(_mostRuns, other._mostRuns);
}

void ImportLosses::write(std::ostream& out) const
{
    for (const LossKind& kind : lossKinds) {
        if (this->*kind.count != 0) {
            out << this->*kind.count << ' ' << kind.text << '\n';
        }
    }
    if (_mostRuns > 1) {
        out << "the counters add up " << _mostRuns << " runs\n";
    }
}

std::string ImportLosses::text() const
{
    std::string result;
    for (const LossKind& kind : lossKinds) {
        if (this->*kind.count != 0) {
            result += result.empty() ? "" : ", ";
            result += std::to_string(this->*kind.count) + ' ' + kind.text;
        }
    }
    return result;
}
