// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tools/common/SourcePath.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/GcovInput.h"
#include "tools/import/gcc/runGcov.h"
#include "tools/import/gcov/GcovDocument.h"

#include <algorithm>
#include <utility>

namespace {

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

const char mismatch[] = "the .gcda file does not fit the unit's functions";

// What the compiler calls the parts that it makes of a coroutine.
const char bodyEnd[] = ".actor";
const char frameEnd[] = ".Frame";

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), std::string::npos, end) == 0;
}

// Whether a function has lines outside its own range.
bool holdsOthers(const FunctionCopy& copy)
{
    return std::any_of(copy._lines.begin(), copy._lines.end(), [&copy](const CopyLine& line) {
        return line._file != copy._file || line._line < copy._startLine ||
               line._line > copy._endLine;
    });
}

bool isBody(const GcnoFunction& function)
{
    return function._isArtificial && endsWith(function._symbol, bodyEnd);
}

// The symbol of the coroutine that a body belongs to. Some compilers name the body after it:
// "_Z1fv.actor"; others put its frame behind its name as a parameter, a name of counted length:
// "_Z1fPZ1fvE11_Z1fv.Frame.actor".
std::string coroutineOf(const std::string& body)
{
    std::string name = body.substr(0, body.size() - (sizeof(bodyEnd) - 1));
    if (!endsWith(name, frameEnd)) {
        return name;
    }
    for (size_t at = name.find("_Z", 1); at != std::string::npos; at = name.find("_Z", at + 1)) {
        const std::string length = std::to_string(name.size() - at);
        if (at >= length.size() && name.compare(at - length.size(), length.size(), length) == 0) {
            return name.substr(at, name.size() - at - (sizeof(frameEnd) - 1));
        }
    }
    return name;
}

} // namespace

GccUnit::GccUnit(SourceTable& sources, GraphStore& store) : _sources(sources), _store(store) {}

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

const SourceNumber& GccUnit::source(const std::string& folder, const std::string& file)
{
    const auto found = _numbers.emplace(file, SourceNumber());
    if (found.second) {
        found.first->second = _sources.find(absolutePath(folder, file));
    }
    return found.first->second;
}

KnownFunction::Kind GccUnit::kindOf(const GcnoFunction& function, const SourceNumber& source) const
{
    if (function._isArtificial && !isBody(function) && source._answer == SourceFilter::Kept) {
        return KnownFunction::Artificial;
    }
    return source._answer == SourceFilter::System     ? KnownFunction::System
           : source._answer == SourceFilter::Excluded ? KnownFunction::Excluded
                                                      : KnownFunction::Wanted;
}

void GccUnit::countKind(KnownFunction::Kind kind)
{
    _losses._systemFunctions += kind == KnownFunction::System ? 1 : 0;
    _losses._excludedFunctions += kind == KnownFunction::Excluded ? 1 : 0;
    _losses._artificialFunctions += kind == KnownFunction::Artificial ? 1 : 0;
}

// Lines of files that are left out stay out; a block that has no others is counted.
void GccUnit::addLines(const GcnoFunction& function, const std::string& folder, GccGraph& graph)
{
    std::vector<SourceNumber> files;
    for (const std::string& file : function._files) {
        files.push_back(source(folder, file));
    }
    std::vector<CopyLine>& lines = graph._copy._lines;
    lines.reserve(function._lines.size());
    std::vector<bool> hasLines(function._nBlocks);
    std::vector<bool> isElsewhere(function._nBlocks);
    for (const GcnoLine& line : function._lines) {
        if (line._block <= GcnoFunction::ExitBlock) {
            continue;
        }
        const SourceNumber& file = files[line._file];
        if (file._answer == SourceFilter::Kept) {
            lines.push_back({line._block, file._number, line._line});
            hasLines[line._block] = true;
        } else {
            ++graph._linesOfOtherFiles;
            isElsewhere[line._block] = true;
        }
    }
    for (uint32_t block = 0; block < function._nBlocks; ++block) {
        graph._blocksOfOtherFiles += isElsewhere[block] && !hasLines[block] ? 1 : 0;
    }
    if (!std::is_sorted(lines.begin(), lines.end())) {
        std::sort(lines.begin(), lines.end());
    }
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    lines.shrink_to_fit();
}

std::unique_ptr<GccGraph> GccUnit::makeGraph(GcnoFunction& function, const std::string& folder,
                                             KnownFunction::Kind kind)
{
    auto graph = std::make_unique<GccGraph>();
    graph->_kind = kind;
    FunctionCopy& copy = graph->_copy;
    copy._isBody = isBody(function);
    // Also in files that are left out: the destructor of a pair of two user's classes.
    copy._isHidden = function._isArtificial && !copy._isBody;
    copy._symbol = copy._isBody ? coroutineOf(function._symbol) : std::move(function._symbol);
    copy._file = source(folder, function._files[0])._number;
    copy._startLine = function._startLine;
    copy._startColumn = function._startColumn;
    copy._endLine = function._endLine;
    copy._endColumn = function._endColumn;
    graph->_nBlocks = function._nBlocks;
    addLines(function, folder, *graph);
    for (const GcnoArc& arc : function._arcs) {
        graph->_nCounters += (arc._flags & GcnoArc::OnTree) == 0 ? 1 : 0;
    }
    function._arcs.shrink_to_fit();
    graph->_arcs.swap(function._arcs);
    return graph;
}

bool GccUnit::useCounters(GcdaFile& counters, uint32_t stamp, std::string& failure)
{
    const GcdaFile::Result result = counters.open(stamp);
    if (result != GcdaFile::Ok) {
        failure = GcdaFile::text(result);
        return false;
    }
    _losses._mostRuns = counters.runs();
    return true;
}

// Reads the function that was found last when the store does not know it. Returns false when
// nothing of it is wanted or the notes are damaged.
bool GccUnit::readFunction(GcnoFile& notes, GcnoFunction& function, Function& entry)
{
    const KnownFunction known = _store.find(entry._bytes);
    if (known._kind != KnownFunction::Unknown) {
        countKind(known._kind);
        entry._known = known._graph;
        return known._graph != nullptr;
    }
    if (!notes.readPlace(function)) {
        return false;
    }
    const KnownFunction::Kind kind = kindOf(function, source(_folder, function._files[0]));
    countKind(kind);
    if (!notes.readGraph(function)) {
        return false;
    }
    entry._read = makeGraph(function, _folder, kind);
    if (kind == KnownFunction::Wanted || holdsOthers(entry._read->_copy)) {
        return true;
    }
    _store.leaveOut(entry._bytes, kind);
    return false;
}

// Returns whether all counters fit; `counters` may be null.
bool GccUnit::readFunctions(GcnoFile& notes, GcdaFile* counters)
{
    ContentKey folder;
    folder.add(_folder.data(), _folder.size());
    bool isFit = true;
    GcnoFunction function;
    while (notes.findFunction(function)) {
        Function entry = {function, folder, nullptr, nullptr};
        notes.addContent(entry._bytes);
        if (!readFunction(notes, function, entry)) {
            continue;
        }
        const GccGraph& graph = entry._known != nullptr ? *entry._known : *entry._read;
        isFit = isFit && (counters == nullptr || counters->fits(function, graph._nCounters));
        _functions.push_back(std::move(entry));
    }
    return isFit;
}

// Puts what was read into the store, with its counters when there are some that can be used.
void GccUnit::keep(GcdaFile* counters)
{
    for (Function& function : _functions) {
        if (function._read != nullptr) {
            function._known = _store.insert(function._bytes, std::move(function._read));
        }
        if (counters != nullptr) {
            _store.addCounters(*function._known, *counters, function._identity._ident);
        }
        if (_isKeptForRuns) {
            _counted.push_back({function._identity, function._known});
        }
    }
    _functions.clear();
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
        fail("the .gcno file holds no notes: compile the unit again, or delete the file");
        return true;
    case GcnoFile::Damaged:
        fail("the .gcno file is damaged: compile the unit again");
        return true;
    }
    // Notes that do not say where they were made (clang's) were made where they lie: a name must
    // not depend on where the import runs.
    _folder = absolutePath(_notesFolder, notes.folder());
    static const std::string nothing;
    const std::string& bytes = counterBytes != nullptr ? *counterBytes : nothing;
    GcdaFile counters(bytesOf(bytes), bytes.size());
    std::string failure;
    GcdaFile* used = counterBytes != nullptr && useCounters(counters, notes.stamp(), failure)
                         ? &counters
                         : nullptr;
    _losses._unitsNotRun = counterBytes == nullptr ? 1 : 0;

    if (!readFunctions(notes, used)) {
        // Counts of a unit that does not fit are no counts, also those of functions that did.
        failure = mismatch;
        used = nullptr;
        _losses._mostRuns = 0;
    }
    if (notes.damaged()) {
        _functions.clear();
        _losses = ImportLosses();
        fail("the .gcno file is damaged: compile the unit again");
        return true;
    }
    keep(used);
    _form = Blocks;
    _stamp = notes.stamp();
    if (!failure.empty()) {
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
    _notesFolder = files._notes.substr(0, files._notes.rfind('/') + 1);
    if (files._counters.empty()) {
        return readBlocks(notes.bytes(), nullptr);
    }
    std::string counters;
    readCounters(files, counters);
    return readBlocks(notes.bytes(), &counters);
}

// Counters that cannot be read are a failure, not those of a unit that never ran: `bytes` are empty
// then.
void GccUnit::readCounters(const GccUnitFiles& files, std::string& bytes)
{
    GcovInput counters(GcovWords::CountersMagic);
    _countersProblem.clear();
    if (!counters.read(files._counters)) {
        counters.bytes().clear();
        _countersProblem = "the .gcda file cannot be read: " + counters.problem();
    }
    _countersPath = files._counters;
    _executionTime = modificationTime(files._counters);
    bytes.swap(counters.bytes());
}

void GccUnit::addRun(const std::string& counterBytes)
{
    GcdaFile counters(bytesOf(counterBytes), counterBytes.size());
    std::string failure;
    if (!useCounters(counters, _stamp, failure)) {
        failCounters(failure);
        return;
    }
    // Counts of a unit that does not fit are no counts, also those of functions that did.
    const bool isFit =
        std::all_of(_counted.begin(), _counted.end(), [&counters](const Counted& function) {
            return counters.fits(function._identity, function._graph->_nCounters);
        });
    if (!isFit) {
        _losses._mostRuns = 0;
        failCounters(mismatch);
        return;
    }
    for (const Counted& function : _counted) {
        _store.addCounters(*function._graph, counters, function._identity._ident);
    }
}

void GccUnit::readRun(const GccUnitFiles& files, const char* gcov)
{
    _losses = ImportLosses();
    _failure.clear();
    _executionTime = 0;
    if (_form == Unread) {
        return;
    }
    if (files._counters.empty()) {
        _losses._unitsNotRun = 1;
    } else if (_form == Lines) {
        readLines(files, gcov);
        // What was left out was counted when the build was read.
        const uint64_t failed = _losses._failedUnits;
        _losses = ImportLosses();
        _losses._failedUnits = failed;
    } else {
        std::string counters;
        readCounters(files, counters);
        addRun(counters);
    }
}

// Makes a block of each line of the functions that are wanted. Returns false when a run has others
// than the build.
bool GccUnit::keepLines(GcovDocument& document)
{
    for (GcovSource& file : document.sources()) {
        const SourceNumber source = this->source(document.folder(), file._path);
        const KnownFunction::Kind kind = kindOf(GcnoFunction(), source);
        _losses._linesOfOtherFiles += file._strayLines.size();
        for (GcovFunction& function : file._functions) {
            countKind(kind);
            if (kind != KnownFunction::Wanted) {
                continue;
            }
            auto graph = std::make_unique<GccGraph>();
            FunctionCopy& copy = graph->_copy;
            copy._symbol = std::move(function._symbol);
            copy._file = source._number;
            copy._startLine = function._startLine;
            copy._startColumn = function._startColumn;
            copy._endLine = function._endLine;
            copy._endColumn = function._endColumn;
            std::vector<int64_t> counts;
            for (const GcovLine& line : function._lines) {
                copy._lines.push_back(
                    {static_cast<uint32_t>(counts.size()), source._number, line._line});
                counts.push_back(line._count);
            }
            const ContentKey key = graph->key();
            GccGraph* kept = _store.insert(key, std::move(graph));
            if (kept == nullptr) {
                return false;
            }
            _store.addLineCounts(*kept, counts);
        }
    }
    _losses._linesWithoutNumber += document.linesWithoutNumber();
    return true;
}

void GccUnit::readLines(const GccUnitFiles& files, const char* gcov)
{
    std::string json;
    bool isRead = runGcov(gcov, files, json);
    GcovDocument document;
    bool isAny = false;
    for (size_t start = 0; isRead && start < json.size();) {
        const size_t end = std::min(json.find('\n', start), json.size());
        if (end > start) {
            isRead = document.parse(json.substr(start, end - start));
            isAny = true;
            if (isRead && !keepLines(document)) {
                fail(std::string(gcov) + " gives other lines for this run than for the build");
                return;
            }
        }
        start = end + 1;
    }
    if (!isRead || !isAny) {
        _losses = ImportLosses();
        fail(std::string(gcov) + " gave no lines for it" +
             (document.problem().empty() ? "" : " (" + document.problem() + ")") +
             ": name the gcov of its compiler with --gcov");
        return;
    }
    _losses._unitsAsLines = 1;
    _losses._unitsNotRun = files._counters.empty() ? 1 : 0;
    _executionTime = files._counters.empty() ? 0 : modificationTime(files._counters);
    _form = Lines;
}
