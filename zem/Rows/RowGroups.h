// SPDX-License-Identifier: MIT
//
// Sums rows up by a name that several of them share: a directory, a class.
#pragma once

#include "zem/Rows/ZEMRptTable.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

class ZEMView;

class RowGroups
{
public:
    RowGroups();

    // Adds the counts of `row` to the group `name`, which is borrowed until the table is made.
    void add(const char* name, const ZEMView& row);

    // One row for each group, the group met last coming first. `makeRow` makes a row with its name
    // set, or null without memory. The table is empty and not whole when a group could not be added
    // or a row not be made: sums that lack some rows would lie.
    ZEMRptTable table(ZEMView* (*makeRow)(const char* name)) const;

private:
    struct Group
    {
        const char* name;
        int64_t total;
        int64_t covered;
        int64_t hits;
    };

    std::unordered_map<std::string_view, size_t> _index;
    std::vector<Group> _groups; // in the order met
    bool _isComplete;
};
