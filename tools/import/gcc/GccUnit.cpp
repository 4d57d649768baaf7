// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tools/common/SourcePath.h"
#include "tools/import/gcc/FlowSolver.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/GcovLines.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// Returns false when the file cannot be read whole.
bool readWhole(const std::string& path, std::string& bytes)
{
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    struct stat status = {};
    bool isGood = fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    bytes.resize(isGood ? static_cast<size_t>(status.st_size) : 0);
    size_t have = 0;
    while (isGood && have < bytes.size()) {
        const ssize_t got = read(fd, &bytes[have], bytes.size() - have);
        isGood = got > 0;
        have += isGood ? static_cast<size_t>(got) : 0;
    }
    close(fd);
    return isGood;
}

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

const char* textOf(GcdaFile::Result result)
{
    switch (result) {
    case GcdaFile::NotCounters:
        return "the .gcda file holds no counters";
    case GcdaFile::UnknownVersion:
        return "the .gcda file is of another compiler version";
    case GcdaFile::OtherBuild:
        return "the .gcda file belongs to another build of the unit (stamp mismatch)";
    default:
        return "the .gcda file is damaged";
    }
}

const char mismatch[] = "the .gcda file does not fit the unit's functions";

} // namespace

GccUnit::GccUnit(const SourceFilter& filter) : _filter(filter) {}

void GccUnit::fail(const std::string& reason)
{
    _failure = reason;
    _losses._failedUnits = 1;
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
        failure = textOf(result);
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
        return false;
    case GcnoFile::NotNotes:
        fail("the .gcno file holds no notes");
        return true;
    case GcnoFile::Damaged:
        fail("the .gcno file is damaged");
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
        fail("the .gcno file is damaged");
    } else if (!failure.empty()) {
        // Counts of a unit that does not fit are no counts, also those of functions that did.
        for (GccUnitFunction& entry : _functions) {
            for (CovBlock& block : entry._function._blocks) {
                block._hits = 0;
            }
        }
        _losses._mostRuns = 0;
        fail(failure);
    }
    return true;
}

bool GccUnit::readBlocks(const GccUnitFiles& files)
{
    std::string notes;
    if (!readWhole(files._notes, notes)) {
        fail("the .gcno file cannot be read");
        return true;
    }
    if (files._counters.empty()) {
        return readBlocks(notes, nullptr);
    }
    // What cannot be read counts as damaged, not as never run.
    std::string counters;
    (void)readWhole(files._counters, counters);
    _executionTime = modificationTime(files._counters);
    return readBlocks(notes, &counters);
}

void GccUnit::readLines(const GccUnitFiles& files, const char* gcov)
{
    std::string json;
    GcovLines lines;
    if (!runGcov(gcov, files, json) || !lines.parse(json)) {
        fail(std::string(gcov) + " gave no lines for it");
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
