// SPDX-License-Identifier: MIT
#include "tests/faults/FaultRun.h"

#include "tests/support/TempDir.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>
#include <sstream>

std::string Fault::text() const
{
    return call + " " + std::to_string(at) + " " + how + " (" + std::strerror(reason) + ")";
}

namespace {

long nFaults = 0;

} // namespace

FaultEnvironment::FaultEnvironment(const Fault& fault, const std::string& countsFile)
    : _variables{
          {"LD_PRELOAD", ZEM_FAULTS_LIBRARY},
          {"ZEM_FAULT_CALL", fault.call},
          {"ZEM_FAULT_AT", std::to_string(fault.at)},
          {"ZEM_FAULT_HOW", fault.how},
          {"ZEM_FAULT_ERRNO", std::to_string(fault.reason)},
          {"ZEM_FAULT_COUNTS", countsFile},
      }
{
    if (fault.ownOnly) {
        _variables["ZEM_FAULT_OWN"] = "1";
    }
    if (!fault.file.empty()) {
        _variables["ZEM_FAULT_FILE"] = fault.file;
    }
    nFaults += fault.at > 0 ? 1 : 0;
    for (const auto& variable : _variables) {
        setenv(variable.first.c_str(), variable.second.c_str(), 1);
    }
}

FaultEnvironment::~FaultEnvironment()
{
    for (const auto& variable : _variables) {
        unsetenv(variable.first.c_str());
    }
}

std::map<std::string, long> FaultEnvironment::counts(const std::string& countsFile)
{
    std::map<std::string, long> result;
    std::istringstream text(TempDir::read(countsFile));
    std::string call;
    long number = 0;
    while (text >> call >> number) {
        result[call] = number;
    }
    return result;
}

ProgramResult runWithFault(const std::vector<std::string>& words, const Fault& fault,
                           std::map<std::string, long>* counts)
{
    const TempDir dir;
    const std::string countsFile = dir.path("counts");
    ProgramResult result;
    {
        const FaultEnvironment environment(fault, countsFile);
        result = runProgram(words);
    }
    if (counts != nullptr) {
        *counts = FaultEnvironment::counts(countsFile);
    }
    return result;
}

void tellFaults(const std::string& program)
{
    std::printf("%ld faults under %s\n", nFaults, program.c_str());
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
