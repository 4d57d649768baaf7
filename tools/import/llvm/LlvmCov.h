// SPDX-License-Identifier: MIT
//
// Asks llvm-profdata and llvm-cov for what the importer cannot read itself: profiles and maps of
// versions that it does not know, and profiles that were merged already.
#pragma once

#include "tools/import/llvm/LlvmExport.h"

#include <cstdint>
#include <string>
#include <vector>

class LlvmCov
{
public:
    // Take these programs and no others. Borrowed.
    void useCov(const char* program) { _cov = program; }
    void useProfdata(const char* program) { _profdata = program; }

    // Gives `receiver` the functions of the programs and libraries `binaries`, with counts by the
    // sum of `profiles`. Returns false with problem() set when no installed tool can.
    bool read(const std::vector<std::string>& binaries, const std::vector<std::string>& profiles,
              LlvmExport::Receiver& receiver);

    const std::string& problem() const { return _problem; }

private:
    bool index(const std::vector<std::string>& profiles, const std::string& result);

    const char* _cov = nullptr;
    const char* _profdata = nullptr;
    std::string _problem;
};
