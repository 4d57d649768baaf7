// SPDX-License-Identifier: MIT
//
// What `gcov --json-format` says of one unit: counts of lines. Versions 1 (GCC 9 to 13) and 2.
//
//   {"format_version": "1", "current_working_directory": folder, "files": [{"file": path,
//     "functions": [{"name", "start_line", "start_column", "end_line", "end_column"}, ...],
//     "lines": [{"line_number", "count", "function_name"}, ...]}]}
//
// A line comes once for each function that has it: each instance of a template, and a function and
// the lambda in it. Other keys are passed by.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct GcovLine
{
    uint32_t _line = 0;
    int64_t _count = 0; // may be negative where the counters were damaged
};

struct GcovFunction
{
    std::string _symbol;
    uint32_t _startLine = 0; // 0 where it is not given, like the three others
    uint32_t _startColumn = 0;
    uint32_t _endLine = 0;
    uint32_t _endColumn = 0;
    std::vector<GcovLine> _lines; // sorted, each once
};

struct GcovSource
{
    std::string _path; // as written, counts from folder()
    std::vector<GcovFunction> _functions;
    std::vector<GcovLine> _strayLines; // in no function of the document; sorted, each once
};

// Keeps the reader's memory from document to document. One thread uses one.
class GcovDocument
{
public:
    GcovDocument();
    ~GcovDocument();
    GcovDocument(const GcovDocument&) = delete;
    GcovDocument& operator=(const GcovDocument&) = delete;

    // Reads a document; what was read before is gone. A line without a function's name goes to the
    // innermost function around it. Returns false with problem() set when it is not gcov's. Throws
    // std::bad_alloc without memory, which says nothing of the document.
    bool parse(const std::string& json);

    const std::string& folder() const { return _folder; }
    std::vector<GcovSource>& sources() { return _sources; }

    // Lines without a number. They are left out.
    uint64_t linesWithoutNumber() const { return _linesWithoutNumber; }

    const std::string& problem() const { return _problem; }

private:
    class Parser; // keeps the JSON library's headers away
    std::unique_ptr<Parser> _parser;
    std::string _folder;
    std::vector<GcovSource> _sources;
    uint64_t _linesWithoutNumber = 0;
    std::string _problem;
};
