// SPDX-License-Identifier: MIT
//
// What is known about a coverage build without this project's map and log: the lines and functions
// that gcov prints, and which blocks of the flow graphs touch each line. Units are read apart from
// each other and added up, so a line has the counts of every unit that holds it.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

struct LineFacts
{
    bool _isListed = false; // gcov has the line
    int64_t _count = 0;     // gcov's count, over all units and function instances
    // Whether blocks touch the line, and one of them ran: those of functions that somebody wrote,
    // and those of functions that the compiler made (coroutine bodies, but also initialisers).
    bool _isTouched = false;
    bool _blockRan = false;
    bool _isTouchedMade = false;
    bool _madeRan = false;

    bool anyRan() const { return _count > 0 || _blockRan || _madeRan; }
};

struct FunctionPlace
{
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    std::string _symbol;

    bool operator<(const FunctionPlace& other) const;
};

struct FunctionFacts
{
    std::string _readable; // as c++filt prints it
    int64_t _entries = 0;
};

struct FileFacts
{
    std::unordered_map<uint32_t, LineFacts> _lines;
    std::map<FunctionPlace, FunctionFacts> _functions;
};

struct BuildFacts
{
    std::map<std::string, FileFacts> _files; // by absolute path
    std::set<std::string> _leftOut;     // functions of files that the import leaves out, readable
    std::vector<std::string> _failures; // one line for each unit that could not be read

    // Adds `other` to what is here.
    void add(const BuildFacts& other);
};
