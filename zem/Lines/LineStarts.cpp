// SPDX-License-Identifier: MIT
#include "zem/Lines/LineStarts.h"

#include <utility>

void LineStarts::add(uint32_t offset)
{
    if (_count == _blocks.size() * BlockLines) {
        _blocks.push_back(std::unique_ptr<Start[]>(new Start[BlockLines]));
    }
    _blocks[_count / BlockLines][_count % BlockLines] = {offset, 0};
    ++_count;
}

size_t LineStarts::bytes() const
{
    return _blocks.size() * BlockLines * sizeof(Start) + _blocks.capacity() * sizeof(_blocks[0]);
}

void LineStarts::clear()
{
    LineStarts empty;
    swap(empty);
}

void LineStarts::swap(LineStarts& other)
{
    _blocks.swap(other._blocks);
    std::swap(_count, other._count);
}
