// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccImporter.h"

#include "tools/common/Progress.h"
#include "tools/common/parallel.h"
#include "tools/import/ModelBuilder.h"
#include "tools/import/gcc/GccUnit.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <memory>

namespace {

// Reads all units; each item is one.
class UnitsJob : public ParallelJob
{
public:
    UnitsJob(const std::vector<GccUnitFiles>& files, const SourceFilter& filter, const char* gcov,
             bool takesLines)
        : _files(files), _filter(filter), _gcov(gcov), _takesLines(takesLines),
          _progress("Reading units", files.size()), _units(files.size())
    {}

    void run(size_t item) override
    {
        _units[item] = std::make_unique<GccUnit>(_filter);
        if (_takesLines || !_units[item]->readBlocks(_files[item])) {
            _units[item]->readLines(_files[item], _gcov);
        }
        _progress.step();
    }

    std::unique_ptr<GccUnit>& unit(size_t item) { return _units[item]; }

private:
    const std::vector<GccUnitFiles>& _files;
    const SourceFilter& _filter;
    const char* _gcov;
    const bool _takesLines;
    Progress _progress;
    std::vector<std::unique_ptr<GccUnit>> _units;
};

} // namespace

int GccImporter::option(char** words)
{
    if (std::strcmp(words[0], "--lines") == 0) {
        _takesLines = true;
        return 1;
    }
    if (std::strcmp(words[0], "--system") == 0) {
        _filter.keepSystem();
        return 1;
    }
    if (words[1] == nullptr) {
        return 0;
    }
    if (std::strcmp(words[0], "--run") == 0) {
        _runs.push_back(words[1]);
    } else if (std::strcmp(words[0], "--exclude") == 0) {
        _filter.exclude(words[1]);
    } else if (std::strcmp(words[0], "--only") == 0) {
        _filter.only(words[1]);
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
    out << "  --run DIR        take the counters of one run from DIR (written with GCOV_PREFIX)\n"
           "  --exclude GLOB   leave out source files whose path matches\n"
           "  --only DIR       keep only source files below DIR\n"
           "  --system         keep source files below /usr too\n"
           "  --lines          take lines from gcov instead of basic blocks\n"
           "  --gcov PROGRAM   the gcov to ask for lines (default: gcov)\n";
}

bool GccImporter::findUnits(std::vector<GccUnitFiles>& units, ImportLosses& losses)
{
    GccTree tree;
    bool isRead = true;
    for (const char* build : _builds) {
        isRead = tree.addBuild(build) && isRead;
    }
    for (const char* run : _runs) {
        isRead = tree.addRun(run) && isRead;
    }
    units = tree.units();
    losses._countersWithoutUnit = tree.strayCounters().size();
    losses._failedUnits += tree.findLostUnits();
    losses._unreadFolders = tree.unreadFolders();
    tree.writeProblems(std::cerr);
    if (!isRead) {
        return false;
    }
    if (units.empty()) {
        std::cerr << "zem-import: no .gcno file found; was it built with g++ --coverage?\n";
        return false;
    }
    if (!_runs.empty() && !tree.isAnyUnitRun()) {
        std::cerr << "zem-import: no .gcda file of the run belongs to a unit of the build; was the "
                     "program built in another folder?\n";
        return false;
    }
    return true;
}

bool GccImporter::import(CoverageModel& model, ImportLosses& losses, unsigned int nThreads)
{
    std::vector<GccUnitFiles> files;
    if (!findUnits(files, losses)) {
        return false;
    }
    UnitsJob job(files, _filter, _gcov, _takesLines);
    runParallel(job, files.size(), nThreads);

    ModelBuilder builder(model);
    for (size_t i = 0; i < files.size(); ++i) {
        GccUnit& unit = *job.unit(i);
        if (!unit.failure().empty()) {
            std::cerr << "zem-import: " << files[i]._notes << ": " << unit.failure() << '\n';
        }
        losses.add(unit.losses());
        model._executionTime = std::max(model._executionTime, unit.executionTime());
        for (GccUnitFunction& entry : unit.functions()) {
            builder.add(entry._path, entry._function);
        }
        job.unit(i).reset();
    }
    return true;
}
