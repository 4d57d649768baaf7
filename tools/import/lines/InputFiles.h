// SPDX-License-Identifier: MIT
//
// The files that the words of a command line stand for: a file is itself, a folder stands for all
// files below it whose names have one of certain ends.
#pragma once

#include "tools/common/WalkProblems.h"

#include <string>
#include <vector>

class InputFiles
{
public:
    // `ends` are such as ".info", with a null pointer behind the last; borrowed.
    explicit InputFiles(const char* const* ends) : _ends(ends) {}

    // Takes a word. Returns false when it is a folder that cannot be read or holds no such file;
    // that, and what could not be read below it, is a problem.
    bool add(const std::string& word);

    // In the order of the words, those of a folder by path; a file that two words stand for comes
    // twice.
    const std::vector<std::string>& paths() const { return _paths; }
    // What was met since it was reported last; all words have to be added before.
    WalkProblems& problems() { return _problems; }

    // Whether a name ends like one of them.
    bool fits(const std::string& path) const;

    // Whether `folder` is one that holds such a file among the first that a walk meets: a look
    // that costs little, however much is in it.
    bool isLikely(const std::string& folder) const;

private:
    const char* const* _ends;
    std::vector<std::string> _paths;
    WalkProblems _problems;
};
