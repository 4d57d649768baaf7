// SPDX-License-Identifier: MIT
//
// Reads a .gcno or .gcda file into memory: as much of it as its own records claim, and never more
// than a bound. A file that does not begin like one of its kind is read no further than its
// beginning, so that a huge file of something else, or a sparse one, costs next to nothing. What
// the bytes mean, and whether they are damaged, is for GcnoFile and GcdaFile to say.
#pragma once

#include "tools/common/InputFile.h"
#include "tools/import/gcc/GcovWords.h"

#include <cstdint>
#include <string>

class GcovInput
{
public:
    // More bytes than this no compiler writes for one unit.
    static constexpr uint64_t LargestFile = 256u << 20;

    // `magic` is NotesMagic or CountersMagic of GcovWords.
    explicit GcovInput(uint32_t magic) : _magic(magic) {}

    // Returns false with problem() set when the system cannot give the bytes, when the file changes
    // meanwhile, or when its records need more than LargestFile. To be called once.
    bool read(const std::string& path);

    // What was read; a caller may take it.
    std::string& bytes() { return _bytes; }
    // Such as "Permission denied"; empty when nothing went wrong.
    const std::string& problem() const { return _problem; }

private:
    bool readRecords();
    bool readUpTo(uint64_t end);
    bool fail(const std::string& problem);

    const uint32_t _magic;
    InputFile _file;
    std::string _bytes;
    std::string _problem;
};
