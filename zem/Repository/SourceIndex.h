// SPDX-License-Identifier: MIT
//
// The source files of a repository as logs need them: found by path, with the hits that wait to be
// added to their blocks.
//
// Merging a log is bound by memory. So what it needs of a file stands here side by side, in the
// order loaded, and hits are summed in arrays of their own, a quarter of the size of the blocks
// that settle() puts them into.
#pragma once

#include "zem/Repository/PathIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <vector>

class ZEMFileRecord;

class SourceIndex
{
public:
    SourceIndex();
    SourceIndex(const SourceIndex&) = delete;
    SourceIndex& operator=(const SourceIndex&) = delete;
    virtual ~SourceIndex();

    // Enters `file`, borrowed, unless one with the same path is known.
    PathIndex::AddResult add(ZEMFileRecord& file);

    // Forgets the files with the number `size` and above, which have no hits yet.
    void cutTo(long size);
    long size() const { return _paths.size(); }

    // The number of the file with this path, counting from 0 in the order added, or -1.
    long find(const char* path) { return _paths.find(path); }

    // Of the file with this number.
    const ZEMFileRecord& file(long number) const
    {
        return *_sources[static_cast<size_t>(number)].file;
    }
    const char* path(long number) const { return _paths.path(number); }
    uint32_t statedBlocks(long number) const
    {
        return _sources[static_cast<size_t>(number)].stated;
    }
    size_t placedBlocks(long number) const { return _sources[static_cast<size_t>(number)].placed; }

    // Adds the `count` counts of a run to as many blocks of the file, from the first on, at most to
    // all. A sum stays at its largest value. Returns how many of these blocks ran.
    size_t addHits(long number, const uint32_t* hits, size_t count);

    // Put the sums into the blocks' `_nHits`, for one file, and for all. The memory of the sums is
    // freed by the latter.
    void settle(long number);
    void settle();

private:
    struct Source
    {
        uint32_t* sums; // of each block, null when there are none to settle
        size_t placed;  // ZEMFileRecord::placedBlocks()
        ZEMFileRecord* file;
        uint32_t stated; // ZEMFileRecord::_nBlocks
    };

    uint32_t* newSums(const Source& source);

    PathIndex _paths;
    std::vector<Source> _sources; // by number
    std::pmr::monotonic_buffer_resource _sumMemory;
};
