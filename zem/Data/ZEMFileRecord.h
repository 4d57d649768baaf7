// SPDX-License-Identifier: MIT
//
// One instrumented source file with its functions. The payload of a map file's record, big-endian:
//
//   size  field
//      2  name length N, the terminating zero included
//      N  path of the source file
//      4  its modification time
//      4  number of blocks in the file
//      4  number of functions F
//    ...  F function entries, see ZEMFuncRecord.h
#pragma once

#include "qip/Support/List.h"
#include "zem/Data/ZEMFuncRecord.h"
#include "zem/Data/ZEMRecord.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <vector>

class ZEMFileRecord : public ZEMRecord
{
public:
    ZEMFileRecord();
    // Deletes the functions and their blocks.
    virtual ~ZEMFileRecord();

    // Reads one payload in place of what the record held. Returns 0; -10 for a null stream; -9 when
    // the stream ends too early; -7. After a failure the functions read so far are in the list; a
    // name that was cut short is null.
    [[nodiscard]] int read(FILE* stream);

    char* _filename;                // owned, null before reading
    uint32_t _timeModified;         // as the map file stores it, not interpreted
    uint32_t _nBlocks;              // as the map file stores it, not counted again
    uint32_t _nFuncs;               // likewise: walk the list, not the number
    List<ZEMFuncRecord*> _funcList; // owned, in file order

    // The blocks of all functions, in file order: `placedBlocks()` of them in one array, of which
    // each function's `_blockMap` is a slice. This is the order of a log file's counts.
    ZEMBlkRecord* blocks() { return _blocks; }
    size_t placedBlocks() const { return _nPlaced; }

private:
    void clear();
    int readFunctions(FILE* stream, std::vector<uint32_t>& lines);
    int placeBlocks(const std::vector<uint32_t>& lines);

    ZEMBlkRecord* _blocks; // owned, null when there are none
    size_t _nPlaced;
};

// Writes the name and every function as text.
std::ostream& operator<<(std::ostream& out, ZEMFileRecord& file);
