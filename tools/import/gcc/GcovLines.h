// SPDX-License-Identifier: MIT
//
// Coverage by line, from the compiler's own gcov program: the road for compilers whose files the
// block readers do not know. One JSON document on one line for each unit:
//
//   {"current_working_directory": folder, "files": [{"file": path,
//     "functions": [{"name", "start_line", "start_column", "end_line", "end_column"}, ...],
//     "lines": [{"line_number", "count", "function_name"}, ...]}]}
#pragma once

#include "tools/import/FunctionCopy.h"
#include "tools/import/gcc/GccTree.h"

#include <string>
#include <vector>

struct GcovLineFunction
{
    std::string _folder; // what `_file` counts from
    std::string _file;
    FunctionCopy _copy;           // one block for each line that has code; files are not numbered
    std::vector<int64_t> _counts; // of each block
};

class GcovLines
{
public:
    // Takes what gcov printed. A line without a function's name goes to the innermost function
    // around it. Returns false when the text is not gcov's; the functions before that point stay.
    bool parse(const std::string& json);

    std::vector<GcovLineFunction>& functions() { return _functions; }

    // Lines that no function of their file surrounds. They are left out.
    uint64_t strayLines() const { return _strayLines; }

private:
    std::vector<GcovLineFunction> _functions;
    uint64_t _strayLines = 0;
};

// Runs the program `gcov` on one unit and gives what it prints. Returns false when it cannot be run
// or fails.
bool runGcov(const char* gcov, const GccUnitFiles& files, std::string& json);
