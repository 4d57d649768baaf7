// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CountPlan.h"

#include <algorithm>

namespace {

// Counters above this may have run over; two of them do when they are added.
constexpr uint64_t HugeCounter = uint64_t(1) << 62;

// Puts the expressions that are needed behind those that they need.
class StepMaker
{
public:
    StepMaker(const CoverageFunction& function, CountPlan::Function& plan)
        : _function(function), _plan(plan), _places(2 * function._expressions.size(), 0)
    {}

    // Makes the steps for a counter. Returns false when it needs itself.
    bool make(uint32_t counter);
    // The value of a counter whose steps are made.
    uint32_t valueOf(uint32_t counter) const;
    // The number of counters has to be known first.
    void countCounters(uint32_t counter);

private:
    static constexpr uint32_t Open = UINT32_MAX;

    static bool isExpression(uint32_t counter)
    {
        return (counter & 2) != 0; // a difference or a sum
    }
    // An expression can be used as a difference and as a sum.
    static size_t nodeOf(uint32_t counter)
    {
        return 2 * size_t(CoverageFunction::numberOf(counter)) + (counter & 1);
    }
    bool isMade(uint32_t counter) const
    {
        return !isExpression(counter) ||
               (_places[nodeOf(counter)] != 0 && _places[nodeOf(counter)] != Open);
    }
    bool isOpen(uint32_t counter) const
    {
        return isExpression(counter) && _places[nodeOf(counter)] == Open;
    }

    const CoverageFunction& _function;
    CountPlan::Function& _plan;
    std::vector<uint32_t> _places; // of the nodes' steps, from 1; 0: not there yet
    std::vector<uint32_t> _stack;
};

uint32_t StepMaker::valueOf(uint32_t counter) const
{
    if (isExpression(counter)) {
        return _plan._nCounters + _places[nodeOf(counter)];
    }
    return CoverageFunction::tagOf(counter) == CoverageFunction::Zero
               ? 0
               : CoverageFunction::numberOf(counter) + 1;
}

void StepMaker::countCounters(uint32_t counter)
{
    if (CoverageFunction::tagOf(counter) == CoverageFunction::Counter) {
        _plan._nCounters = std::max(_plan._nCounters, CoverageFunction::numberOf(counter) + 1);
    }
}

bool StepMaker::make(uint32_t counter)
{
    if (isMade(counter)) {
        return true;
    }
    _stack.assign(1, counter);
    while (!_stack.empty()) {
        const uint32_t top = _stack.back();
        const CoverageExpression& expression =
            _function._expressions[CoverageFunction::numberOf(top)];
        uint32_t& place = _places[nodeOf(top)];
        if (place == 0) {
            place = Open;
            for (const uint32_t needed : {expression._left, expression._right}) {
                if (isOpen(needed)) {
                    return false;
                }
                if (!isMade(needed)) {
                    _stack.push_back(needed);
                }
            }
            continue;
        }
        _stack.pop_back();
        if (place != Open) {
            continue; // was needed twice
        }
        if (!isMade(expression._left) || !isMade(expression._right)) {
            return false;
        }
        _plan._steps.push_back({valueOf(expression._left), valueOf(expression._right),
                                CoverageFunction::tagOf(top) == CoverageFunction::Sum});
        place = static_cast<uint32_t>(_plan._steps.size());
    }
    return true;
}

} // namespace

bool CountPlan::make(const CoverageFunction& function, const std::vector<uint32_t>& counters,
                     Function& plan)
{
    plan._nCounters = 0;
    plan._steps.clear();
    plan._blocks.clear();
    StepMaker maker(function, plan);
    for (const CoverageExpression& expression : function._expressions) {
        maker.countCounters(expression._left);
        maker.countCounters(expression._right);
    }
    for (const uint32_t counter : counters) {
        maker.countCounters(counter);
    }
    for (const uint32_t counter : counters) {
        if (!maker.make(counter)) {
            return false;
        }
        plan._blocks.push_back(maker.valueOf(counter));
    }
    return true;
}

void CountPlan::reserve(size_t functions)
{
    _functions.reserve(functions);
    _keys.reserve(functions);
    _names.reserve(functions);
}

uint32_t CountPlan::add(const Function& plan)
{
    return add(plan._name, plan._hash, plan._nCounters, plan._steps.data(), plan._steps.size(),
               plan._blocks.data(), plan._blocks.size());
}

uint32_t CountPlan::add(uint64_t name, uint64_t hash, uint32_t nCounters, const Step* steps,
                        size_t nSteps, const uint32_t* blocks, size_t nBlocks)
{
    const auto key = _keys.emplace(Key(name, hash), static_cast<uint32_t>(_keys.size()));
    if (key.second) {
        _names.insert(name);
    }
    _functions.push_back({key.first->second, nCounters, _steps.size(), _blocks.size()});
    _steps.insert(_steps.end(), steps, steps + nSteps);
    _blocks.insert(_blocks.end(), blocks, blocks + nBlocks);
    return static_cast<uint32_t>(_functions.back()._firstBlock);
}

uint32_t CountPlan::findKey(uint64_t name, uint64_t hash) const
{
    const auto found = _keys.find(Key(name, hash));
    return found == _keys.end() ? NoKey : found->second;
}

uint64_t CountPlan::evaluate(size_t first, size_t last,
                             const std::vector<const uint64_t*>& counters,
                             const std::vector<uint32_t>& nCounters, int64_t* counts) const
{
    std::vector<uint64_t> values;
    uint64_t tooFew = 0;
    for (size_t i = first; i < last; ++i) {
        const Entry& entry = _functions[i];
        const bool isLast = i + 1 == _functions.size();
        const size_t endStep = isLast ? _steps.size() : _functions[i + 1]._firstStep;
        const size_t endBlock = isLast ? _blocks.size() : _functions[i + 1]._firstBlock;
        const uint64_t* own = counters[entry._key];
        if (own == nullptr || nCounters[entry._key] < entry._nCounters) {
            tooFew += own == nullptr ? 0 : 1;
            std::fill(counts + entry._firstBlock, counts + endBlock, 0);
            continue;
        }
        values.clear();
        values.push_back(0);
        values.insert(values.end(), own, own + entry._nCounters);
        for (size_t step = entry._firstStep; step < endStep; ++step) {
            const uint64_t left = values[_steps[step]._left];
            const uint64_t right = values[_steps[step]._right];
            values.push_back(_steps[step]._isSum ? left + right : left - right);
        }
        const bool isHuge = std::any_of(own, own + entry._nCounters,
                                        [](uint64_t counter) { return counter >= HugeCounter; });
        for (size_t block = entry._firstBlock; block < endBlock; ++block) {
            const auto value = static_cast<int64_t>(values[_blocks[block]]);
            counts[block] = value < 0 && isHuge ? INT64_MAX : value;
        }
    }
    return tooFew;
}
