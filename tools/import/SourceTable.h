// SPDX-License-Identifier: MIT
//
// Numbers the source files of an import, finds where they are now, and remembers what the filter
// says of each. Used by all threads at once.
#pragma once

#include "tools/import/PathMap.h"
#include "tools/import/SourceFilter.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

struct SourceNumber
{
    uint32_t _number = 0; // from 0
    SourceFilter::Answer _answer = SourceFilter::Kept;
};

class SourceTable
{
public:
    // Borrows both for its life.
    SourceTable(const SourceFilter& filter, const PathMap& moves) : _filter(filter), _moves(moves)
    {}

    // `path` is absolute, where the build had it. Paths that are one file now have one number.
    SourceNumber find(const std::string& path);

    // All paths by number, where they are now. No find() at the same time.
    const std::vector<std::string>& paths() const { return _paths; }

private:
    const SourceNumber& number(const std::string& path);

    const SourceFilter& _filter;
    const PathMap& _moves;
    std::mutex _guard;
    std::unordered_map<std::string, SourceNumber> _numbers; // by the path where it is now
    std::unordered_map<std::string, SourceNumber> _moved;   // by the path of the build
    std::vector<std::string> _paths;
};
