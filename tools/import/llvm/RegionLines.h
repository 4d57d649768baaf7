// SPDX-License-Identifier: MIT
//
// Which lines the regions of one function have text on. Regions lie in each other; text belongs to
// the innermost one around it. A region has a line when
//
//   - it begins there, or
//   - it is the innermost one around the start of the line, and goes on behind the line's first
//     column.
//
// That is the line's count as llvm-cov sees it, too: a region that begins again on a line, behind
// another that ends there, does not have it. A gap between statements, which may hold the arguments
// of a macro, has the lines in it on which nothing begins. Skipped text and text of another
// function (a lambda) hide what is around them and have no lines.
#pragma once

#include "tools/import/FunctionCopy.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class RegionLines
{
public:
    // What has no lines; any other block does.
    static constexpr uint32_t NoBlock = UINT32_MAX;

    struct Region
    {
        uint32_t _startLine = 0; // from 1
        uint32_t _startColumn = 0;
        uint32_t _endLine = 0;
        uint32_t _endColumn = 0; // the first behind it
        uint32_t _block = NoBlock;
        // Of two with one range the lower counts; equal ones both do.
        uint32_t _rank = 0;
        bool _isGap = false;
    };

    void clear() { _regions.clear(); }
    void add(const Region& region) { _regions.push_back(region); }

    // At most this many lines will come.
    uint64_t bound() const;

    // Appends the lines of all regions, which are in the file `file`. Sorts the regions; apart from
    // that the cost is linear in regions and lines.
    void append(uint32_t file, std::vector<CopyLine>& lines);

private:
    void goTo(uint32_t line, bool beginsText);
    void begin(const Region& region);
    void touch(const Region& region);

    std::vector<Region> _regions;
    std::vector<const Region*> _open; // the innermost one last
    std::vector<CopyLine>* _lines = nullptr;
    uint32_t _file = 0;
    uint32_t _line = 0; // all before it, and its start, are done
};
