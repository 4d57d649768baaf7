// SPDX-License-Identifier: MIT
//
// Where each line of a text file starts and how many tabs it has: 8 bytes a line, whatever the
// number of lines. It grows in blocks that stay where they are, so that a file of millions of lines
// never needs room for a copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class LineStarts
{
public:
    // Adds a line that starts `offset` bytes from the start of the file. May throw std::bad_alloc;
    // nothing is added then.
    void add(uint32_t offset);
    // Adds a tab to the last line. REQUIRES: there is one.
    void addTab() { ++_blocks[(_count - 1) / BlockLines][(_count - 1) % BlockLines].tabs; }

    // Of line `n`, from 0. REQUIRES: n < count().
    uint32_t offset(size_t n) const { return _blocks[n / BlockLines][n % BlockLines].offset; }
    uint32_t tabs(size_t n) const { return _blocks[n / BlockLines][n % BlockLines].tabs; }

    size_t count() const { return _count; }
    // Memory in use, in bytes.
    size_t bytes() const;

    void clear();
    void swap(LineStarts& other);

private:
    struct Start
    {
        uint32_t offset;
        uint32_t tabs;
    };
    static constexpr size_t BlockLines = 4096;

    std::vector<std::unique_ptr<Start[]>> _blocks;
    size_t _count = 0;
};
