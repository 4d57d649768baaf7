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
    {&ImportLosses::_unreadFolders, "folders or files not read"},
    {&ImportLosses::_linkedFolders, "linked folders not looked through"},
    {&ImportLosses::_unitsNotRun, "units that never ran"},
    {&ImportLosses::_unitsAsLines, "units taken as lines from gcov"},
    {&ImportLosses::_countersWithoutUnit, "counter files without a unit"},
    {&ImportLosses::_systemFunctions, "system functions"},
    {&ImportLosses::_excludedFunctions, "excluded functions"},
    {&ImportLosses::_markedFunctions, "functions excluded by markers"},
    {&ImportLosses::_markedBlocks, "blocks excluded by markers"},
    {&ImportLosses::_sourcesNotSearched, "sources not searched for markers"},
    {&ImportLosses::_unreadSources, "sources that could not be read"},
    {&ImportLosses::_artificialFunctions, "compiler-made functions"},
    {&ImportLosses::_blocksWithoutLine, "blocks without a line"},
    {&ImportLosses::_blocksOfOtherFiles, "blocks of files left out"},
    {&ImportLosses::_linesOfOtherFiles, "lines of files left out"},
    {&ImportLosses::_linesShownRed, "lines that ran shown as untested"},
    {&ImportLosses::_linesShownBlack, "lines that never ran not shown as untested"},
    {&ImportLosses::_guessedEnds, "functions whose end is a guess (before the next one)"},
    {&ImportLosses::_linesOutsideFunctions, "lines outside functions (under the file's name)"},
    {&ImportLosses::_functionsWithoutLines, "functions without lines of their own left out"},
    {&ImportLosses::_linesWithoutNumber, "lines without a number"},
    {&ImportLosses::_unknownRecords, "records of unknown kinds"},
    {&ImportLosses::_ambiguousSources, "names of sources that several folders have"},
    {&ImportLosses::_probeUnits, "units of build system probes"},
    {&ImportLosses::_sourcesOfTwoBuilds, "sources compiled in several ways and united (static and "
                                         "shared, or two builds in one folder)"},
    {&ImportLosses::_clampedCounts, "counts clamped at 2147483647"},
    {&ImportLosses::_negativeCounts, "negative counts taken as 0"},
    {&ImportLosses::_unsolvedFunctions, "functions with unknown counts taken as 0"},
    {&ImportLosses::_damagedFunctions, "functions with a damaged record left out"},
    {&ImportLosses::_staleFunctions, "functions with counters of another state of the source "
                                     "taken as 0"},
    {&ImportLosses::_sharedCounters, "functions that share counters with one of the same name"},
    {&ImportLosses::_profilesOfOthers, "profiles of programs that are not among the inputs"},
    {&ImportLosses::_regionsOfMacros, "regions inside macros (the use of a macro is a block)"},
    {&ImportLosses::_renamedFunctions, "functions renamed"},
    {&ImportLosses::_namesWithoutTypes, "names without parameter types"},
    {&ImportLosses::_namesNotUnfolded, "names too long to unfold"},
    {&ImportLosses::_sourcesNotFound, "sources not found"},
    {&ImportLosses::_refusedFiles, "files with a path too long"},
};

constexpr size_t MostFilesInText = 3;

std::string pastLastLine(uint64_t blocks)
{
    return std::to_string(blocks) + " blocks past line 65535 (counted, not shown in the source)";
}

void append(std::string& text, const std::string& part)
{
    text += text.empty() ? "" : ", ";
    text += part;
}

} // namespace

void ImportLosses::add(const ImportLosses& other)
{
    for (const LossKind& kind : lossKinds) {
        this->*kind.count += other.*kind.count;
    }
    for (const auto& file : other._blocksPastLastLine) {
        _blocksPastLastLine[file.first] += file.second;
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
    for (const auto& file : _blocksPastLastLine) {
        out << pastLastLine(file.second) << " in " << file.first << '\n';
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
            append(result, std::to_string(this->*kind.count) + ' ' + kind.text);
        }
    }
    if (_blocksPastLastLine.size() <= MostFilesInText) {
        for (const auto& file : _blocksPastLastLine) {
            append(result, pastLastLine(file.second) + " in " + file.first);
        }
        return result;
    }
    uint64_t blocks = 0;
    for (const auto& file : _blocksPastLastLine) {
        blocks += file.second;
    }
    append(result,
           pastLastLine(blocks) + " in " + std::to_string(_blocksPastLastLine.size()) + " files");
    return result;
}
