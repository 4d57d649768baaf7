// SPDX-License-Identifier: MIT
//
// The importer of builds made with g++ --coverage: "zem-import gcc".
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/gcc/GccTree.h"
#include "tools/import/gcc/SourceFilter.h"

#include <vector>

class GccImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool import(CoverageModel& model, ImportLosses& losses, unsigned int nThreads) override;

private:
    bool findUnits(std::vector<GccUnitFiles>& units, ImportLosses& losses);

    SourceFilter _filter;
    std::vector<const char*> _builds;
    std::vector<const char*> _runs;
    const char* _gcov = "gcov";
    bool _takesLines = false;
    bool _keepsInstances = false;
    bool _keepsProbes = false;
};
