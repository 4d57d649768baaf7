// SPDX-License-Identifier: MIT
//
// The user header of a map file (see ZEMHeader.h).
//
//   offset  field      meaning
//        0  _magic     0x00006704
//       12  _mapMajor  format version, 2
//       16  _pad       48 bytes, zero
#pragma once

#include "zem/Data/ZEMHeader.h"

class ZEMMapHeader : public ZEMHeader
{
public:
    static constexpr uint32_t Magic = 0x6704;

    ZEMMapHeader();

    // Reads the header at the stream's position. Returns 0; -10 for a null stream; -9 when there
    // are fewer than 64 bytes; -5 for another magic number; -6 for another format version.
    [[nodiscard]] int read(FILE* stream);

    uint32_t _mapMajor;
    unsigned char _pad[48];

private:
    friend std::ostream& operator<<(std::ostream& out, const ZEMMapHeader& header);
};

// Writes a title, one labelled line for each of magic, format version and suite version, and an
// empty line.
std::ostream& operator<<(std::ostream& out, const ZEMMapHeader& header);
