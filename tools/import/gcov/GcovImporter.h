// SPDX-License-Identifier: MIT
//
// The importer of gcov's JSON documents: "zem-import gcov". All documents are one run, or with
// --each those of each input one.
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/gcov/GcovCopies.h"

#include <memory>
#include <string>
#include <vector>

class GcovImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool recognises(const char* path) const override;
    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) override;
    size_t runs() const override { return _isEach ? _words.size() : 1; }
    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                 unsigned int nThreads) override;

    // A file to read.
    struct Document
    {
        std::string _path;
        size_t _run;
    };

private:
    bool findDocuments(std::vector<Document>& documents, ImportLosses& losses) const;

    std::vector<std::string> _words;
    bool _isEach = false;
    std::unique_ptr<GcovCopies> _copies;
    std::vector<uint32_t> _times; // of each run
};
