// SPDX-License-Identifier: MIT
//
// Sections of an ELF file (program, shared library, object) by name, of 32 or 64 bits in either
// byte order. Reads the section table and what it is asked for, never the rest: programs with debug
// information are large. Layout, 64 bits (32 bits):
//
//   header    0 magic 7f "ELF"   4 class (1 32 bits, 2 64)   5 byte order (1 little, 2 big)
//            16 u16 type (1 object)   40 (32) offset of the section table
//            58 (46) u16 size of an entry   60 (48) u16 entries   62 (50) u16 entry of the names
//   entry     0 u32 name, offset in the names   4 u32 type (7 note, 8 no bytes)   8 (8) flags
//            16 (12) address   24 (16) offset   32 (20) size   40 (24) u32 link
//
// With 0 entries their number is the size of entry 0; with 0xffff as the names' entry it is the
// link of entry 0.
#pragma once

#include "tools/common/InputFile.h"

#include <cstdint>
#include <string>
#include <vector>

struct ElfSection
{
    std::string _name;
    uint32_t _type = 0;
    uint64_t _flags = 0;
    uint64_t _address = 0;
    uint64_t _offset = 0;
    uint64_t _size = 0; // in bytes
};

class ElfFile
{
public:
    static constexpr size_t MagicSize = 4;
    // Whether bytes begin as such a file does.
    static bool isElf(const char* bytes, size_t size);

    // Opens the file and reads its section table. To be called once. Returns false with problem()
    // set when it cannot be read, is no ELF file, or its table does not lie in the file.
    bool open(const std::string& path);

    bool isBigEndian() const { return _isBigEndian; }
    // An object that was not linked.
    bool isObject() const { return _isObject; }
    // Those with a name of Clang's coverage, and notes, in the order of the table.
    const std::vector<ElfSection>& sections() const { return _sections; }
    // The first with this name; null when there is none.
    const ElfSection* find(const char* name) const;

    // Appends the bytes of all sections of this name to `bytes`, each filled with zeros to a
    // multiple of `unit` bytes before the next. Nothing for a section without bytes in the file.
    // Returns false with problem() set when they do not lie in the file, are compressed, claim more
    // than the file has altogether, or cannot be read.
    bool read(const char* name, size_t unit, std::string& bytes);

    // What the linker wrote to tell builds apart; empty when there is none.
    std::string buildId();

    // Whether nobody has written to the file since it was opened; sets problem() otherwise.
    bool isUnchanged();

    const std::string& problem() const { return _problem; }

private:
    bool fail(const std::string& problem);
    bool readTable();
    bool readHead(uint64_t& table, uint64_t& entries, uint64_t& names);
    ElfSection readEntry(const char* entry, uint32_t& name, uint32_t& link) const;
    bool readBytes(const ElfSection& section, std::string& bytes);
    size_t entrySize() const { return _is64 ? 64 : 40; }

    InputFile _file;
    bool _is64 = true;
    bool _isBigEndian = false;
    bool _isObject = false;
    std::vector<ElfSection> _sections;
    std::string _problem;
};
