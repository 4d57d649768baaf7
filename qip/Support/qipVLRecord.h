// SPDX-License-Identifier: MIT
//
// The header in front of each record of a record file. All words are unsigned, 32 bits, big-endian.
//
//   offset  field      meaning
//        0  _nextRec   file offset of the next record's header, 0 in the last record
//        4  _size      payload bytes
//        8  _realSize  payload bytes again; readers pass it on
//       12  _tag       record type, the subclass of qipVLRecFile gives it a meaning
//
// The payload of `_size` bytes follows.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>

class qipVLRecord
{
public:
    static constexpr int HeaderSize = 16; // bytes on disk

    qipVLRecord();

    // Reads the 16 bytes at the stream's position; `_data` stays as it is. Returns 0, or -1 for a
    // null stream and when there are fewer than 16 bytes.
    [[nodiscard]] int read(FILE* stream);

    // Writes the four words at the stream's position. Returns 0, or -3.
    [[nodiscard]] int write(FILE* stream) const;

    uint32_t _nextRec;
    uint32_t _size;
    uint32_t _realSize;
    uint32_t _tag;
    const char* _data; // the payload while it is being written; borrowed
};

// Writes one labelled line for each of tag, size, real size and next record.
std::ostream& operator<<(std::ostream& out, const qipVLRecord& record);
