// SPDX-License-Identifier: MIT
#include "zem/Repository/PathIndex.h"

#include <cstring>
#include <new>

PathIndex::PathIndex() : _last(0) {}

PathIndex::~PathIndex() = default;

PathIndex::AddResult PathIndex::add(const char* path)
{
    try {
        _paths.reserve(_paths.size() == _paths.capacity() ? 2 * _paths.size() + 1 : 0);
        if (_numbers.find(path) != _numbers.end()) {
            return Known;
        }
        const size_t length = std::strlen(path);
        auto* copy = static_cast<char*>(_characters.allocate(length + 1, 1));
        std::memcpy(copy, path, length + 1);
        _numbers.emplace(std::string_view(copy, length), size());
        _paths.push_back(copy);
    } catch (const std::bad_alloc&) {
        return NoMemory;
    }
    _last = size() - 1;
    return Added;
}

void PathIndex::cutTo(long size)
{
    while (this->size() > size) {
        _numbers.erase(_paths.back());
        _paths.pop_back();
    }
    _last = 0;
}

bool PathIndex::isAt(long number, const char* path) const
{
    return number < size() && std::strcmp(_paths[static_cast<size_t>(number)], path) == 0;
}

long PathIndex::find(const char* path)
{
    const long next = _last + 1 < size() ? _last + 1 : 0;
    if (isAt(next, path)) {
        _last = next;
    } else if (!isAt(_last, path)) {
        const auto found = _numbers.find(path);
        if (found == _numbers.end()) {
            return -1;
        }
        _last = found->second;
    }
    return _last;
}
