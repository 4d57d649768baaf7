// SPDX-License-Identifier: MIT
#include "tools/import/SourceTable.h"

SourceNumber SourceTable::find(const std::string& path)
{
    const std::lock_guard<std::mutex> lock(_guard);
    const auto found = _numbers.emplace(path, SourceNumber());
    SourceNumber& number = found.first->second;
    if (found.second) {
        number._number = static_cast<uint32_t>(_paths.size());
        number._answer = _filter.ask(path);
        _paths.push_back(path);
    }
    return number;
}
