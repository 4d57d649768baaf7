// SPDX-License-Identifier: MIT
//
// Makes names of files of what users call their runs: a test, a folder. Each result is another one.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

class RunNames
{
public:
    // In bytes, without what tells equal names apart.
    static constexpr size_t LongestName = 200;

    // `name` with "_" for what a path or a shell would take for something else, cut to
    // LongestName. A name that was there before gets "-2", "-3" and so on behind it.
    std::string fileName(const std::string& name);

    // The same for what is the name of a file already.
    std::string another(const std::string& fileName);

private:
    std::unordered_set<std::string> _used;
    std::unordered_map<std::string, size_t> _last; // number given behind a name
};
