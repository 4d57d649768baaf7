// SPDX-License-Identifier: MIT
#include "tools/compare/BuildFacts.h"

#include <tuple>

namespace {

void addLine(LineFacts& sum, const LineFacts& part)
{
    sum._isListed |= part._isListed;
    sum._count += part._count;
    sum._isTouched |= part._isTouched;
    sum._isTouchedMade |= part._isTouchedMade;
    sum._blockRan |= part._blockRan;
    sum._madeRan |= part._madeRan;
}

void addFile(FileFacts& sum, const FileFacts& part)
{
    for (const auto& line : part._lines) {
        addLine(sum._lines[line.first], line.second);
    }
    for (const auto& function : part._functions) {
        FunctionFacts& facts = sum._functions[function.first];
        facts._readable = function.second._readable;
        facts._entries += function.second._entries;
    }
}

} // namespace

bool FunctionPlace::operator<(const FunctionPlace& other) const
{
    return std::tie(_startLine, _endLine, _symbol) <
           std::tie(other._startLine, other._endLine, other._symbol);
}

void BuildFacts::add(const BuildFacts& other)
{
    for (const auto& file : other._files) {
        addFile(_files[file.first], file.second);
    }
    _leftOut.insert(other._leftOut.begin(), other._leftOut.end());
    _failures.insert(_failures.end(), other._failures.begin(), other._failures.end());
}
