// SPDX-License-Identifier: MIT
//
// The environment of a command: the program's own, with changes.
#pragma once

#include <string>
#include <vector>

class Environment
{
public:
    // Takes the program's own.
    Environment();

    // The value of a variable; null when it is not set. Valid until the next change.
    const char* value(const std::string& name) const;

    void set(const std::string& name, const std::string& value);

    // All of it as exec() wants it, ending with null. Valid until the next change.
    char** words();

private:
    std::vector<std::string> _entries; // NAME=VALUE
    std::vector<char*> _words;
};

// What makes each process leave counters of its own below `folder`: those of GCC under the path of
// their unit, those of Clang by process and program. Both are set, because who runs a command need
// not know what compiled its parts.
void collectInto(const std::string& folder, Environment& environment);
