// SPDX-License-Identifier: MIT
//
// The counters of one run, or the sum of those of several, by function. Profiles of one build have
// their functions in the same order, so which function a record is for is looked up once.
#pragma once

#include "tools/import/llvm/CountPlan.h"
#include "tools/import/llvm/RawProfile.h"

#include <cstdint>
#include <utility>
#include <vector>

class RunCounters
{
public:
    // Counters stop here, as llvm-profdata's do.
    static constexpr uint64_t GreatestCounter = UINT64_MAX - 3;

    // What add() met.
    struct Found
    {
        uint64_t _functions = 0;  // of the build
        uint64_t _otherHash = 0;  // the build has the name with another structure
        uint64_t _otherCount = 0; // had another number of counters before
    };

    // Borrows `plan` for its life.
    explicit RunCounters(const CountPlan& plan);

    // Back to no counters.
    void clear();

    // Adds those of all records of `part`, the part number `place` of its file.
    void add(const ProfilePart& part, size_t place, Found& found);

    // Fills `counts`, all of a run, with `nThreads` threads. Returns how many functions needed
    // other counters than there are; they have zeros.
    uint64_t evaluate(std::vector<int64_t>& counts, unsigned int nThreads) const;

private:
    using Name = std::pair<uint64_t, uint64_t>; // hashes

    struct Known
    {
        Name _name;
        uint32_t _key;
        bool _isOtherHash;
    };

    const Known& known(const ProfileRecord& record, std::vector<Known>& before, size_t place);
    void keep(const ProfilePart& part, const ProfileRecord& record, uint32_t key, Found& found);

    const CountPlan& _plan;
    std::vector<std::vector<Known>> _known; // of each part of the last file, by place
    std::vector<uint64_t> _counters;        // of all functions that have any
    std::vector<size_t> _starts;            // of each key's, from 1; 0: none
    std::vector<uint32_t> _nCounters;       // of each key
    std::vector<uint64_t> _more;            // of a function, to be added
};
