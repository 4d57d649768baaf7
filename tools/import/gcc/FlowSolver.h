// SPDX-License-Identifier: MIT
//
// Finds how often each block of a function ran. Only the arcs off a spanning tree have counters;
// what flows into a block flows out of it, and that determines the others.
#pragma once

#include "tools/import/gcc/GcnoFile.h"

#include <cstdint>
#include <vector>

// Solves one graph after the other with the same memory: a build has up to a million, most of them
// small.
class FlowSolver
{
public:
    // Fills the counts of the `arcs` on the tree from those off it, and `counts` with one number
    // for each of the `nBlocks` blocks. Returns false when the counters do not determine every
    // block; those are 0 then. The cost is linear in blocks and arcs. Damaged counters may give any
    // number, also a negative one.
    bool solve(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts);

private:
    // One side of a block: the arcs that come in, or those that go out. Sums wrap around, so that
    // no counter can overflow them.
    struct Side
    {
        uint64_t _sum = 0;
        uint32_t _unknown = 0;
        uint32_t _unknownArcs = 0; // all unknown arcs xor-ed: with one left, that arc
        uint32_t _arcs = 0;
        bool _isOpen = false; // what comes in at the entry and leaves at the exit has no arc

        bool isSettled() const { return !_isOpen && _unknown == 0; }
    };

    void enterArcs();
    void enter(uint32_t index);
    void settle(uint32_t block);
    void settleLastArc(uint32_t block, Side& side);
    void arcKnown(uint32_t index, uint64_t count);

    std::vector<GcnoArc>* _arcs = nullptr; // borrowed by solve()
    std::vector<Side> _in;
    std::vector<Side> _out;
    std::vector<uint64_t> _count;
    std::vector<bool> _isKnown;
    bool _isClosed = false;         // what leaves at the exit comes in at the entry, along an arc
    std::vector<uint32_t> _waiting; // blocks to look at; each arc adds at most two
};

// The same for one graph.
bool solveFlow(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts);

// The same for a function as it was read.
bool solveFlow(GcnoFunction& function, std::vector<int64_t>& counts);
