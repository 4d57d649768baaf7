// SPDX-License-Identifier: MIT
#include "zem/Repository/SourceIndex.h"

#include "qip/Support/qipVectorised.h"
#include "zem/Data/ZEMFileRecord.h"

#include <algorithm>
#include <new>

namespace {

uint32_t saturatingSum(uint32_t a, uint32_t b)
{
    const uint32_t sum = a + b;
    return sum < a ? UINT32_MAX : sum;
}

QIP_VECTORISED void addTo(uint32_t* sums, const uint32_t* hits, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        sums[i] = saturatingSum(sums[i], hits[i]);
    }
}

QIP_VECTORISED size_t countNonZero(const uint32_t* hits, size_t count)
{
    uint32_t found = 0; // 32 bits do: a file's blocks are counted in as many
    for (size_t i = 0; i < count; ++i) {
        found += hits[i] != 0 ? 1u : 0u;
    }
    return found;
}

void addToBlocks(ZEMBlkRecord* blocks, const uint32_t* hits, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        blocks[i]._nHits = saturatingSum(blocks[i]._nHits, hits[i]);
    }
}

} // namespace

SourceIndex::SourceIndex() = default;

SourceIndex::~SourceIndex() = default;

PathIndex::AddResult SourceIndex::add(ZEMFileRecord& file)
{
    try {
        _sources.push_back({nullptr, file.placedBlocks(), &file, file._nBlocks});
    } catch (const std::bad_alloc&) {
        return PathIndex::NoMemory;
    }
    const PathIndex::AddResult result = _paths.add(file._filename == nullptr ? "" : file._filename);
    if (result != PathIndex::Added) {
        _sources.pop_back();
    }
    return result;
}

void SourceIndex::cutTo(long size)
{
    while (this->size() > size) {
        _paths.cutTo(this->size() - 1);
        _sources.pop_back();
    }
}

// A file's first sums: 0 for each block. Null without memory.
uint32_t* SourceIndex::newSums(const Source& source)
{
    try {
        auto* sums = static_cast<uint32_t*>(
            _sumMemory.allocate(source.placed * sizeof(uint32_t), alignof(uint32_t)));
        std::fill_n(sums, source.placed, 0);
        return sums;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

size_t SourceIndex::addHits(long number, const uint32_t* hits, size_t count)
{
    Source& source = _sources[static_cast<size_t>(number)];
    count = std::min(count, source.placed);
    if (source.sums == nullptr) {
        source.sums = newSums(source);
    }
    if (source.sums == nullptr) {
        addToBlocks(source.file->blocks(), hits, count);
    } else {
        addTo(source.sums, hits, count);
    }
    return countNonZero(hits, count);
}

void SourceIndex::settle(long number)
{
    Source& source = _sources[static_cast<size_t>(number)];
    if (source.sums != nullptr) {
        addToBlocks(source.file->blocks(), source.sums, source.placed);
        source.sums = nullptr;
    }
}

void SourceIndex::settle()
{
    const long size = static_cast<long>(_sources.size());
    for (long number = 0; number < size; ++number) {
        settle(number);
    }
    _sumMemory.release();
}
