// SPDX-License-Identifier: MIT
//
// What Clang says of one function: its files, the regions of its text and which counters say how
// often each ran. Layout of the mapping that read() takes, all numbers LEB128:
//
//   files        their number, then for each its place in the unit's list. A region's file is a
//                place in here; a file stands here once for each use of a macro that it defines
//   expressions  their number, then for each its left and its right counter
//   regions      for each file their number, then for each:
//     head       lowest 2 bits 1, 2, 3: code, the head is its counter. 0 with bit 2: the use of a
//                macro, whose text is the file head >> 3. Else head >> 3: 0 code that never runs,
//                2 skipped by the preprocessor, 4 branch, 5 decision, 6 condition of a decision
//     fields     4: two counters. 5: two numbers. 6: two counters, three numbers
//     place      start line less that of the region before, start column, further lines, end
//                column; its bit 31 makes code a gap between statements
//
// A counter: lowest 2 bits 0 zero, 1 a counter of the profile, 2 and 3 the difference and the sum
// of an expression; the number in the other bits.
#pragma once

#include "tools/import/llvm/LlvmBytes.h"

#include <cstdint>
#include <vector>

struct CoverageExpression
{
    uint32_t _left = 0; // counters
    uint32_t _right = 0;
};

struct CoverageRegion
{
    // Numbers as llvm-cov writes them.
    enum Kind : uint32_t { Code, Expansion, Skipped, Gap, Branch, Decision, Condition };

    Kind _kind = Code;
    // A macro's is that of the first region of its text; a branch's is how often it was true.
    uint32_t _counter = 0;
    uint32_t _file = 0;     // place in CoverageFunction::_files
    uint32_t _expanded = 0; // the same, of the text of a macro
    uint32_t _startLine = 0;
    uint32_t _startColumn = 0;
    uint32_t _endLine = 0;
    uint32_t _endColumn = 0;
};

class CoverageFunction
{
public:
    enum CounterTag : uint32_t { Zero, Counter, Difference, Sum };
    static CounterTag tagOf(uint32_t counter) { return static_cast<CounterTag>(counter & 3); }
    static uint32_t numberOf(uint32_t counter) { return counter >> 2; }

    // Reads the mapping of `size` bytes of a unit with `nFiles` files; what was there before goes.
    // Returns false when it is damaged. Takes time and memory in proportion to `size`.
    bool read(const char* mapping, size_t size, size_t nFiles);

    // Whether it stands for a function that the unit saw and did not make, as far as the mapping
    // tells; its hash is 0, too.
    bool isDummy() const;

    std::vector<uint32_t> _files; // places in the unit's list
    std::vector<CoverageExpression> _expressions;
    std::vector<CoverageRegion> _regions;

private:
    bool readRegions(LlvmBytes& bytes, uint32_t file);
    void resolveExpansions();

    std::vector<size_t> _firstOfFile; // place in _regions of its first, SIZE_MAX for none
};
