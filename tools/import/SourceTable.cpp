// SPDX-License-Identifier: MIT
#include "tools/import/SourceTable.h"

const SourceNumber& SourceTable::number(const std::string& path)
{
    const auto found = _numbers.emplace(path, SourceNumber());
    SourceNumber& number = found.first->second;
    if (found.second) {
        number._number = static_cast<uint32_t>(_paths.size());
        number._answer = _filter.ask(path);
        _paths.push_back(path);
    }
    return number;
}

SourceNumber SourceTable::find(const std::string& path)
{
    const std::lock_guard<std::mutex> lock(_guard);
    if (_moves.isEmpty()) {
        return number(path);
    }
    const auto found = _moved.emplace(path, SourceNumber());
    if (found.second) {
        found.first->second = number(_moves.moved(path));
    }
    return found.first->second;
}
