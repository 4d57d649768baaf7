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

// Gives the counts of `nBlocks` blocks from `first` on. Returns where the values behind them go.
uint32_t* addPlainValues(uint32_t first, uint32_t nBlocks, const std::vector<int64_t>& counts,
                         uint32_t* value, ImportLosses& losses)
{
    qipAssert(first <= counts.size() && nBlocks <= counts.size() - first);
    const int64_t* const begin = counts.data() + first;
    return std::transform(begin, begin + nBlocks, value, [&losses](int64_t count) {
        return count >= 0 && count <= GreatestCount ? static_cast<uint32_t>(count)
                                                    : bounded(count, losses);
    });
}

// Works out the sums of a function. Returns where the values behind them go.
uint32_t* addSums(const std::vector<CovTerm>& terms, const std::vector<int64_t>& counts,
                  uint32_t* value, ImportLosses& losses)
{
    int64_t sum = 0;
    int64_t greatest = INT64_MIN;
    for (const CovTerm& term : terms) {
        qipAssert(term._count < counts.size());
        greatest = std::max(greatest, counts[term._count]);
        if (term._endsMaximum != 0) {
            addCount(sum, greatest);
            greatest = INT64_MIN;
        }
        if (term._endsSum != 0) {
            *value++ = bounded(sum, losses);
            sum = 0;
        }
    }
    return value;
}

// The sums of a file are of values, which are bounded. What they exceed the bound by is no loss of
// its own.
void appendSums(const std::vector<CovTerm>& terms, std::vector<uint32_t>& values)
{
    int64_t sum = 0;
    for (const CovTerm& term : terms) {
        qipAssert(term._count < values.size());
        sum = std::min(sum + values[term._count], GreatestCount);
        if (term._endsSum != 0) {
            values.push_back(static_cast<uint32_t>(sum));
            sum = 0;
        }
    }
}

// The values of a file, see CovFile.
std::vector<uint32_t> valuesOf(const CovFile& file, const std::vector<int64_t>& counts,
                               ImportLosses& losses)
{
    size_t nValues = 0;
    for (const CovFunction& function : file._functions) {
        nValues += function._nBasicBlocks;
    }
    std::vector<uint32_t> values;
    values.reserve(nValues + file._sums.size());
    values.resize(nValues);
    uint32_t* value = values.data();
    for (const CovFunction& function : file._functions) {
        uint32_t* const end = function._sums.empty()
                                  ? addPlainValues(function._firstCount, function._nBasicBlocks,
                                                   counts, value, losses)
                                  : addSums(function._sums, counts, value, losses);
        qipAssert(end == value + function._nBasicBlocks);
        value = end;
    }
    appendSums(file._sums, values);
    return values;
}

void fillCounts(const CovFile& file, const std::vector<uint32_t>& values,
                std::vector<uint32_t>& result)
{
    size_t nBlocks = 0;
    for (const CovFunction& function : file._functions) {
        nBlocks += function._blocks.size();
    }
    result.resize(nBlocks);
    uint32_t* count = result.data();
    for (const CovFunction& function : file._functions) {
        for (const CovBlock& block : function._blocks) {
            qipAssert(block._value < values.size());
            *count++ = values[block._value];
        }
    }
}

// Whether the same of them are 0.
bool haveSameZeros(const std::vector<uint32_t>& values, const std::vector<uint32_t>& others)
{
    return std::equal(values.begin(), values.end(), others.begin(), others.end(),
                      [](uint32_t a, uint32_t b) { return (a == 0) == (b == 0); });
}

// Keeps what is known of the file now. The same as checkView(), which is asked only when other
// counts are 0 than in the run before.
void compareFile(const CovFile& file, std::vector<uint32_t>& values,
                 const std::vector<uint32_t>& counts, ComparedRuns::File& before)
{
    if (!before._isThere || !haveSameZeros(before._values, values)) {
        ImportLosses found;
        checkView(file, values, counts, found);
        before._linesShownRed = found._linesShownRed;
        before._linesShownBlack = found._linesShownBlack;
    }
    before._isThere = true;
    before._values.swap(values);
}

void countFile(const CovFile& file, const std::vector<int64_t>& counts,
               std::vector<uint32_t>& result, ComparedRuns::File* before, ImportLosses& losses)
{
    std::vector<uint32_t> values = valuesOf(file, counts, losses);
    if (before == nullptr) {
        fillCounts(file, values, result);
        checkView(file, values, result, losses);
        return;
    }
    if (!before->_isThere || result.empty() || before->_values != values) {
        fillCounts(file, values, result);
        compareFile(file, values, result, *before);
    }
    losses._linesShownRed += before->_linesShownRed;
    losses._linesShownBlack += before->_linesShownBlack;
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
