// SPDX-License-Identifier: MIT
#include "tools/import/lcov/LcovImporter.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/WorkOn.h"
#include "tools/import/lcov/Tracefile.h"
#include "tools/import/lines/InputFiles.h"
#include "tools/import/lines/inputNames.h"

#include <iostream>

namespace {

const char* const ends[] = {".info", ".info.gz", nullptr};

bool fail(const std::string& problem)
{
    std::cerr << "zem-import: " << qipVisibleText(problem.c_str()) << '\n';
    return false;
}

} // namespace

int LcovImporter::option(char** /*words*/)
{
    return 0;
}

void LcovImporter::input(const char* word)
{
    _words.emplace_back(word);
}

void LcovImporter::usage(std::ostream& out) const
{
    out << "  a folder stands for the files below it that end in .info or .info.gz;\n"
           "  each test that a file names (TN:) is a log of its own\n";
}

bool LcovImporter::recognises(const char* path) const
{
    constexpr size_t HeadSize = 4096;
    const std::string head = "\n" + headOf(path, HeadSize);
    return head.find("\nTN:") != std::string::npos || head.find("\nSF:") != std::string::npos ||
           InputFiles(ends).isLikely(path);
}

bool LcovImporter::readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    InputFiles files(ends);
    bool isRead = true;
    for (const std::string& word : _words) {
        isRead = files.add(word) && isRead;
    }
    files.problems().report(losses);
    if (!isRead) {
        return false;
    }
    for (const std::string& path : files.paths()) {
        const WorkOn work("reading ", path);
        Tracefile file(_table);
        if (!file.read(path, stemOf(path))) {
            return fail(file.problem());
        }
        losses.add(file.losses());
    }
    return _table.fillBuild(build, losses, nThreads) || fail("the tracefiles have too many lines");
}

bool LcovImporter::readRun(size_t run, ImportedRun& result, ImportLosses& /*losses*/,
                           unsigned int /*nThreads*/)
{
    // The only one is known by the import's name.
    result._name = runs() > 1 ? _table.runName(run) : std::string();
    result._executionTime = _table.runTime(run);
    _table.fillCounts(run, result._counts);
    return true;
}
