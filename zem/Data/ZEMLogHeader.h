// SPDX-License-Identifier: MIT
//
// The user header of a log file (see ZEMHeader.h).
//
//   offset  field           meaning
//        0  _magic          0x00006703
//       12  _logMajor       format version, 2
//       16  _executionTime  time of the run, not interpreted
//       20  _pad            44 bytes, zero
#pragma once

#include "zem/Data/ZEMHeader.h"

class ZEMLogHeader : public ZEMHeader
{
public:
    static constexpr uint32_t Magic = 0x6703;

    ZEMLogHeader();

    // Reads the header at the stream's position. Returns 0; -10 for a null stream; -9 when there
    // are fewer than 64 bytes; -5 for another magic number; -6 for another format version.
    [[nodiscard]] int read(FILE* stream);

    uint32_t _logMajor;
    uint32_t _executionTime;
    unsigned char _pad[44];

private:
    friend std::ostream& operator<<(std::ostream& out, const ZEMLogHeader& header);
};

// Writes a title and one labelled line for each of magic, format version and suite version.
std::ostream& operator<<(std::ostream& out, const ZEMLogHeader& header);
