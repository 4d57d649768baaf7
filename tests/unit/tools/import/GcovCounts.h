// SPDX-License-Identifier: MIT
//
// Line counts from solved flow graphs, by the rules that gcov prints: entries into the graph of the
// blocks of a line, and the turns of the loops that stay on it. Tests compare them with the
// compiler's own.
#pragma once

#include "tools/import/gcc/GcnoFile.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class GcovCounts
{
public:
    // Adds the functions of one unit. `counts` has the solved block counts of each function.
    void addUnit(const std::vector<GcnoFunction>& functions,
                 const std::vector<std::vector<int64_t>>& counts);

    // File as written in the notes > line > count, functions that start on one line added up.
    const std::map<std::string, std::map<uint32_t, int64_t>>& lines() const { return _lines; }

private:
    std::map<std::string, std::map<uint32_t, int64_t>> _lines;
};
