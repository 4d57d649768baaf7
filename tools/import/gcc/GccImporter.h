// SPDX-License-Identifier: MIT
//
// The importer of builds made with g++ or clang++ --coverage: "zem-import gcc".
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/gcc/GccRuns.h"
#include "tools/import/gcc/GccTree.h"

#include <memory>
#include <vector>

class GccImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool recognises(const char* path) const override;
    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) override;
    size_t runs() const override { return _keepsRunsApart ? _runs.size() : 1; }
    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                 unsigned int nThreads) override;

private:
    // Notes and counters are read together, unless there are more counters than one unit has.
    bool hasSeveralRuns() const { return _keepsRunsApart || _runs.size() > 1; }
    bool findUnits(std::vector<GccUnitFiles>& units, ImportLosses& losses);
    bool readAtOnce(const std::vector<GccUnitFiles>& files, ImportedBuild& build,
                    ImportLosses& losses, unsigned int nThreads);
    bool readForRuns(const std::vector<GccUnitFiles>& files, ImportedBuild& build,
                     ImportLosses& losses, unsigned int nThreads);
    static bool tooLarge();

    std::vector<const char*> _builds;
    std::vector<const char*> _runs;
    const char* _gcov = "gcov";
    bool _takesLines = false;
    bool _keepsProbes = false;
    bool _keepsRunsApart = false;
    GccTree _tree;
    ImportedRun _result;               // of the build with all runs added up
    std::unique_ptr<GccRuns> _eachRun; // when there are several
};
