// SPDX-License-Identifier: MIT
//
// What the user headers of map and log files share: 64 bytes behind the file header, unsigned
// 32-bit words, big-endian.
//
//   offset  field      meaning
//        0  _magic     which kind of file it is
//        4  _qzlMajor  major version of the tool suite that wrote the file, not checked
//        8  _qzlMinor  its minor version
//       12             format version, 2: a field of the derived class
//       16             48 bytes of the derived class
//
// This program only reads such files: write() writes nothing.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>

class ZEMHeader
{
public:
    static constexpr int Size = 64; // bytes on disk
    static constexpr uint32_t FormatVersion = 2;

    // Writes nothing and returns 0. Pinned by ZEMMapHeaderTest.WriteWritesNothing.
    int write(FILE* stream);

    uint32_t _magic;
    uint32_t _qzlMajor;
    uint32_t _qzlMinor;

protected:
    static constexpr int RestSize = 48; // bytes behind the format version

    explicit ZEMHeader(uint32_t magic);
    ~ZEMHeader() = default;

    // Reads the header at the stream's position: the words above, the format version into `version`
    // and what stands behind it into `rest`. Returns 0; -10 for a null stream; -9 when there are
    // fewer than 64 bytes; -5 for a magic number that is not `magic`; -6 for another format
    // version.
    [[nodiscard]] int readWords(FILE* stream, uint32_t magic, uint32_t& version,
                                unsigned char (&rest)[RestSize]);

    // Writes `title` and one line for each of magic, format version, called `versionLabel`, and
    // suite version.
    void dump(std::ostream& out, const char* title, const char* versionLabel,
              uint32_t version) const;
};
