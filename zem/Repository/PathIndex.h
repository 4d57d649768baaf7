// SPDX-License-Identifier: MIT
//
// Numbers paths in the order they come in, from 0 on, and finds the number of a path.
//
// Log after log asks for the same paths in the same order, so the path found last and the one
// behind it are looked at first; the rest is hashed.
#pragma once

#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

class PathIndex
{
public:
    enum AddResult { Known = 0, Added = 1, NoMemory = -1 };

    PathIndex();
    PathIndex(const PathIndex&) = delete;
    PathIndex& operator=(const PathIndex&) = delete;
    virtual ~PathIndex();

    // Gives `path`, of which a copy is kept, the next number, unless it has one.
    AddResult add(const char* path);

    // Forgets the paths with the number `size` and above. Takes no memory and gives none back.
    void cutTo(long size);

    // The number of `path`, or -1.
    long find(const char* path);

    long size() const { return static_cast<long>(_paths.size()); }
    const char* path(long number) const { return _paths[static_cast<size_t>(number)]; }

private:
    bool isAt(long number, const char* path) const;

    std::pmr::monotonic_buffer_resource _characters; // path behind path, as they are asked for
    std::unordered_map<std::string_view, long> _numbers;
    std::vector<const char*> _paths; // by number, the keys of `_numbers`
    long _last;                      // found or added last
};
