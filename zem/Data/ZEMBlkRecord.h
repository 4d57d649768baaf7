// SPDX-License-Identifier: MIT
//
// One basic block. There are millions of them, so it is 16 bytes and has no virtual functions.
#pragma once

#include "zem/Data/ZEMRecord.h"

#include <cstdint>

class ZEMFuncRecord;

class ZEMBlkRecord : public ZEMRecord
{
public:
    ZEMBlkRecord() : _startLine(0), _stopLine(0), _nHits(0) {}
    explicit ZEMBlkRecord(ZEMFuncRecord* owner);

    uint16_t _startLine; // first source line, from 1; 0 is unknown
    uint16_t _stopLine;  // last source line, inclusive
    uint32_t _nHits;     // runs, summed over all logs merged so far
};
