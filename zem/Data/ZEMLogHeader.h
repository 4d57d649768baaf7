// SPDX-License-Identifier: MIT
//
// The user header of a log file: 64 bytes behind the file header, unsigned 32-bit words,
// big-endian.
//
//   offset  field        meaning
//        0  _magic       0x00006703
//        4  _qzlMajor    major version of the tool suite that wrote the file, not checked
//        8  _qzlMinor    its minor version
//       12  _logMajor    format version, 2
//       16  _executionTime  time of the run, not interpreted
//       20  _pad         44 bytes, zero
//
// This program only reads log files: write() writes nothing.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>

class ZEMLogHeader
{
public:
    static constexpr int Size = 64; // bytes on disk
    static constexpr uint32_t Magic = 0x6703;
    static constexpr uint32_t FormatVersion = 2;

    ZEMLogHeader();

    // Reads the header at the stream's position. Returns 0; -10 for a null stream; -9 when there
    // are fewer than 64 bytes; -5 for another magic number; -6 for another format version.
    [[nodiscard]] int read(FILE* stream);

    // Writes nothing and returns 0. Pinned by ZEMLogHeaderTest.WriteWritesNothing.
    int write(FILE* stream);

    uint32_t _magic;
    uint32_t _qzlMajor;
    uint32_t _qzlMinor;
    uint32_t _logMajor;
    uint32_t _executionTime;
    unsigned char _pad[44];
};

// Writes a title and one labelled line for each of magic, format version and suite version.
std::ostream& operator<<(std::ostream& out, const ZEMLogHeader& header);
