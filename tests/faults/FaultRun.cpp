// SPDX-License-Identifier: MIT
#include "tests/faults/FaultRun.h"

#include "tests/support/TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>
#include <sstream>

std::string Fault::text() const
{
    return call + " " + std::to_string(at) + " " + how + " (" + std::strerror(reason) + ")";
}

ProgramResult runWithFault(const std::vector<std::string>& words, const Fault& fault,
                           std::map<std::string, long>* counts)
{
    const TempDir dir;
    const std::map<std::string, std::string> environment = {
        {"LD_PRELOAD", ZEM_FAULTS_LIBRARY},
        {"ZEM_FAULT_CALL", fault.call},
        {"ZEM_FAULT_AT", std::to_string(fault.at)},
        {"ZEM_FAULT_HOW", fault.how},
        {"ZEM_FAULT_ERRNO", std::to_string(fault.reason)},
        {"ZEM_FAULT_COUNTS", dir.path("counts")},
    };
    for (const auto& variable : environment) {
        setenv(variable.first.c_str(), variable.second.c_str(), 1);
    }
    const ProgramResult result = runProgram(words);
    for (const auto& variable : environment) {
        unsetenv(variable.first.c_str());
    }
    if (counts != nullptr) {
        std::istringstream text(TempDir::read(dir.path("counts")));
        std::string call;
        long number = 0;
        while (text >> call >> number) {
            (*counts)[call] = number;
        }
    }
    return result;
}

std::vector<long> chosenCalls(long total, size_t most)
{
    std::vector<long> calls(static_cast<size_t>(total));
    std::iota(calls.begin(), calls.end(), 1);
    if (calls.size() <= most || std::getenv("ZEM_FAULTS_ALL") != nullptr) {
        return calls;
    }
    std::shuffle(calls.begin(), calls.end(), std::mt19937(1));
    calls.resize(most);
    std::sort(calls.begin(), calls.end());
    return calls;
}
