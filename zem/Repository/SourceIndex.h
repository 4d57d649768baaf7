// SPDX-License-Identifier: MIT
//
// The source files of a repository as logs need them: found by path, with the hits that wait to be
// added to their blocks.
//
// Merging a log is bound by memory. So what it needs of a file stands here side by side, in the
// order loaded, and hits are summed in arrays of their own, a quarter of the size of the blocks
// that settle() puts them into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

class ZEMFileRecord;

class SourceIndex
{
public:
    enum AddResult { Known = 0, Added = 1, NoMemory = -1 };

    SourceIndex();
    SourceIndex(const SourceIndex&) = delete;
    SourceIndex& operator=(const SourceIndex&) = delete;
    virtual ~SourceIndex();

    // Enters `file`, borrowed, unless one with the same path is known.
    AddResult add(ZEMFileRecord& file);

    // The number of the file with this path, counting from 0 in the order added, or -1. Quick when
    // it is the one behind the file found last: logs mostly keep the order of their map.
    long find(const char* path);

    // Of the file with this number.
    const char* path(long number) const { return _sources[static_cast<size_t>(number)].path; }
    uint32_t statedBlocks(long number) const
    {
        return _sources[static_cast<size_t>(number)].stated;
    }
    size_t placedBlocks(long number) const { return _sources[static_cast<size_t>(number)].placed; }

    // Adds the `count` counts of a run to as many blocks of the file, from the first on, at most to
    // all. A sum stays at its largest value. Returns how many of these blocks ran.
    size_t addHits(long number, const uint32_t* hits, size_t count);

    // Puts the sums into the blocks' `_nHits`, for one file and for all.
    void settle(long number);
    void settle();

private:
    struct Source
    {
        const char* path; // a copy
        uint32_t* sums;   // of each block, null when there are none to settle
        size_t placed;    // ZEMFileRecord::placedBlocks()
        ZEMFileRecord* file;
        uint32_t stated; // ZEMFileRecord::_nBlocks
    };

    uint32_t* newSums(const Source& source);

    std::pmr::monotonic_buffer_resource _pathMemory;
    std::pmr::monotonic_buffer_resource _sumMemory;
    std::vector<Source> _sources; // in the order added
    std::unordered_map<std::string_view, long> _numbers;
    long _next; // the number behind the one found last
};
