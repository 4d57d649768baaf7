// SPDX-License-Identifier: MIT
//
// Runs a program and takes what it prints.
#pragma once

#include <string>
#include <vector>

struct ProgramResult
{
    int status; // exit status, or 128 + the signal that ended it
    std::string out;
    std::string err;
};

// Runs `words[0]` with the others as arguments, without a shell and with no standard input, and
// waits for its end.
ProgramResult runProgram(const std::vector<std::string>& words);

// The same with the standard output as the shell's redirection `output` says: ">/dev/full", ">&-".
ProgramResult runProgramWithOutput(const std::string& output,
                                   const std::vector<std::string>& words);

// The path of one of this build's own programs.
std::string builtProgram(const std::string& name);
