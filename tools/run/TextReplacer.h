// SPDX-License-Identifier: MIT
//
// Replaces a text by another in bytes that come piece by piece. No piece is kept back, but for an
// end that may be the beginning of the text.
#pragma once

#include <cstddef>
#include <string>

class TextReplacer
{
public:
    // REQUIRES: `from` is not empty.
    TextReplacer(std::string from, std::string to);

    // Takes the next bytes; returns what they are with what was kept back before.
    std::string next(const char* bytes, size_t size);

    // What is kept back at the end.
    std::string end();

private:
    const std::string _from;
    const std::string _to;
    std::string _kept;
};

// The same for a regular file that is there, and that fits into memory.
void replaceInFile(const std::string& path, const std::string& from, const std::string& to);
