// SPDX-License-Identifier: MIT
//
// Sorts the words of an import into programs and profiles, and finds both in folders: profiles by
// their names (.profraw), programs and libraries by their first bytes. Objects that were not linked
// count only where a folder's programs have no coverage.
#pragma once

#include "tools/common/WalkProblems.h"

#include <set>
#include <string>
#include <vector>

class LlvmInputs
{
public:
    struct Binary
    {
        std::string _path;
        bool _isNamed = false; // by the user; else found in a folder
    };

    // What the first bytes of a file say.
    enum Kind { Nothing, Elf, Object, Raw, Indexed, Other };
    static Kind kindOf(const std::string& path);
    // The same of a file that is there; Nothing, with `problem` set, when it cannot be read.
    static Kind kindOf(const std::string& path, std::string& problem);

    static bool isFolder(const std::string& path);
    // Whether a name is that of a raw profile.
    static bool hasProfileName(const std::string& path);

    // Whether it is that of a profile in words, which llvm-profdata makes.
    static bool hasTextName(const std::string& path);

    // Takes a file or a folder with all below. Returns false when it cannot be read. What is wrong
    // with a file is a line on the standard error stream; the rest is among the problems.
    bool add(const std::string& word);

    // Each once, those of a folder in the order of their paths.
    const std::vector<Binary>& binaries() const { return _binaries; }
    const std::vector<Binary>& objects() const { return _objects; }
    const std::vector<std::string>& profiles() const { return _profiles; }
    // What was met in folders since it was reported last; all words have to be added before.
    WalkProblems& problems() { return _problems; }

private:
    bool addFolder(const std::string& folder);
    bool isNew(const std::string& path);

    std::vector<Binary> _binaries;
    std::vector<Binary> _objects; // in folders
    std::vector<std::string> _profiles;
    std::set<std::string> _known; // paths without links
    WalkProblems _problems;
};
