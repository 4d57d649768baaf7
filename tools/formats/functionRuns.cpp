// SPDX-License-Identifier: MIT
#include "tools/formats/functionRuns.h"

#include "zem/Data/ZEMFuncRecord.h"

#include <algorithm>

uint32_t functionRuns(const ZEMFuncRecord& function)
{
    const ZEMBlkRecord* const begin = function._blockMap;
    const ZEMBlkRecord* const end = begin + function._nBlocks;
    const ZEMBlkRecord* const entry = std::find_if(begin, end, [](const ZEMBlkRecord& block) {
        return block._startLine != 0 && block._stopLine != 0;
    });
    if (entry != end && entry->_nHits != 0) {
        return entry->_nHits;
    }
    uint32_t most = 0;
    for (const ZEMBlkRecord* block = begin; block != end; ++block) {
        most = std::max(most, block->_nHits);
    }
    return most;
}
