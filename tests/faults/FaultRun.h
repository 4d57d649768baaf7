// SPDX-License-Identifier: MIT
//
// Runs a program with one of its calls failing (faults.cpp).
#pragma once

#include "tests/support/Program.h"

#include <cerrno>
#include <map>
#include <string>
#include <vector>

struct Fault
{
    std::string call;         // open, read, write, seek, close, sync, rename, readdir, malloc
    long at = 0;              // from 1; 0 lets all pass
    std::string how = "fail"; // or last, short, kill, touch
    int reason = EIO;
    bool ownOnly = false; // allocations of the program's own code and the C++ library only
    std::string file{};   // when set, only what opens or reads it

    // For messages.
    std::string text() const;
};

// Programs that are started while it lives have the fault.
class FaultEnvironment
{
public:
    // `countsFile` gets the number of calls of each kind when such a program ends.
    FaultEnvironment(const Fault& fault, const std::string& countsFile);
    ~FaultEnvironment();
    FaultEnvironment(const FaultEnvironment&) = delete;
    FaultEnvironment& operator=(const FaultEnvironment&) = delete;

    // What a counts file says: kind of call > number.
    static std::map<std::string, long> counts(const std::string& countsFile);

private:
    std::map<std::string, std::string> _variables;
};

// Says how many programs with a fault this process has started so far: script/faults collects it.
void tellFaults(const std::string& program);

// Runs `words` and waits for its end. With `counts`, gives how many calls of each kind it made.
ProgramResult runWithFault(const std::vector<std::string>& words, const Fault& fault,
                           std::map<std::string, long>* counts = nullptr);

// Which of `total` calls a test lets fail: all of them when they are no more than `most` or when
// script/faults --all asks for it, else a sample that is the same in every run.
std::vector<long> chosenCalls(long total, size_t most);
