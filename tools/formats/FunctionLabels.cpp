// SPDX-License-Identifier: MIT
#include "tools/formats/FunctionLabels.h"

#include "qip/Support/orEmpty.h"
#include "tools/formats/shownName.h"
#include "zem/Data/ZEMFuncRecord.h"

FunctionLabels::FunctionLabels(int level) : _level(level) {}

void FunctionLabels::clear()
{
    _taken.clear();
}

bool FunctionLabels::take(const std::string& label)
{
    return _taken.emplace(label, 1).second;
}

std::string FunctionLabels::label(const ZEMFuncRecord& function)
{
    std::string name = shownName(orEmpty(function._funcname), _level);
    if (take(name)) {
        return name;
    }
    std::string placed = name + "@" + std::to_string(function._startLine);
    if (take(placed)) {
        return placed;
    }
    // Kept with the name, so that a file of one name over and over is no quadratic work.
    unsigned& last = _taken[placed];
    std::string numbered;
    do {
        numbered = placed + "." + std::to_string(++last);
    } while (_taken.count(numbered) != 0);
    take(numbered);
    return numbered;
}
