// SPDX-License-Identifier: MIT
//
// Shows what a program prints with one text replaced by another: the path of a private folder,
// which is gone when somebody wants to look there, by that of the folder that it stands for.
//
// The program's standard output and error stream lead to processes that pass on what they read,
// until no one can write to them any more: children of this program, which Process::waitForOthers()
// waits for. What goes to a terminal goes through another one, so that the program prints what it
// prints to a terminal; both streams share one where they go to one place, so that their lines stay
// in order.
#pragma once

#include <string>
#include <vector>

class OutputFilter
{
public:
    OutputFilter(std::string from, std::string to);
    // Closes the ends for the program.
    ~OutputFilter();
    OutputFilter(const OutputFilter&) = delete;
    OutputFilter& operator=(const OutputFilter&) = delete;

    // Where the system refuses, the program's streams stay what they are. To be called once.
    void start();

    // For the program, in place of its standard output and error stream; -1 to leave them alone.
    int output() const { return _output; }
    int error() const { return _error; }

    // Closes the ends for the program, which has its own now.
    void close();

private:
    int open(int stream);
    bool makeEnds(int stream, int& reading, int& writing) const;
    bool makeTerminal(int stream, int& reading, int& writing) const;
    void pass(int reading, int stream) const;

    const std::string _from;
    const std::string _to;
    int _output = -1;
    int _error = -1;
};
