// SPDX-License-Identifier: MIT
#include "tools/import/gcc/FlowSolver.h"

namespace {

// One side of a block: the arcs that come in, or those that go out. Sums wrap around, so that no
// counter can overflow them.
struct Side
{
    uint64_t _sum = 0;
    uint32_t _unknown = 0;
    uint32_t _unknownArcs = 0; // all unknown arcs xor-ed: with one left, that arc
    uint32_t _arcs = 0;
    bool _isOpen = false; // what comes in at the entry and leaves at the exit has no arc

    bool isSettled() const { return !_isOpen && _unknown == 0; }
};

class FlowSolver
{
public:
    FlowSolver(uint32_t nBlocks, std::vector<GcnoArc>& arcs)
        : _arcs(arcs), _in(nBlocks), _out(nBlocks), _count(nBlocks), _isKnown(nBlocks)
    {}

    bool solve(std::vector<int64_t>& counts);

private:
    void enter(uint32_t index);
    void settle(uint32_t block);
    void settleLastArc(uint32_t block, Side& side);
    void arcKnown(uint32_t index, uint64_t count);

    std::vector<GcnoArc>& _arcs;
    std::vector<Side> _in;
    std::vector<Side> _out;
    std::vector<uint64_t> _count;
    std::vector<bool> _isKnown;
    bool _isClosed = false;         // what leaves at the exit comes in at the entry, along an arc
    std::vector<uint32_t> _waiting; // blocks to look at; each arc adds at most two
};

void FlowSolver::enter(uint32_t index)
{
    const GcnoArc& arc = _arcs[index];
    Side* sides[] = {&_out[arc._from], &_in[arc._to]};
    for (Side* side : sides) {
        ++side->_arcs;
        if ((arc._flags & GcnoArc::OnTree) != 0) {
            ++side->_unknown;
            side->_unknownArcs ^= index;
        } else {
            side->_sum += static_cast<uint64_t>(arc._count);
        }
    }
}

void FlowSolver::arcKnown(uint32_t index, uint64_t count)
{
    GcnoArc& arc = _arcs[index];
    arc._count = static_cast<int64_t>(count);
    Side* sides[] = {&_out[arc._from], &_in[arc._to]};
    for (Side* side : sides) {
        --side->_unknown;
        side->_unknownArcs ^= index;
        side->_sum += count;
    }
    _waiting.push_back(arc._from);
    _waiting.push_back(arc._to);
}

void FlowSolver::settleLastArc(uint32_t block, Side& side)
{
    if (!side._isOpen && side._unknown == 1) {
        arcKnown(side._unknownArcs, _count[block] - side._sum);
    }
}

void FlowSolver::settle(uint32_t block)
{
    Side& in = _in[block];
    Side& out = _out[block];
    if (!_isKnown[block]) {
        // A side without arcs says nothing while the other has some, but where all flow is there.
        if (out.isSettled() && (out._arcs != 0 || in._arcs == 0 || _isClosed)) {
            _count[block] = out._sum;
        } else if (in.isSettled() && (in._arcs != 0 || out._arcs == 0 || _isClosed)) {
            _count[block] = in._sum;
        } else {
            return;
        }
        _isKnown[block] = true;
    }
    settleLastArc(block, out);
    settleLastArc(block, in);
}

bool FlowSolver::solve(std::vector<int64_t>& counts)
{
    const auto nBlocks = static_cast<uint32_t>(_in.size());
    for (uint32_t arc = 0; arc < _arcs.size(); ++arc) {
        enter(arc);
        _isClosed = _isClosed || (_arcs[arc]._from == GcnoFunction::ExitBlock &&
                                  _arcs[arc]._to == GcnoFunction::EntryBlock);
    }
    if (nBlocks > GcnoFunction::ExitBlock && !_isClosed) {
        _in[GcnoFunction::EntryBlock]._isOpen = true;
        _out[GcnoFunction::ExitBlock]._isOpen = true;
    }
    for (uint32_t block = 0; block < nBlocks; ++block) {
        settle(block);
        while (!_waiting.empty()) {
            const uint32_t next = _waiting.back();
            _waiting.pop_back();
            settle(next);
        }
    }
    bool isSolved = true;
    counts.assign(nBlocks, 0);
    for (uint32_t block = 0; block < nBlocks; ++block) {
        isSolved = isSolved && _isKnown[block];
        counts[block] = _isKnown[block] ? static_cast<int64_t>(_count[block]) : 0;
    }
    return isSolved;
}

} // namespace

bool solveFlow(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts)
{
    return FlowSolver(nBlocks, arcs).solve(counts);
}

bool solveFlow(GcnoFunction& function, std::vector<int64_t>& counts)
{
    return solveFlow(function._nBlocks, function._arcs, counts);
}
