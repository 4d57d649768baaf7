// SPDX-License-Identifier: MIT
//
// The importer of what clang++ -fprofile-instr-generate -fcoverage-mapping leaves: "zem-import
// llvm". Reads the map out of programs and libraries and the counters out of raw profiles; what it
// does not know goes through llvm-cov (LlvmCov.h).
#pragma once

#include "tools/import/Importer.h"
#include "tools/import/llvm/CoverageBuild.h"
#include "tools/import/llvm/ExportedImage.h"
#include "tools/import/llvm/LlvmCov.h"
#include "tools/import/llvm/LlvmInputs.h"
#include "tools/import/llvm/RunCounters.h"

#include <memory>
#include <string>
#include <vector>

class LlvmImporter : public Importer
{
public:
    int option(char** words) override;
    void input(const char* word) override;
    void usage(std::ostream& out) const override;
    bool recognises(const char* path) const override;
    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads) override;
    size_t runs() const override { return _runs.size(); }
    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                 unsigned int nThreads) override;

private:
    // What becomes one log.
    struct Run
    {
        std::string _name; // empty: that of the import
        std::vector<std::string> _profiles;
    };

    bool findInputs(ImportLosses& losses);
    bool findRuns(ImportLosses& losses);
    bool findFolderRuns(ImportLosses& losses);
    std::vector<std::string> allProfiles() const;
    bool readImages(const std::vector<LlvmInputs::Binary>& binaries, ImportLosses& losses);
    bool readImage(const LlvmInputs::Binary& binary, ImportLosses& losses);
    void addNames(CoverageImage& image) const;
    void lookAtProfiles(ImportedBuild& build);
    bool readImagesByTools();
    bool readRunByTools(size_t run, ImportLosses& losses);
    bool readProfile(const std::string& path, ImportLosses& losses);
    bool addParts(const std::string& path, const RawProfile& profile, ImportLosses& losses);
    bool isOfBuild(const ProfilePart& part) const;

    std::vector<std::string> _words;
    std::vector<const char*> _folders; // of runs; borrowed
    bool _isMerged = false;
    bool _keepsRunsApart = false;
    bool _usesTools = false; // llvm-profdata and llvm-cov
    LlvmCov _tools;
    std::vector<std::string> _toolBinaries;
    std::unique_ptr<ExportedImage> _toolRun; // the run that the functions were read with
    size_t _toolRunNumber = 0;
    LlvmInputs _inputs;
    std::vector<Run> _runs;
    CoverageBuild _build;
    std::unique_ptr<RunCounters> _counters;
    std::string _bytes;    // of the profile that is read
    size_t _addedRuns = 0; // in the files of the run that is read
    std::vector<std::unique_ptr<CoverageImage>> _read;
    std::string _stripped; // the first file that has lost its map
};
