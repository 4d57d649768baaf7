// SPDX-License-Identifier: MIT
//
// Cuts a file, plain or gzipped, into the JSON documents that it holds one after the other: a file
// of `gcov --json-format` holds one, the output of `gcov --stdout` one for each unit. What is
// between them is blank. Looks at brackets and strings alone: whether a document is well formed is
// for its reader to say.
#pragma once

#include "tools/import/lines/InputStream.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class JsonDocuments
{
public:
    // More bytes than this no compiler writes for one unit.
    static constexpr size_t LargestDocument = 256u << 20;

    // A document of more than `largest` bytes is refused when this much of it was read, however
    // large it is.
    explicit JsonDocuments(size_t largest = LargestDocument) : _largest(largest) {}

    // To be called once. Returns false with problem() set.
    bool open(const std::string& path);

    // Gives the next document. Returns false at the end of the file and, with problem() set, when
    // the file cannot be read, the document is too large or the file ends within it.
    // REQUIRES: open() returned true.
    bool next(std::string& document);

    // The line where the last document begins, from 1.
    uint64_t line() const { return _documentLine; }
    const std::string& problem() const { return _problem; }

private:
    bool fail(const std::string& problem);
    bool refill();
    bool skipBlank();
    bool isDone(char c);

    const size_t _largest;
    InputStream _input;
    std::vector<char> _piece;
    size_t _used = 0; // of _piece
    size_t _size = 0;
    uint64_t _line = 1;
    uint64_t _documentLine = 0;
    uint64_t _depth = 0;
    bool _isInString = false;
    bool _isEscaped = false;
    std::string _problem;
};
