// SPDX-License-Identifier: MIT
//
// Finds the innermost function around a line of one file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class LineOwners
{
public:
    static constexpr uint32_t Nobody = UINT32_MAX;

    // A function `owner` has the lines `first` to `last`; nothing when `last` is less. Ranges may
    // lie in each other or overlap.
    void add(uint32_t first, uint32_t last, uint32_t owner);

    // Makes the index; once, when all ranges are in.
    void build();

    // The owner of the range that begins last of those that hold the line; of several with one
    // beginning the one that ends first, then the one that was added first. Nobody when none does.
    // REQUIRES: build() has run.
    uint32_t ownerOf(uint32_t line) const;

    // The same for one line after the other, in ascending order: `hint` is 0 for the first and what
    // it was left at for each other. The cost of all is linear.
    uint32_t ownerOf(uint32_t line, size_t& hint) const;

private:
    struct Range
    {
        uint32_t _first;
        uint32_t _last;
        uint32_t _owner;
    };
    // The owner from one line up to the next section.
    struct Section
    {
        uint32_t _first;
        uint32_t _owner;
    };

    void addSection(uint32_t first, uint32_t owner);

    std::vector<Range> _ranges;
    std::vector<Section> _sections;
};
