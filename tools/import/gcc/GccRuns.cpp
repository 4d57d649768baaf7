// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccRuns.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/Progress.h"
#include "tools/common/WorkOn.h"
#include "tools/common/parallel.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace {

// Reads the notes of all units; each item is one.
class NotesJob : public ParallelJob
{
public:
    NotesJob(const std::vector<GccUnitFiles>& files, std::vector<GccUnit*> units, const char* gcov,
             bool takesLines)
        : _files(files), _units(std::move(units)), _gcov(gcov), _takesLines(takesLines),
          _progress("Reading units", _units.size())
    {}

    void run(size_t item) override
    {
        const WorkOn work("reading ", _files[item]._notes);
        const GccUnitFiles files = {_files[item]._notes, ""};
        if (_takesLines || !_units[item]->readBlocks(files)) {
            _units[item]->readLines(files, _gcov);
        }
        _progress.step();
    }

private:
    const std::vector<GccUnitFiles>& _files;
    const std::vector<GccUnit*> _units;
    const char* _gcov;
    const bool _takesLines;
    Progress _progress;
};

// Reads the counters of a run; each item is one unit.
class CountersJob : public ParallelJob
{
public:
    CountersJob(const std::vector<GccUnitFiles>& files, std::vector<GccUnit*> units,
                const char* gcov)
        : _files(files), _units(std::move(units)), _gcov(gcov)
    {}

    void run(size_t item) override
    {
        const WorkOn work("reading ", _files[item]._counters);
        _units[item]->readRun(_files[item], _gcov);
    }

private:
    const std::vector<GccUnitFiles>& _files;
    const std::vector<GccUnit*> _units;
    const char* _gcov;
};

} // namespace

// Takes what each unit has to say of what it read last.
void GccRuns::collect(ImportLosses& losses)
{
    _executionTime = 0;
    for (Unit& unit : _units) {
        if (!unit._unit->failure().empty()) {
            std::cerr << "zem-import: " << qipVisibleText(unit._notes.c_str()) << ": "
                      << qipVisibleText(unit._unit->failure().c_str()) << '\n';
        }
        losses.add(unit._unit->losses());
        unit._runs += unit._unit->losses()._mostRuns;
        _executionTime = std::max(_executionTime, unit._unit->executionTime());
    }
}

std::vector<GccUnit*> GccRuns::units() const
{
    std::vector<GccUnit*> result;
    for (const Unit& unit : _units) {
        result.push_back(unit._unit.get());
    }
    return result;
}

void GccRuns::readNotes(const std::vector<GccUnitFiles>& units, bool takesLines,
                        SourceTable& sources, ImportLosses& losses, unsigned int nThreads)
{
    for (const GccUnitFiles& files : units) {
        _units.push_back({files._notes, std::make_unique<GccUnit>(sources, _store), false, 0});
        _units.back()._unit->keepForRuns();
    }
    NotesJob job(units, this->units(), _gcov, takesLines);
    runParallel(job, units.size(), nThreads);
    ImportLosses read;
    collect(read);
    read._unitsNotRun = 0; // that is for the runs to say
    losses.add(read);
}

bool GccRuns::addRun(const char* folder, ImportLosses& losses, unsigned int nThreads)
{
    GccTree tree = _build;
    const bool isRead = tree.addRun(folder);
    losses._countersWithoutUnit += tree.strayCounters().size();
    losses._failedUnits += tree.findLostUnits();
    tree.problems().report(losses);
    if (!isRead) {
        return false;
    }
    if (!tree.isAnyUnitRun()) {
        std::cerr << "zem-import: no .gcda file of the run " << qipVisibleText(folder)
                  << " belongs to a unit of the build; was the program built in another folder?\n";
        return false;
    }
    std::vector<GccUnitFiles> files;
    for (Unit& unit : _units) {
        files.push_back({unit._notes, tree.countersOf(unit._notes)});
        unit._hasRun = unit._hasRun || !files.back()._counters.empty();
    }
    CountersJob job(files, units(), _gcov);
    runParallel(job, files.size(), nThreads);
    collect(losses);
    return true;
}

uint64_t GccRuns::unitsNotRun() const
{
    return static_cast<uint64_t>(std::count_if(_units.begin(), _units.end(),
                                               [](const Unit& unit) { return !unit._hasRun; }));
}

uint64_t GccRuns::mostRuns() const
{
    uint64_t most = 0;
    for (const Unit& unit : _units) {
        most = std::max(most, unit._runs);
    }
    return most;
}
