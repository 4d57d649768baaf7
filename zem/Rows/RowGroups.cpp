// SPDX-License-Identifier: MIT
#include "zem/Rows/RowGroups.h"

#include "zem/Rows/ZEMView.h"

#include <new>

RowGroups::RowGroups() : _isComplete(true) {}

void RowGroups::add(const char* name, const ZEMView& row)
{
    if (!_isComplete) {
        return; // the index may name a group that could not be added
    }
    try {
        const auto found = _index.emplace(name, _groups.size());
        if (found.second) {
            _groups.push_back({name, 0, 0, 0});
        }
        Group& group = _groups[found.first->second];
        group.total += row._totBlk;
        group.covered += row._covBlk;
        group.hits += row._hits;
    } catch (const std::bad_alloc&) {
        _isComplete = false;
    }
}

ZEMRptTable RowGroups::table(ZEMView* (*makeRow)(const char* name)) const
{
    ZEMRptTable table;
    if (!_isComplete) {
        table.giveUp();
        return table;
    }
    if (!table.reserve(_groups.size())) {
        return table;
    }
    for (auto group = _groups.rbegin(); group != _groups.rend(); ++group) {
        ZEMView* row = makeRow(group->name);
        if (row == nullptr) {
            table.giveUp();
            return table;
        }
        row->setCounts(nullptr, group->total, group->covered, group->hits);
        row->setLabel();
        table.append(row);
        if (row->_label == nullptr) {
            table.giveUp();
            return table;
        }
    }
    return table;
}
