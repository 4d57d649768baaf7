// SPDX-License-Identifier: MIT
#include "tools/import/llvm/RunCounters.h"

#include "tools/common/parallel.h"

#include <algorithm>
#include <atomic>

namespace {

constexpr size_t Slice = 8192; // functions

class EvaluateJob : public ParallelJob
{
public:
    EvaluateJob(const CountPlan& plan, const std::vector<const uint64_t*>& counters,
                const std::vector<uint32_t>& nCounters, int64_t* counts)
        : _plan(plan), _counters(counters), _nCounters(nCounters), _counts(counts)
    {}
    void run(size_t item) override
    {
        _tooFew += _plan.evaluate(item * Slice, std::min((item + 1) * Slice, _plan.functions()),
                                  _counters, _nCounters, _counts);
    }
    uint64_t tooFew() const { return _tooFew; }

private:
    const CountPlan& _plan;
    const std::vector<const uint64_t*>& _counters;
    const std::vector<uint32_t>& _nCounters;
    int64_t* const _counts;
    std::atomic<uint64_t> _tooFew{0};
};

} // namespace

RunCounters::RunCounters(const CountPlan& plan)
    : _plan(plan), _starts(plan.keys()), _nCounters(plan.keys())
{}

void RunCounters::clear()
{
    _counters.clear();
    std::fill(_starts.begin(), _starts.end(), 0);
    std::fill(_nCounters.begin(), _nCounters.end(), 0);
}

const RunCounters::Known& RunCounters::known(const ProfileRecord& record,
                                             std::vector<Known>& before, size_t place)
{
    const Name name(record._name, record._hash);
    if (place == before.size()) {
        before.push_back({name, CountPlan::NoKey, false});
    } else if (before[place]._name == name) {
        return before[place];
    }
    Known& known = before[place];
    known._name = name;
    known._key = _plan.findKey(name.first, name.second);
    known._isOtherHash = known._key == CountPlan::NoKey && _plan.knowsName(name.first);
    return known;
}

void RunCounters::add(const ProfilePart& part, size_t place, Found& found)
{
    if (place >= _known.size()) {
        _known.resize(place + 1);
    }
    for (size_t i = 0; i < part._records.size(); ++i) {
        const Known& one = known(part._records[i], _known[place], i);
        found._otherHash += one._isOtherHash ? 1 : 0;
        if (one._key != CountPlan::NoKey) {
            ++found._functions;
            keep(part, part._records[i], one._key, found);
        }
    }
}

void RunCounters::keep(const ProfilePart& part, const ProfileRecord& record, uint32_t key,
                       Found& found)
{
    if (_starts[key] == 0) {
        _starts[key] = _counters.size() + 1;
        _nCounters[key] = record._nCounters;
        _counters.resize(_counters.size() + record._nCounters);
        part.readCounters(record, &_counters[_starts[key] - 1]);
        return;
    }
    if (_nCounters[key] != record._nCounters) {
        ++found._otherCount;
        return;
    }
    _more.resize(record._nCounters);
    part.readCounters(record, _more.data());
    uint64_t* sums = &_counters[_starts[key] - 1];
    for (uint32_t i = 0; i < record._nCounters; ++i) {
        const bool isOver = sums[i] > GreatestCounter || _more[i] > GreatestCounter - sums[i];
        sums[i] = isOver ? GreatestCounter : sums[i] + _more[i];
    }
}

uint64_t RunCounters::evaluate(std::vector<int64_t>& counts, unsigned int nThreads) const
{
    std::vector<const uint64_t*> counters(_starts.size(), nullptr);
    for (size_t key = 0; key < _starts.size(); ++key) {
        counters[key] = _starts[key] == 0 ? nullptr : &_counters[_starts[key] - 1];
    }
    counts.resize(_plan.counts());
    EvaluateJob job(_plan, counters, _nCounters, counts.data());
    runParallel(job, (_plan.functions() + Slice - 1) / Slice, nThreads);
    return job.tooFew();
}
