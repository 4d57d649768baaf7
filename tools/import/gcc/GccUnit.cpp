// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tools/common/SourcePath.h"
#include "tools/import/gcc/FlowSolver.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/GcovInput.h"
#include "tools/import/gcc/GcovLines.h"

#include <algorithm>
#include <utility>

namespace {

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

const char mismatch[] = "the .gcda file does not fit the unit's functions";

} // namespace

GccUnit::GccUnit(const SourceFilter& filter) : _filter(filter) {}

void GccUnit::fail(const std::string& reason)
{
    _failure = reason;
    _losses._failedUnits = 1;
}

// Says which counters cannot be used, and what to do about it.
void GccUnit::failCounters(const std::string& reason)
{
    fail((_countersProblem.empty() ? reason : _countersProblem) +
         ": run the tests again, or delete " + (_countersPath.empty() ? "it" : _countersPath));
}

const GccUnit::Source& GccUnit::source(const std::string& folder, const std::string& file)
{
    const auto found = _sources.emplace(file, Source());
    Source& source = found.first->second;
    if (found.second) {
        source._path = absolutePath(folder, file);
        source._answer = _filter.ask(source._path);
    }
    return source;
}

bool GccUnit::isWanted(const GcnoFunction& function, const Source& source)
{
    if (source._answer == SourceFilter::System) {
        ++_losses._systemFunctions;
    } else if (source._answer == SourceFilter::Excluded) {
        ++_losses._excludedFunctions;
    } else if (function._isArtificial) {
        ++_losses._artificialFunctions;
    } else {
        return true;
    }
    return false;
}

void GccUnit::addBlocks(const GcnoFunction& function, const std::vector<int64_t>& counts,
                        std::vector<CovBlock>& blocks)
{
    std::vector<CovBlock> all(function._nBlocks);
    std::vector<bool> isElsewhere(function._nBlocks);
    for (const GcnoLine& line : function._lines) {
        if (line._file != 0) {
            ++_losses._linesOfOtherFiles;
            isElsewhere[line._block] = true;
            continue;
        }
        CovBlock& block = all[line._block];
        block._startLine =
            block._startLine == 0 ? line._line : std::min(block._startLine, line._line);
        block._stopLine = std::max(block._stopLine, line._line);
    }
    for (uint32_t i = GcnoFunction::ExitBlock + 1; i < function._nBlocks; ++i) {
        if (all[i]._startLine != 0) {
            all[i]._hits = counts[i];
            blocks.push_back(all[i]);
        } else if (isElsewhere[i]) {
            ++_losses._blocksOfOtherFiles;
        } else {
            ++_losses._blocksWithoutLine;
        }
    }
}

bool GccUnit::useCounters(GcdaFile& counters, const GcnoFile& notes, std::string& failure)
{
    const GcdaFile::Result result = counters.open(notes.stamp());
    if (result != GcdaFile::Ok) {
        failure = GcdaFile::text(result);
        return false;
    }
    _losses._mostRuns = counters.runs();
    return true;
}

bool GccUnit::readBlocks(const std::string& notesBytes, const std::string* counterBytes)
{
    GcnoFile notes(bytesOf(notesBytes), notesBytes.size());
    switch (notes.open()) {
    case GcnoFile::Ok:
        break;
    case GcnoFile::UnknownVersion:
        if (notes.major() >= GcovWords::FirstMajor) {
            return false; // a gcov that is as new can read it
        }
        fail(GcovWords::otherCompiler());
        return true;
    case GcnoFile::NotNotes:
        fail("the .gcno file holds no notes");
        return true;
    case GcnoFile::Damaged:
        fail("the .gcno file is damaged: compile the unit again");
        return true;
    }
    static const std::string nothing;
    const std::string& bytes = counterBytes != nullptr ? *counterBytes : nothing;
    GcdaFile counters(bytesOf(bytes), bytes.size());
    std::string failure;
    bool isUsed = counterBytes != nullptr && useCounters(counters, notes, failure);
    _losses._unitsNotRun = counterBytes == nullptr ? 1 : 0;

    GcnoFunction function;
    std::vector<int64_t> counts;
    while (notes.nextFunction(function)) {
        const Source& source = this->source(notes.folder(), function._files[0]);
        if (!isWanted(function, source)) {
            continue;
        }
        if (!notes.readGraph(function)) {
            break;
        }
        if (isUsed && !counters.fillCounters(function)) {
            failure = mismatch;
            isUsed = false;
        }
        if (!solveFlow(function, counts)) {
            ++_losses._unsolvedFunctions;
        }
        _functions.emplace_back();
        GccUnitFunction& entry = _functions.back();
        entry._path = source._path;
        entry._function._symbol = std::move(function._symbol);
        entry._function._startLine = function._startLine;
        entry._function._endLine = function._endLine;
        addBlocks(function, counts, entry._function._blocks);
    }
    if (notes.damaged()) {
        _functions.clear();
        _losses = ImportLosses();
        fail("the .gcno file is damaged: compile the unit again");
    } else if (!failure.empty()) {
        // Counts of a unit that does not fit are no counts, also those of functions that did.
        for (GccUnitFunction& entry : _functions) {
            for (CovBlock& block : entry._function._blocks) {
                block._hits = 0;
            }
        }
        _losses._mostRuns = 0;
        failCounters(failure);
    }
    return true;
}

bool GccUnit::readBlocks(const GccUnitFiles& files)
{
    GcovInput notes(GcovWords::NotesMagic);
    if (!notes.read(files._notes)) {
        fail("the .gcno file cannot be read: " + notes.problem());
        return true;
    }
    if (files._counters.empty()) {
        return readBlocks(notes.bytes(), nullptr);
    }
    // Counters that cannot be read are a failure, not those of a unit that never ran.
    GcovInput counters(GcovWords::CountersMagic);
    if (!counters.read(files._counters)) {
        counters.bytes().clear();
        _countersProblem = "the .gcda file cannot be read: " + counters.problem();
    }
    _countersPath = files._counters;
    _executionTime = modificationTime(files._counters);
    return readBlocks(notes.bytes(), &counters.bytes());
}

void GccUnit::readLines(const GccUnitFiles& files, const char* gcov)
{
    std::string json;
    GcovLines lines;
    if (!runGcov(gcov, files, json) || !lines.parse(json)) {
        fail(std::string(gcov) +
             " gave no lines for it: name the gcov of its compiler with --gcov");
        return;
    }
    _losses._unitsAsLines = 1;
    _losses._linesOfOtherFiles = lines.strayLines();
    _losses._unitsNotRun = files._counters.empty() ? 1 : 0;
    _executionTime = files._counters.empty() ? 0 : modificationTime(files._counters);
    for (GcovLineFunction& entry : lines.functions()) {
        const Source& source = this->source(entry._folder, entry._file);
        if (isWanted(GcnoFunction(), source)) {
            _functions.push_back({source._path, std::move(entry._function)});
        }
    }
}
