// SPDX-License-Identifier: MIT
//
// Tells the programs and shared libraries that Clang instrumented from all other files: ELF files
// with a section __llvm_covmap. Reads the headers of sections and their names, nothing else:
//
//   offset  size (32, 64 bits)   content of the ELF header
//        0     4                 127 "ELF"
//        4     1                 1: 32 bits, 2: 64 bits
//        5     1                 1: least significant byte first, 2: most significant first
//       16     2                 2: program, 3: shared library or position-independent program
//   32, 40     4, 8              offset of the section headers
//   46, 58     2                 bytes of one
//   48, 60     2                 their number; 0: it stands in the first one's size
//   50, 62     2                 which one holds the names; 0xffff: it stands in the first one's
//   link
//
//   of a section header:         0: offset of its name (4); 16, 24: offset (4, 8);
//                                20, 32: size (4, 8); 24, 40: link (4)
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class CoveredProgram
{
public:
    CoveredProgram() = default;
    ~CoveredProgram();
    CoveredProgram(const CoveredProgram&) = delete;
    CoveredProgram& operator=(const CoveredProgram&) = delete;

    // Whether the file is one of these. False, too, for what cannot be read.
    static bool is(const std::string& path);

    // The same for a file that is open for reading; takes the descriptor.
    static bool isOpenOn(int fd);

    // All below `folder`, each once, whatever links lead to it, sorted.
    static std::vector<std::string> below(const std::string& folder);

private:
    bool readHeader();
    bool isNamed(uint64_t header, uint64_t names) const;
    bool check();
    bool bytesAt(uint64_t offset, unsigned char* bytes, size_t size) const;
    uint64_t numberAt(uint64_t offset, size_t size) const;
    // The same where a file of 64 bits has it elsewhere, or longer.
    uint64_t fieldAt(uint64_t offset32, size_t size32, uint64_t offset64, size_t size64) const;

    int _fd = -1;
    bool _is64 = false;
    bool _isBigEndian = false;
};
