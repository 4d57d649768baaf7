// SPDX-License-Identifier: MIT
//
// One function of a source file: its name as the map file stores it, its lines, and its blocks in
// map-file order. The index of a block is its number in the function; counts of a log file are
// matched to blocks by this order.
//
// In a map file, big-endian:
//
//   size  field
//      2  name length M, the terminating zero included
//      M  name
//      4  start line
//      4  end line
//      4  number of blocks B
//   4 * B  for each block: 2 bytes start line, 2 bytes stop line
#pragma once

#include "zem/Data/ZEMBlkRecord.h"
#include "zem/Data/ZEMRecord.h"

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <vector>

class ZEMFileRecord;

class ZEMFuncRecord : public ZEMRecord
{
public:
    explicit ZEMFuncRecord(ZEMFileRecord* owner);
    virtual ~ZEMFuncRecord();

    // Reads one function entry into an array of blocks of its own. Returns 0; -10 for a null
    // stream; -9 when the stream ends too early; -7. After a failure the record keeps what it had
    // read so far, and `_nBlocks` is the number of blocks that it has.
    [[nodiscard]] int read(FILE* stream);

    // The two halves of read(), for a file that keeps the blocks of all its functions in one array.
    // readLines() reads the entry and appends each block's lines, one word (start, stop) a block,
    // to `lines`. setBlocks() then makes `_nBlocks` blocks at `blocks`, borrowed, from `lines`.
    [[nodiscard]] int readLines(FILE* stream, std::vector<uint32_t>& lines);
    void setBlocks(ZEMBlkRecord* blocks, const uint32_t* lines);

    char* _funcname;     // owned, null before reading
    uint32_t _startLine; // from 1
    uint32_t _endLine;   // inclusive
    uint32_t _nBlocks;
    ZEMBlkRecord* _blockMap; // `_nBlocks` blocks; null when there are none

private:
    ZEMBlkRecord* _ownBlocks; // when read() made them; else the file owns the array
};

// Writes name, lines and blocks as text.
std::ostream& operator<<(std::ostream& out, ZEMFuncRecord& func);
