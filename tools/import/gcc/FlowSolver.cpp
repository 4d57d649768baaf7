// SPDX-License-Identifier: MIT
#include "tools/import/gcc/FlowSolver.h"

void FlowSolver::enter(uint32_t index)
{
    const GcnoArc& arc = (*_arcs)[index];
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
    GcnoArc& arc = (*_arcs)[index];
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

void FlowSolver::enterArcs()
{
    _isClosed = false;
    for (uint32_t arc = 0; arc < _arcs->size(); ++arc) {
        enter(arc);
        _isClosed = _isClosed || ((*_arcs)[arc]._from == GcnoFunction::ExitBlock &&
                                  (*_arcs)[arc]._to == GcnoFunction::EntryBlock);
    }
}

bool FlowSolver::solve(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts)
{
    _arcs = &arcs;
    _in.assign(nBlocks, Side());
    _out.assign(nBlocks, Side());
    _count.assign(nBlocks, 0);
    _isKnown.assign(nBlocks, false);
    enterArcs();
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

bool solveFlow(uint32_t nBlocks, std::vector<GcnoArc>& arcs, std::vector<int64_t>& counts)
{
    return FlowSolver().solve(nBlocks, arcs, counts);
}

bool solveFlow(GcnoFunction& function, std::vector<int64_t>& counts)
{
    return solveFlow(function._nBlocks, function._arcs, counts);
}
