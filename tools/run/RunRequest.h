// SPDX-License-Identifier: MIT
//
// What the command line of zem-run asks for.
//
//     zem-run [options] [--] COMMAND [ARGUMENT...]
//
// The first word that is no option begins the command; everything from there belongs to it.
#pragma once

#include <string>
#include <vector>

struct RunRequest
{
    enum Wanted { Run, Help, Version };

    Wanted _wanted = Run;                  // else the rest was not read
    std::string _build;                    // empty: to be found
    std::vector<std::string> _binaries;    // instrumented by Clang; empty: to be found
    std::string _folder = "coverage";      // where logs and maps go
    std::string _name;                     // of the log; empty: made from the command
    std::vector<std::string> _importWords; // passed on to zem-import
    bool _isViewed = false;
    bool _isEach = false;
    char** _command = nullptr; // ends with null; borrowed from the words that were read

    // Reads `words`, which end with null and stay unchanged. Returns an empty text, or what is
    // wrong with them.
    std::string read(char** words);

private:
    int takeOption(char** words);
    std::string check() const;
};
