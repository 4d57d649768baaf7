// SPDX-License-Identifier: MIT
#include "tools/common/BlockList.h"

#include <algorithm>
#include <queue>

namespace {

constexpr uint32_t LastLine = 65535; // a block's lines have 16 bits

struct WaitingBlock
{
    uint32_t _stopLine;
    uint32_t _place; // in the sorted list, so that equal stops stay in order

    bool operator<(const WaitingBlock& other) const // the queue gives out the greatest
    {
        return _stopLine != other._stopLine ? _stopLine > other._stopLine : _place > other._place;
    }
};

bool startsBefore(const CovBlock& a, const CovBlock& b)
{
    return a._startLine != b._startLine ? a._startLine < b._startLine : a._stopLine < b._stopLine;
}

} // namespace

void arrangeBlocks(std::vector<CovBlock>& blocks, ImportLosses& losses)
{
    const auto kept = std::remove_if(blocks.begin(), blocks.end(), [](const CovBlock& block) {
        return block._startLine > LastLine || block._stopLine > LastLine;
    });
    losses._blocksPastLastLine += static_cast<uint64_t>(blocks.end() - kept);
    blocks.erase(kept, blocks.end());
    std::stable_sort(blocks.begin(), blocks.end(), startsBefore);

    // One step for each line where a block waits; every step either gives out a waiting block or
    // passes a one-line block, so the steps are no more than the blocks.
    std::priority_queue<WaitingBlock> waiting;
    std::vector<CovBlock> arranged;
    arranged.reserve(blocks.size());
    size_t next = 0;
    uint32_t line = 0;
    while (next < blocks.size() || !waiting.empty()) {
        if (waiting.empty()) {
            line = blocks[next]._startLine;
        }
        const size_t before = arranged.size();
        for (; next < blocks.size() && blocks[next]._startLine == line; ++next) {
            if (blocks[next]._stopLine == line) {
                arranged.push_back(blocks[next]);
            } else {
                waiting.push({blocks[next]._stopLine, static_cast<uint32_t>(next)});
            }
        }
        while (!waiting.empty() && (waiting.top()._stopLine == line || arranged.size() == before)) {
            CovBlock block = blocks[waiting.top()._place];
            waiting.pop();
            if (block._startLine != line) {
                block._startLine = line;
                ++losses._adjustedBlocks;
            }
            arranged.push_back(block);
        }
        ++line;
    }
    blocks.swap(arranged);
}
