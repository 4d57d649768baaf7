// SPDX-License-Identifier: MIT
//
// The comments by which programmers say that lines of a source need no tests:
//
//   LCOV_EXCL_LINE    this line
//   LCOV_EXCL_START   this line and those behind it,
//   LCOV_EXCL_STOP    up to the line before this one
//
// GCOVR_EXCL_... and GCOV_EXCL_... mean the same; a region may end with the marker of another
// family. Regions do not lie in each other. Markers of branches (..._EXCL_BR_LINE) mean nothing
// here. They count wherever they stand, in a comment or not.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class ExclusionMarkers
{
public:
    // A marker without its other end.
    struct Problem
    {
        uint32_t _line; // from 1
        std::string _text;
    };

    // Reads the text of a source, in time linear in its size. To be called once.
    void read(const std::string& text);

    bool isEmpty() const { return _ranges.empty(); }
    bool excludes(uint32_t line) const;
    const std::vector<Problem>& problems() const { return _problems; }

private:
    struct Range
    {
        uint32_t _first;
        uint32_t _last; // its own
    };

    void readMarker(const std::string& text, size_t place, uint32_t line);
    void add(uint32_t first, uint32_t last);

    std::vector<Range> _ranges; // in order, apart
    uint32_t _open = 0;         // the line where a region begins; 0 when there is none
    uint32_t _lineInRegion = 0; // that is marked by itself too
    std::vector<Problem> _problems;
};
