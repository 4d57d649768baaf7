// SPDX-License-Identifier: MIT
//
// Decides which source files an import keeps. Filled before the work starts, then only asked, from
// several threads.
#pragma once

#include <string>
#include <vector>

class SourceFilter
{
public:
    enum Answer { Kept, System, Excluded };

    // Keeps files under /usr too.
    void keepSystem() { _keepsSystem = true; }
    // Leaves out what the shell pattern matches; "*" also matches "/".
    void exclude(const char* pattern) { _patterns.push_back(pattern); }
    // Keeps only files in `folder` and below. Several folders add up.
    void only(const char* folder);

    // `path` is absolute.
    Answer ask(const std::string& path) const;

private:
    bool _keepsSystem = false;
    std::vector<std::string> _patterns;
    std::vector<std::string> _folders; // absolute, with "/" at the end
};
