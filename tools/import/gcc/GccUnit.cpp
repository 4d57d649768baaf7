// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccUnit.h"

#include "tools/common/SourcePath.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/GcovInput.h"
#include "tools/import/gcc/runGcov.h"
#include "tools/import/gcov/GcovDocument.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

const unsigned char* bytesOf(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

// The memory that one unit after the other is read into.
struct UnitInput
{
    GcovInput _notes{GcovWords::NotesMagic};
    GcovInput _counters{GcovWords::CountersMagic};
    std::unique_ptr<UnitInput> _next; // of those that nobody uses
};

// Such a memory for as long as the object lives; then the next one may have it. Not of each thread:
// a thread that ends gives things back by memory that the system may not have.
class LentInput
{
public:
    LentInput()
    {
        const std::lock_guard<std::mutex> lock(_guard);
        _input = _free ? std::move(_free) : std::make_unique<UnitInput>();
        _free = std::move(_input->_next);
    }
    ~LentInput()
    {
        const std::lock_guard<std::mutex> lock(_guard);
        _input->_next = std::move(_free);
        _free = std::move(_input);
    }
    LentInput(const LentInput&) = delete;
    LentInput& operator=(const LentInput&) = delete;

    GcovInput& notes() { return _input->_notes; }
    GcovInput& counters() { return _input->_counters; }

private:
    static std::mutex _guard;
    static std::unique_ptr<UnitInput> _free;

    std::unique_ptr<UnitInput> _input;
};

std::mutex LentInput::_guard;
std::unique_ptr<UnitInput> LentInput::_free;

const char mismatch[] = "the .gcda file does not fit the unit's functions";

// What the compiler calls the parts that it makes of a coroutine.
const char bodyEnd[] = ".actor";
const char frameEnd[] = ".Frame";

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// How many blocks have lines, but none of those that are kept.
uint64_t blocksElsewhere(const GcnoFunction& function, const std::vector<CopyLine>& kept)
{
    std::vector<bool> isElsewhere(function._nBlocks);
    for (const GcnoLine& line : function._lines) {
        isElsewhere[line._block] = line._block > GcnoFunction::ExitBlock;
    }
    for (const CopyLine& line : kept) {
        isElsewhere[line._block] = false;
    }
    return static_cast<uint64_t>(std::count(isElsewhere.begin(), isElsewhere.end(), true));
}

bool isBody(const GcnoFunction& function)
{
    return function._isArtificial && endsWith(function._symbol, bodyEnd);
}

// The symbol of the coroutine that a body belongs to. Some compilers name the body after it:
// "_Z1fv.actor"; others put its frame behind its name as a parameter, a name of counted length:
// "_Z1fPZ1fvE11_Z1fv.Frame.actor".
std::string coroutineOf(std::string_view body)
{
    std::string name(body.substr(0, body.size() - (sizeof(bodyEnd) - 1)));
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

// `file` stays where it is until forgetNames().
const SourceNumber& GccUnit::source(const std::string& folder, std::string_view file)
{
    if (_numbers.empty() || _lastNumber.first != file) {
        auto found = _numbers.find(file); // as it nearly always is
        if (found == _numbers.end()) {
            const SourceNumber number = _sources.find(absolutePath(folder, std::string(file)));
            found = _numbers.emplace(file, number).first;
        }
        _lastNumber = *found;
    }
    return _lastNumber.second;
}

void GccUnit::forgetNames()
{
    _numbers.clear();
    _lastNumber = {};
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

void GccUnit::findFiles(const GcnoFunction& function)
{
    _files.clear();
    for (const std::string_view file : function._files) {
        _files.push_back(source(_folder, file));
    }
}

// Whether a function has lines outside its own range. REQUIRES: findFiles() was asked for it.
bool GccUnit::holdsOthers(const GcnoFunction& function) const
{
    const auto isOther = [&](const GcnoLine& line) {
        const SourceNumber& file = _files[line._file];
        return line._block > GcnoFunction::ExitBlock && file._answer == SourceFilter::Kept &&
               (file._number != _files[0]._number || line._line < function._startLine ||
                line._line > function._endLine);
    };
    return std::any_of(function._lines.begin(), function._lines.end(), isOther);
}

// Lines of files that are left out stay out; a block that has no others is counted.
void GccUnit::addLines(const GcnoFunction& function, GccGraph& graph) const
{
    std::vector<CopyLine>& lines = graph._copy._lines;
    lines.reserve(function._lines.size());
    bool isInOrder = true; // each line behind the one before
    for (const GcnoLine& line : function._lines) {
        if (line._block <= GcnoFunction::ExitBlock) {
            continue;
        }
        const SourceNumber& file = _files[line._file];
        if (file._answer != SourceFilter::Kept) {
            ++graph._linesOfOtherFiles;
            continue;
        }
        const CopyLine copy = {line._block, file._number, line._line};
        isInOrder = isInOrder && (lines.empty() || lines.back() < copy);
        lines.push_back(copy);
    }
    if (!isInOrder) {
        std::sort(lines.begin(), lines.end());
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    }
    lines.shrink_to_fit();
    if (graph._linesOfOtherFiles > 0) {
        graph._blocksOfOtherFiles = blocksElsewhere(function, lines);
    }
}

// REQUIRES: findFiles() was asked for the function.
std::unique_ptr<GccGraph> GccUnit::makeGraph(const GcnoFunction& function,
                                             KnownFunction::Kind kind) const
{
    auto graph = std::make_unique<GccGraph>();
    graph->_kind = kind;
    FunctionCopy& copy = graph->_copy;
    copy._isBody = isBody(function);
    // Also in files that are left out: the destructor of a pair of two user's classes.
    copy._isHidden = function._isArtificial && !copy._isBody;
    copy._symbol = copy._isBody ? coroutineOf(function._symbol) : std::string(function._symbol);
    copy._file = _files[0]._number;
    copy._startLine = function._startLine;
    copy._startColumn = function._startColumn;
    copy._endLine = function._endLine;
    copy._endColumn = function._endColumn;
    graph->_nBlocks = function._nBlocks;
    addLines(function, *graph);
    graph->_arcs = function._arcs; // which stay for the next function's
    for (const GcnoArc& arc : graph->_arcs) {
        graph->_nCounters += (arc._flags & GcnoArc::OnTree) == 0 ? 1 : 0;
    }
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
    const SourceNumber& own = source(_folder, function._files[0]);
    const KnownFunction::Kind kind = kindOf(function, own);
    countKind(kind);
    // Most functions of a unit are those of headers that are left out.
    if (own._answer != SourceFilter::Kept && notes.isInOneFile(function)) {
        if (!notes.damaged()) {
            _store.leaveOut(entry._bytes, kind);
        }
        return false;
    }
    if (!notes.readGraph(function)) {
        return false;
    }
    findFiles(function);
    if (kind != KnownFunction::Wanted && !holdsOthers(function)) {
        _store.leaveOut(entry._bytes, kind);
        return false;
    }
    entry._read = makeGraph(function, kind);
    return true;
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
        isFit = (counters == nullptr || counters->meet(function)) && isFit;
        if (!readFunction(notes, function, entry)) {
            if (_isKeptForRuns) {
                _leftOut.push_back(function);
            }
            continue;
        }
        const GccGraph& graph = entry._known != nullptr ? *entry._known : *entry._read;
        isFit = isFit && (counters == nullptr || counters->fits(function, graph._nCounters));
        _functions.push_back(std::move(entry));
    }
    return isFit && (counters == nullptr || counters->areAllMet());
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
    const std::string_view counters = counterBytes != nullptr ? *counterBytes : std::string_view();
    return readBytes(notesBytes, counterBytes != nullptr ? &counters : nullptr);
}

bool GccUnit::readBytes(std::string_view notesBytes, const std::string_view* counterBytes)
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
    const std::string_view bytes = counterBytes != nullptr ? *counterBytes : std::string_view();
    GcdaFile counters(bytesOf(bytes), bytes.size());
    std::string failure;
    GcdaFile* used = counterBytes != nullptr && useCounters(counters, notes.stamp(), failure)
                         ? &counters
                         : nullptr;
    _losses._unitsNotRun = counterBytes == nullptr ? 1 : 0;

    const bool isFit = readFunctions(notes, used);
    forgetNames();
    if (!isFit) {
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
    LentInput input;
    GcovInput& notes = input.notes();
    if (!notes.read(files._notes)) {
        fail("the .gcno file cannot be read: " + notes.problem());
        return true;
    }
    _notesFolder = files._notes.substr(0, files._notes.rfind('/') + 1);
    if (files._counters.empty()) {
        return readBytes(notes.bytes(), nullptr);
    }
    const std::string_view counters = readCounters(files, input.counters());
    return readBytes(notes.bytes(), &counters);
}

// Counters that cannot be read are a failure, not those of a unit that never ran: there are no
// bytes then.
std::string_view GccUnit::readCounters(const GccUnitFiles& files, GcovInput& counters)
{
    _countersProblem.clear();
    if (!counters.read(files._counters)) {
        _countersProblem = "the .gcda file cannot be read: " + counters.problem();
    }
    _countersPath = files._counters;
    _executionTime = modificationTime(files._counters);
    return counters.bytes();
}

void GccUnit::addRun(std::string_view counterBytes)
{
    GcdaFile counters(bytesOf(counterBytes), counterBytes.size());
    std::string failure;
    if (!useCounters(counters, _stamp, failure)) {
        failCounters(failure);
        return;
    }
    // Counts of a unit that does not fit are no counts, also those of functions that did.
    const auto isMet = [&counters](const GcnoIdentity& function) {
        return counters.meet(function);
    };
    const auto isFit = [&counters, isMet](const Counted& function) {
        return isMet(function._identity) &&
               counters.fits(function._identity, function._graph->_nCounters);
    };
    if (!std::all_of(_counted.begin(), _counted.end(), isFit) ||
        !std::all_of(_leftOut.begin(), _leftOut.end(), isMet) || !counters.areAllMet()) {
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
        LentInput input;
        addRun(readCounters(files, input.counters()));
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

// Whether notes and counters have the same functions, as far as they are of a version that is known
// here: gcov counts none for those that it does not find, and says so for a person to read.
bool GccUnit::haveSameFunctions(const GccUnitFiles& files)
{
    LentInput input;
    if (files._counters.empty() || !input.notes().read(files._notes) ||
        !input.counters().read(files._counters)) {
        return true; // gcov says what is wrong
    }
    const std::string_view notesBytes = input.notes().bytes();
    const std::string_view counterBytes = input.counters().bytes();
    GcnoFile notes(bytesOf(notesBytes), notesBytes.size());
    GcdaFile counters(bytesOf(counterBytes), counterBytes.size());
    if (notes.open() != GcnoFile::Ok || counters.open(notes.stamp()) != GcdaFile::Ok) {
        return true;
    }
    GcnoFunction function;
    bool isFit = true;
    while (notes.findFunction(function)) {
        isFit = counters.meet(function) && isFit;
    }
    return notes.damaged() || (isFit && counters.areAllMet());
}

void GccUnit::readLines(const GccUnitFiles& files, const char* gcov)
{
    if (!haveSameFunctions(files)) {
        _countersPath = files._counters;
        return failCounters(mismatch);
    }
    std::string json;
    std::string problem;
    bool isRead = runGcov(gcov, files, json, problem);
    if (!problem.empty()) {
        return fail(problem);
    }
    GcovDocument document;
    bool isAny = false;
    for (size_t start = 0; isRead && start < json.size();) {
        const size_t end = std::min(json.find('\n', start), json.size());
        if (end > start) {
            isRead = document.parse(json.substr(start, end - start));
            isAny = true;
            const bool isSame = !isRead || keepLines(document);
            forgetNames();
            if (!isSame) {
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
