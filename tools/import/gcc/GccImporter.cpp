// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccImporter.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/FolderWalk.h"
#include "tools/common/Progress.h"
#include "tools/common/WorkOn.h"
#include "tools/common/parallel.h"
#include "tools/import/SourceTable.h"
#include "tools/import/gcc/GccUnit.h"
#include "tools/import/isBuildProbe.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <utility>

namespace {

// Of a folder that may hold anything.
constexpr size_t MostEntriesLookedAt = 100000;

void leaveOutProbes(std::vector<GccUnitFiles>& units, ImportLosses& losses)
{
    const auto kept = std::remove_if(units.begin(), units.end(), [](const GccUnitFiles& unit) {
        return isBuildProbe(unit._notes);
    });
    losses._probeUnits = static_cast<uint64_t>(units.end() - kept);
    units.erase(kept, units.end());
}

// What a folder is called where it lies, whatever the path looks like.
std::string lastPartOf(const char* folder)
{
    std::error_code failure;
    const std::filesystem::path real = std::filesystem::canonical(folder, failure);
    return real.filename().string();
}

// Reads all units; each item is one.
class UnitsJob : public ParallelJob
{
public:
    // What is left of a unit when its functions are in the store.
    struct Outcome
    {
        ImportLosses _losses;
        std::string _failure;
        uint32_t _executionTime = 0;
    };

    UnitsJob(const std::vector<GccUnitFiles>& files, SourceTable& sources, GraphStore& store,
             const char* gcov, bool takesLines)
        : _files(files), _sources(sources), _store(store), _gcov(gcov), _takesLines(takesLines),
          _progress("Reading units", files.size()), _outcomes(files.size())
    {}

    void run(size_t item) override
    {
        const WorkOn work("reading ", _files[item]._notes);
        GccUnit unit(_sources, _store);
        if (_takesLines || !unit.readBlocks(_files[item])) {
            unit.readLines(_files[item], _gcov);
        }
        _outcomes[item] = {unit.losses(), unit.failure(), unit.executionTime()};
        _progress.step();
    }

    const Outcome& outcome(size_t item) const { return _outcomes[item]; }

private:
    const std::vector<GccUnitFiles>& _files;
    SourceTable& _sources;
    GraphStore& _store;
    const char* _gcov;
    const bool _takesLines;
    Progress _progress;
    std::vector<Outcome> _outcomes;
};

} // namespace

int GccImporter::option(char** words)
{
    if (std::strcmp(words[0], "--lines") == 0) {
        _takesLines = true;
        return 1;
    }
    if (std::strcmp(words[0], "--each-run") == 0) {
        _keepsRunsApart = true;
        return 1;
    }
    if (std::strcmp(words[0], "--probes") == 0) {
        _keepsProbes = true;
        return 1;
    }
    if (words[1] == nullptr) {
        return 0;
    }
    if (std::strcmp(words[0], "--run") == 0) {
        _runs.push_back(words[1]);
    } else if (std::strcmp(words[0], "--gcov") == 0) {
        _gcov = words[1];
    } else {
        return 0;
    }
    return 2;
}

void GccImporter::input(const char* word)
{
    _builds.push_back(word);
}

void GccImporter::usage(std::ostream& out) const
{
    out << "  --run DIR        take the counters of one run from DIR (written with GCOV_PREFIX);\n"
           "                   those of several runs are added up\n"
           "  --each-run       write a log for each --run DIR, named after it\n"
           "  --probes         keep what build systems compiled to try the compiler\n"
           "  --lines          take lines from gcov instead of basic blocks\n"
           "  --gcov PROGRAM   the gcov to ask for lines (default: gcov)\n";
}

// Finds the units; with one run, or none, their counters too.
bool GccImporter::findUnits(std::vector<GccUnitFiles>& units, ImportLosses& losses)
{
    bool isRead = true;
    for (const char* build : _builds) {
        isRead = _tree.addBuild(build) && isRead;
    }
    if (!hasSeveralRuns()) {
        for (const char* run : _runs) {
            isRead = _tree.addRun(run) && isRead;
        }
        losses._countersWithoutUnit = _tree.strayCounters().size();
        losses._failedUnits += _tree.findLostUnits();
    }
    units = _tree.units();
    _tree.problems().report(losses);
    if (!isRead) {
        return false;
    }
    if (!_keepsProbes) {
        leaveOutProbes(units, losses);
    }
    if (units.empty()) {
        std::cerr << (losses._probeUnits > 0
                          ? "zem-import: only probes of a build system found: --probes keeps them\n"
                          : "zem-import: no .gcno file found; was it built with --coverage?\n");
        return false;
    }
    if (!_runs.empty() && !hasSeveralRuns() && !_tree.isAnyUnitRun()) {
        std::cerr << "zem-import: no .gcda file of the run belongs to a unit of the build; was the "
                     "program built in another folder?\n";
        return false;
    }
    return true;
}

bool GccImporter::recognises(const char* path) const
{
    FolderWalk walk(path);
    for (size_t entries = 0; entries < MostEntriesLookedAt && walk.next(); ++entries) {
        const std::string& file = walk.path();
        const size_t dot = file.rfind('.');
        if (dot != std::string::npos && file.compare(dot, std::string::npos, ".gcno") == 0) {
            return true;
        }
    }
    return false;
}

bool GccImporter::tooLarge()
{
    std::cerr << "zem-import: the build has more than " << ImportedBuild::MostCounts
              << " basic blocks; import it in parts\n";
    return false;
}

bool GccImporter::readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    if (_keepsRunsApart && _runs.empty()) {
        std::cerr << "zem-import: --each-run wants the folders of runs: --run DIR\n";
        return false;
    }
    std::vector<GccUnitFiles> files;
    if (!findUnits(files, losses)) {
        return false;
    }
    return hasSeveralRuns() ? readForRuns(files, build, losses, nThreads)
                            : readAtOnce(files, build, losses, nThreads);
}

// Reads notes and counters of each unit together.
bool GccImporter::readAtOnce(const std::vector<GccUnitFiles>& files, ImportedBuild& build,
                             ImportLosses& losses, unsigned int nThreads)
{
    GraphStore store;
    UnitsJob job(files, build._sources, store, _gcov, _takesLines);
    runParallel(job, files.size(), nThreads);
    for (size_t i = 0; i < files.size(); ++i) {
        const UnitsJob::Outcome& outcome = job.outcome(i);
        if (!outcome._failure.empty()) {
            std::cerr << "zem-import: " << qipVisibleText(files[i]._notes.c_str()) << ": "
                      << qipVisibleText(outcome._failure.c_str()) << '\n';
        }
        losses.add(outcome._losses);
        _result._executionTime = std::max(_result._executionTime, outcome._executionTime);
    }
    return store.solve(nThreads, build, _result._counts, losses) || tooLarge();
}

// Reads the notes, and the counters of all runs when they are added up.
bool GccImporter::readForRuns(const std::vector<GccUnitFiles>& files, ImportedBuild& build,
                              ImportLosses& losses, unsigned int nThreads)
{
    _eachRun = std::make_unique<GccRuns>(_tree, _gcov);
    _eachRun->readNotes(files, _takesLines, build._sources, losses, nThreads);
    if (_keepsRunsApart) {
        return _eachRun->store().giveCopies(build, losses) || tooLarge();
    }
    for (const char* folder : _runs) {
        ImportLosses run;
        if (!_eachRun->addRun(folder, run, nThreads)) {
            return false;
        }
        run._unitsNotRun = 0;
        losses.add(run);
        _result._executionTime = std::max(_result._executionTime, _eachRun->executionTime());
    }
    losses._unitsNotRun = _eachRun->unitsNotRun();
    losses._mostRuns = _eachRun->mostRuns();
    const bool isGood = _eachRun->store().solve(nThreads, build, _result._counts, losses);
    _eachRun.reset();
    return isGood || tooLarge();
}

bool GccImporter::readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                          unsigned int nThreads)
{
    if (!_keepsRunsApart) {
        result = std::move(_result);
        return true;
    }
    if (!_eachRun->addRun(_runs[run], losses, nThreads)) {
        return false;
    }
    result._name = lastPartOf(_runs[run]);
    result._executionTime = _eachRun->executionTime();
    _eachRun->store().solveRun(nThreads, result._counts, losses);
    return true;
}
