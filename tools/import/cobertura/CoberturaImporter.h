// SPDX-License-Identifier: MIT
//
// The importer of Cobertura documents: "zem-import cobertura". Each document is a run.
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/lines/LineTable.h"

#include <string>
#include <vector>

class CoberturaImporter : public Importer
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
    bool findDocuments(std::vector<std::string>& paths, ImportLosses& losses) const;

    std::vector<std::string> _words;
    LineTable _table;
};
