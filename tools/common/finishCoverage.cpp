// SPDX-License-Identifier: MIT
#include "tools/common/finishCoverage.h"

#include "tools/common/BlockList.h"
#include "tools/common/FunctionName.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/SourcePath.h"
#include "tools/common/parallel.h"

#include <algorithm>

namespace {

constexpr int64_t GreatestCount = 2147483647; // what every view can show

void boundCount(int64_t& hits, ImportLosses& losses)
{
    if (hits < 0) {
        hits = 0;
        ++losses._negativeCounts;
    } else if (hits > GreatestCount) {
        hits = GreatestCount;
        ++losses._clampedCounts;
    }
}

bool sameBlocks(const CovBlock& a, const CovBlock& b)
{
    return a._startLine == b._startLine && a._stopLine == b._stopLine;
}

// A total order, apart from counts, for functions that are not copies of each other.
bool functionBefore(const CovFunction& a, const CovFunction& b)
{
    if (a._startLine != b._startLine) {
        return a._startLine < b._startLine;
    }
    if (a._endLine != b._endLine) {
        return a._endLine < b._endLine;
    }
    if (a._symbol != b._symbol) {
        return a._symbol < b._symbol;
    }
    if (a._blocks.size() != b._blocks.size()) {
        return a._blocks.size() < b._blocks.size();
    }
    const auto differ =
        std::mismatch(a._blocks.begin(), a._blocks.end(), b._blocks.begin(), sameBlocks);
    return differ.first != a._blocks.end() &&
           (differ.first->_startLine != differ.second->_startLine
                ? differ.first->_startLine < differ.second->_startLine
                : differ.first->_stopLine < differ.second->_stopLine);
}

void finishFile(CovFile& file, ImportLosses& losses)
{
    file._timeModified = modificationTime(file._path);
    losses._sourcesNotFound += file._timeModified == 0 ? 1 : 0;
    std::sort(file._functions.begin(), file._functions.end(), functionBefore);
    for (CovFunction& function : file._functions) {
        arrangeBlocks(function._blocks, losses);
        for (CovBlock& block : function._blocks) {
            boundCount(block._hits, losses);
        }
    }
    const auto kept = std::remove_if(file._functions.begin(), file._functions.end(),
                                     [](const CovFunction& f) { return f._blocks.empty(); });
    file._functions.erase(kept, file._functions.end());
    for (CovFunction& function : file._functions) {
        function._storedName = storedFunctionName(function._symbol, losses);
    }
}

class FinishJob : public ParallelJob
{
public:
    explicit FinishJob(CoverageModel& model) : _model(model), _losses(model._files.size()) {}

    void run(size_t item) override { finishFile(_model._files[item], _losses[item]); }

    CoverageModel& _model;
    std::vector<ImportLosses> _losses; // one for each file
};

} // namespace

void finishCoverage(CoverageModel& model, ImportLosses& losses, unsigned int nThreads)
{
    const auto named =
        std::remove_if(model._files.begin(), model._files.end(), [](const CovFile& file) {
            return file._path.size() > RecordPayload::LongestText;
        });
    losses._refusedFiles += static_cast<uint64_t>(model._files.end() - named);
    model._files.erase(named, model._files.end());
    std::sort(model._files.begin(), model._files.end(),
              [](const CovFile& a, const CovFile& b) { return a._path < b._path; });

    FinishJob job(model);
    runParallel(job, model._files.size(), nThreads);
    for (const ImportLosses& part : job._losses) {
        losses.add(part);
    }
    const auto kept = std::remove_if(model._files.begin(), model._files.end(),
                                     [](const CovFile& file) { return file._functions.empty(); });
    model._files.erase(kept, model._files.end());
}
