// SPDX-License-Identifier: MIT
//
// The importer of tracefiles: "zem-import lcov". Each test that the files name is a run. What has
// no test's name is one run, or, of several files, one for each, under the file's name.
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/lines/LineTable.h"

#include <string>
#include <vector>

class LcovImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool recognises(const char* path) const override;
    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) override;
    size_t runs() const override { return _table.runs(); }
    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                 unsigned int nThreads) override;

private:
    std::vector<std::string> _words;
    LineTable _table;
};
