// SPDX-License-Identifier: MIT
//
// Numbers the source files of an import and remembers what the filter says of each. Used by all
// threads at once.
#pragma once

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
    // Borrows `filter` for its life.
    explicit SourceTable(const SourceFilter& filter) : _filter(filter) {}

    // `path` is absolute.
    SourceNumber find(const std::string& path);

    // All paths by number. No find() at the same time.
    const std::vector<std::string>& paths() const { return _paths; }

private:
    const SourceFilter& _filter;
    std::mutex _guard;
    std::unordered_map<std::string, SourceNumber> _numbers;
    std::vector<std::string> _paths;
};
