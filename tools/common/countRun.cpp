// SPDX-License-Identifier: MIT
#include "tools/common/countRun.h"

#include "qip/Support/qipAssert.h"
#include "tools/common/checkView.h"
#include "tools/common/parallel.h"

#include <algorithm>

namespace {

void addCount(int64_t& sum, int64_t count)
{
    if (__builtin_add_overflow(sum, count, &sum)) {
        sum = count > 0 ? INT64_MAX : INT64_MIN;
    }
}

uint32_t bounded(int64_t count, ImportLosses& losses)
{
    if (count < 0) {
        ++losses._negativeCounts;
        return 0;
    }
    if (count > GreatestCount) {
        ++losses._clampedCounts;
        return GreatestCount;
    }
    return static_cast<uint32_t>(count);
}

// Works out the sums of a function.
void appendValues(const std::vector<CovTerm>& terms, const std::vector<int64_t>& counts,
                  std::vector<uint32_t>& values, ImportLosses& losses)
{
    int64_t sum = 0;
    int64_t greatest = INT64_MIN;
    for (const CovTerm& term : terms) {
        qipAssert(term._count < counts.size());
        if (term._endsMaximum != 0 && term._endsSum != 0 && sum == 0 && greatest == INT64_MIN) {
            values.push_back(bounded(counts[term._count], losses));
            continue;
        }
        greatest = std::max(greatest, counts[term._count]);
        if (term._endsMaximum != 0) {
            addCount(sum, greatest);
            greatest = INT64_MIN;
        }
        if (term._endsSum != 0) {
            values.push_back(bounded(sum, losses));
            sum = 0;
        }
    }
}

// The sums of a file are of values, which are bounded. What they exceed the bound by is no loss of
// its own.
void appendSums(const std::vector<CovTerm>& terms, std::vector<uint32_t>& values)
{
    int64_t sum = 0;
    uint32_t greatest = 0;
    for (const CovTerm& term : terms) {
        qipAssert(term._count < values.size());
        greatest = std::max(greatest, values[term._count]);
        if (term._endsMaximum != 0) {
            sum = std::min(sum + greatest, GreatestCount);
            greatest = 0;
        }
        if (term._endsSum != 0) {
            values.push_back(static_cast<uint32_t>(sum));
            sum = 0;
        }
    }
}

// Which of them are 0, a bit for each.
std::vector<uint64_t> zerosOf(const std::vector<uint32_t>& values)
{
    constexpr size_t WordBits = 64;
    std::vector<uint64_t> zeros(values.size() / WordBits + 1);
    for (size_t i = 0; i < values.size(); ++i) {
        zeros[i / WordBits] |= uint64_t(values[i] == 0) << i % WordBits;
    }
    return zeros;
}

// The same as checkView(), which is asked only when other counts are 0 than in the run before.
void compareFile(const CovFile& file, const std::vector<uint32_t>& values,
                 const std::vector<uint32_t>& counts, ComparedRuns::File& before,
                 ImportLosses& losses)
{
    std::vector<uint64_t> zeros = zerosOf(values);
    if (!before._isThere || before._zeros != zeros) {
        ImportLosses found;
        checkView(file, values, counts, found);
        before = {true, std::move(zeros), found._linesShownRed, found._linesShownBlack};
    }
    losses._linesShownRed += before._linesShownRed;
    losses._linesShownBlack += before._linesShownBlack;
}

void countFile(const CovFile& file, const std::vector<int64_t>& counts,
               std::vector<uint32_t>& result, ComparedRuns::File* before, ImportLosses& losses)
{
    std::vector<uint32_t> values;
    size_t nBlocks = 0;
    size_t nValues = 0;
    for (const CovFunction& function : file._functions) {
        nBlocks += function._blocks.size();
        nValues += function._nBasicBlocks;
    }
    values.reserve(nValues + file._sums.size());
    for (const CovFunction& function : file._functions) {
        appendValues(function._sums, counts, values, losses);
    }
    appendSums(file._sums, values);
    result.clear();
    result.reserve(nBlocks);
    for (const CovFunction& function : file._functions) {
        for (const CovBlock& block : function._blocks) {
            qipAssert(block._value < values.size());
            result.push_back(values[block._value]);
        }
    }
    if (before == nullptr) {
        checkView(file, values, result, losses);
    } else {
        compareFile(file, values, result, *before, losses);
    }
}

class CountJob : public ParallelJob
{
public:
    CountJob(const CoverageModel& model, const std::vector<int64_t>& counts, CoverageCounts& result,
             ComparedRuns* before)
        : _model(model), _counts(counts), _result(result), _before(before),
          _losses(model._files.size())
    {}

    void run(size_t item) override
    {
        countFile(_model._files[item], _counts, _result._files[item],
                  _before == nullptr ? nullptr : &_before->_files[item], _losses[item]);
    }

    const std::vector<ImportLosses>& losses() const { return _losses; }

private:
    const CoverageModel& _model;
    const std::vector<int64_t>& _counts;
    CoverageCounts& _result;
    ComparedRuns* const _before;
    std::vector<ImportLosses> _losses; // one for each file
};

} // namespace

void countRun(const CoverageModel& model, const std::vector<int64_t>& counts,
              CoverageCounts& result, ImportLosses& losses, unsigned int nThreads,
              ComparedRuns* before)
{
    result._files.resize(model._files.size());
    if (before != nullptr) {
        before->_files.resize(model._files.size());
    }
    CountJob job(model, counts, result, before);
    runParallel(job, model._files.size(), nThreads);
    for (const ImportLosses& part : job.losses()) {
        losses.add(part);
    }
}
