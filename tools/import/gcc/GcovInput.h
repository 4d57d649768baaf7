// SPDX-License-Identifier: MIT
//
// Reads a .gcno or .gcda file into memory: a small one whole, of another as much as its own records
// claim, and never more than a bound. A file that does not begin like one of its kind is read no
// further than its beginning, so that a huge file of something else, or a sparse one, costs next to
// nothing. What the bytes mean, and whether they are damaged, is for GcnoFile and GcdaFile to say.
//
// One object reads file after file into the same memory: the system takes longer to give fresh
// pages than to fill them.
#pragma once

#include "tools/common/InputFile.h"
#include "tools/import/gcc/GcovWords.h"

#include <cstdint>
#include <string>
#include <string_view>

class GcovInput
{
public:
    // More bytes than this no compiler writes for one unit.
    static constexpr uint64_t LargestFile = 256u << 20;

    // `magic` is NotesMagic or CountersMagic of GcovWords.
    explicit GcovInput(uint32_t magic) : _magic(magic) {}

    // Returns false with problem() set, and no bytes(), when the system cannot give the bytes, when
    // the file changes meanwhile, or when its records need more than LargestFile.
    bool read(const std::string& path);

    // What was read; good until the next read().
    std::string_view bytes() const { return std::string_view(_memory).substr(0, _size); }
    // Such as "Permission denied"; empty when nothing went wrong.
    const std::string& problem() const { return _problem; }

private:
    bool readRecords(InputFile& file);
    bool readUpTo(uint64_t end, InputFile& file);
    bool append(uint64_t size, InputFile& file);
    const unsigned char* data() const
    {
        return reinterpret_cast<const unsigned char*>(_memory.data());
    }
    bool fail(const std::string& problem);

    const uint32_t _magic;
    std::string _memory; // longer than what was read; its end is left from other files
    size_t _size = 0;    // bytes of this file
    std::string _problem;
};
