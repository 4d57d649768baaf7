// SPDX-License-Identifier: MIT
//
// The user header of a map file: 64 bytes behind the file header, unsigned 32-bit words,
// big-endian.
//
//   offset  field        meaning
//        0  _magic       0x00006704
//        4  _qzlMajor    major version of the tool suite that wrote the file, not checked
//        8  _qzlMinor    its minor version
//       12  _mapMajor    format version, 2
//       16  _pad         48 bytes, zero
//
// This program only reads map files: write() writes nothing.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>

class ZEMMapHeader
{
public:
    static constexpr int Size = 64; // bytes on disk
    static constexpr uint32_t Magic = 0x6704;
    static constexpr uint32_t FormatVersion = 2;

    ZEMMapHeader();

    // Reads the header at the stream's position. Returns 0; -10 for a null stream; -9 when there
    // are fewer than 64 bytes; -5 for another magic number; -6 for another format version.
    [[nodiscard]] int read(FILE* stream);

    // Writes nothing and returns 0. Pinned by ZEMMapHeaderTest.WriteWritesNothing.
    int write(FILE* stream);

    uint32_t _magic;
    uint32_t _qzlMajor;
    uint32_t _qzlMinor;
    uint32_t _mapMajor;
    unsigned char _pad[48];
};

// Writes a title and one labelled line for each of magic, format version and suite version.
std::ostream& operator<<(std::ostream& out, const ZEMMapHeader& header);
