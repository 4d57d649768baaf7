// SPDX-License-Identifier: MIT
//
// Names for the functions of one file, each another one: formats know a function by its name. A
// name that an earlier function of the file has gets the line where its function begins, "f@12",
// and when that is taken, too, a number, "f@12.2".
#pragma once

#include <string>
#include <unordered_map>

class ZEMFuncRecord;

class FunctionLabels
{
public:
    // Names are written at `level`, a NameLevel.
    explicit FunctionLabels(int level);

    // Starts a file.
    void clear();

    // The name of the next function. May throw std::bad_alloc.
    std::string label(const ZEMFuncRecord& function);

private:
    bool take(const std::string& label);

    int _level;
    std::unordered_map<std::string, unsigned> _taken; // and the last number that was tried
};
