// SPDX-License-Identifier: MIT
//
// The first 64 bytes of a record file. All words are unsigned, 32 bits, big-endian.
//
//   offset  field           meaning
//        0  _magic          0x00006710
//        4  _nTotal         bytes of all records, each counted as its payload + 16
//        8  _nRecords       number of records
//       12  _userHeaderSz   bytes of the user header that follows
//       16  _firstOffset    file offset of the first record, 0 for none
//       20  _lastOffset     file offset of the last record, 0 while none has been written
//       24  _version        1
//       28  _pad            36 bytes, zero
//
// Readers do not compare magic number and version: the user header behind it does.
// docs/formats/container.md explains the format and dissects a sample.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>

class qipVLHeader
{
public:
    static constexpr int Size = 64; // bytes on disk
    static constexpr uint32_t Magic = 0x6710;
    static constexpr uint32_t Version = 1;

    // Magic number, version and `userHeaderSz` (bytes) set, all else zero.
    explicit qipVLHeader(int userHeaderSz = 0);
    virtual ~qipVLHeader();

    // Reads the header at the stream's position. Returns 0, -1 for a null stream, or -9 when there
    // are fewer than 64 bytes; the fields keep their values then.
    [[nodiscard]] virtual int read(FILE* stream);

    // Writes the header at the stream's position. Returns 0, or -10 for a null stream. A short
    // write is not told apart; pinned by qipVLHeaderTest.ShortWriteIsNotDetected.
    virtual int write(FILE* stream);

    uint32_t _magic;
    uint32_t _nTotal;
    uint32_t _nRecords;
    uint32_t _userHeaderSz;
    uint32_t _firstOffset;
    uint32_t _lastOffset;
    uint32_t _version;
    unsigned char _pad[36];
};

// Writes a title and one labelled line for each field.
std::ostream& operator<<(std::ostream& out, const qipVLHeader& header);
