// SPDX-License-Identifier: MIT
//
// The counts of one run of a build, for the blocks of its map.
#pragma once

#include <cstdint>
#include <vector>

struct CoverageCounts
{
    uint32_t _executionTime = 0; // seconds since the epoch, 0 when it is not known
    // Of each file of the model the counts of its blocks, in the order of the map; bounded, see
    // countRun.h.
    std::vector<std::vector<uint32_t>> _files;
};
