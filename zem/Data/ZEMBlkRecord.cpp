// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMBlkRecord.h"

#include "zem/Data/ZEMFuncRecord.h"

ZEMBlkRecord::ZEMBlkRecord(ZEMFuncRecord* owner)
    : ZEMRecord(owner), _startLine(0), _stopLine(0), _nHits(0)
{}
