// SPDX-License-Identifier: MIT
//
// How the counts of all blocks follow from the counters of a run. Made once for a build; a run then
// costs a few additions for each block. Counters belong to a function by the hashes of its name and
// of its structure.
#pragma once

#include "tools/import/llvm/CoverageFunction.h"
#include "tools/import/llvm/MixedHash.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class CountPlan
{
public:
    static constexpr uint32_t NoKey = UINT32_MAX;

    // One step: the sum or the difference of two values. Value 0 is zero, values 1 to n are the
    // function's counters 0 to n - 1, then come the results of the steps.
    struct Step
    {
        uint32_t _left = 0;
        uint32_t _right = 0;
        bool _isSum = false;
    };

    // The plan of one function.
    struct Function
    {
        uint64_t _name = 0; // hashes
        uint64_t _hash = 0;
        uint32_t _nCounters = 0; // that it needs
        std::vector<Step> _steps;
        std::vector<uint32_t> _blocks; // values
    };

    // Fills `plan` with what gives `counters` of `function`, one block for each. Returns false when
    // its expressions need themselves. The cost is linear; nothing depends on the numbers of its
    // counters, which are not believed.
    static bool make(const CoverageFunction& function, const std::vector<uint32_t>& counters,
                     Function& plan);

    // Makes room for so many functions in all.
    void reserve(size_t functions);

    // Takes a function's plan. Returns the place of its first block among all counts.
    uint32_t add(const Function& plan);

    // The same with steps and blocks of many functions behind each other: the `nSteps` at `steps`
    // and the `nBlocks` at `blocks`.
    uint32_t add(uint64_t name, uint64_t hash, uint32_t nCounters, const Step* steps, size_t nSteps,
                 const uint32_t* blocks, size_t nBlocks);

    // The number of counts that a run has.
    size_t counts() const { return _blocks.size(); }
    size_t functions() const { return _functions.size(); }
    // Of the different pairs of hashes, from 0.
    size_t keys() const { return _keys.size(); }

    // The key of a function with these hashes, NoKey when there is none.
    uint32_t findKey(uint64_t name, uint64_t hash) const;
    // Whether any function has this name.
    bool knowsName(uint64_t name) const { return _names.count(name) != 0; }

    // Fills counts[] of the functions `first` to `last` - 1. `counters` has for each key where its
    // counters are, null for none, and `nCounters` how many. A function that needs more than there
    // are gets zeros. Returns how many functions did.
    uint64_t evaluate(size_t first, size_t last, const std::vector<const uint64_t*>& counters,
                      const std::vector<uint32_t>& nCounters, int64_t* counts) const;

private:
    struct Entry
    {
        uint32_t _key;
        uint32_t _nCounters;
        size_t _firstStep;
        size_t _firstBlock;
    };
    using Key = std::pair<uint64_t, uint64_t>; // hashes

    std::vector<Entry> _functions;
    std::vector<Step> _steps;
    std::vector<uint32_t> _blocks; // values
    std::unordered_map<Key, uint32_t, MixedHash> _keys;
    std::unordered_set<uint64_t, MixedHash> _names;
};
