// SPDX-License-Identifier: MIT
//
// What one run did in one source file. The payload of a log file's record, big-endian:
//
//   size   field
//      2   length N1, the terminating zero included
//     N1   path of the source file
//      2   length N2, the terminating zero included
//     N2   path of the map file that describes it
//      4   modification time of the source file
//      4   not 0 when the counts only say whether a block ran
//      4   number of blocks B
//   4 * B  hits of each block, in the map file's order, counting through the functions
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <memory_resource>

class ZEMLogFileRecord
{
public:
    // Keeps what it reads in `memory`, borrowed, which frees it: a log file has so many records
    // that freeing one by one would show.
    explicit ZEMLogFileRecord(std::pmr::memory_resource& memory);
    virtual ~ZEMLogFileRecord() = default;
    ZEMLogFileRecord(const ZEMLogFileRecord&) = delete;
    ZEMLogFileRecord& operator=(const ZEMLogFileRecord&) = delete;

    // Reads one payload. Returns 0; -10 for a null stream; -9 when the stream ends too early (a
    // path that was cut short is null then); -7.
    [[nodiscard]] int read(FILE* stream);

    char* _filename; // in the memory given, null before reading
    char* _mapfile;  // likewise
    uint32_t _timeModified;
    uint32_t _isBoolean; // carried only: counts are added the same way
    uint32_t _nBlocks;
    uint32_t* _hits; // `_nBlocks` counts, in the same memory; null when there are none

private:
    int readPath(FILE* stream, char*& path);

    std::pmr::memory_resource& _memory;
};

// Writes both paths as text.
std::ostream& operator<<(std::ostream& out, ZEMLogFileRecord& record);
