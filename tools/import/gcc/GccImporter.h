// SPDX-License-Identifier: MIT
//
// The importer of builds made with g++ or clang++ --coverage: "zem-import gcc".
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/gcc/GccTree.h"

#include <cstdint>
#include <vector>

class GccImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool recognises(const char* path) const override;
    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) override;
    size_t runs() const override { return 1; }
    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                 unsigned int nThreads) override;

private:
    bool findUnits(std::vector<GccUnitFiles>& units, ImportLosses& losses);

    std::vector<const char*> _builds;
    std::vector<const char*> _runs;
    const char* _gcov = "gcov";
    bool _takesLines = false;
    bool _keepsProbes = false;
    ImportedRun _result; // notes and counters are read together
};
