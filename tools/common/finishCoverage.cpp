// SPDX-License-Identifier: MIT
#include "tools/common/finishCoverage.h"

#include "tools/common/BlockList.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/SourcePath.h"
#include "tools/common/parallel.h"
#include "tools/common/shortenLabels.h"

#include <algorithm>
#include <utility>

namespace {

bool lineBefore(const CovLine& a, const CovLine& b)
{
    return a._block != b._block ? a._block < b._block : a._line < b._line;
}

// A total order, apart from sums. Functions that are equal in all of this stay in their order.
bool functionBefore(const CovFunction& a, const CovFunction& b)
{
    if (a._startLine != b._startLine) {
        return a._startLine < b._startLine;
    }
    if (a._endLine != b._endLine) {
        return a._endLine < b._endLine;
    }
    if (a._symbols != b._symbols) {
        return a._symbols < b._symbols;
    }
    return std::lexicographical_compare(a._lines.begin(), a._lines.end(), b._lines.begin(),
                                        b._lines.end(), lineBefore);
}

void nameFunction(CovFunction& function, const NameStyle& style, ImportLosses& losses)
{
    std::vector<FunctionText> texts;
    texts.swap(function._texts);
    for (size_t i = texts.size(); i < function._symbols.size(); ++i) {
        texts.push_back(readFunctionText(function._symbols[i]));
    }
    std::vector<std::string>().swap(function._symbols);
    FunctionText text = unitedText(texts, losses);
    function._storedName = storedNameOf(text, style, losses);
    if (mayNeedShortLabel(function._storedName, style)) {
        function._texts.push_back(std::move(text));
    }
}

void finishFile(CovFile& file, const NameStyle& style, ImportLosses& losses)
{
    file._timeModified = modificationTime(file._path);
    losses._sourcesNotFound += file._timeModified == 0 ? 1 : 0;
    const auto kept = std::remove_if(file._functions.begin(), file._functions.end(),
                                     [](const CovFunction& f) { return f._lines.empty(); });
    file._functions.erase(kept, file._functions.end());
    if (!std::is_sorted(file._functions.begin(), file._functions.end(), functionBefore)) {
        std::stable_sort(file._functions.begin(), file._functions.end(), functionBefore);
    }
    arrangeBlocks(file, losses);
    for (CovFunction& function : file._functions) {
        nameFunction(function, style, losses);
    }
}

class FinishJob : public ParallelJob
{
public:
    FinishJob(CoverageModel& model, const NameStyle& style)
        : _model(model), _style(style), _losses(model._files.size())
    {}

    void run(size_t item) override { finishFile(_model._files[item], _style, _losses[item]); }

    CoverageModel& _model;
    const NameStyle& _style;
    std::vector<ImportLosses> _losses; // one for each file
};

} // namespace

void finishCoverage(CoverageModel& model, const NameStyle& style, ImportLosses& losses,
                    unsigned int nThreads)
{
    const auto named =
        std::remove_if(model._files.begin(), model._files.end(), [](const CovFile& file) {
            return file._path.size() > RecordPayload::LongestText;
        });
    losses._refusedFiles += static_cast<uint64_t>(model._files.end() - named);
    model._files.erase(named, model._files.end());
    std::sort(model._files.begin(), model._files.end(),
              [](const CovFile& a, const CovFile& b) { return a._path < b._path; });

    FinishJob job(model, style);
    runParallel(job, model._files.size(), nThreads);
    for (const ImportLosses& part : job._losses) {
        losses.add(part);
    }
    const auto kept = std::remove_if(model._files.begin(), model._files.end(),
                                     [](const CovFile& file) { return file._functions.empty(); });
    model._files.erase(kept, model._files.end());
    shortenLabels(model, style, nThreads);
}
