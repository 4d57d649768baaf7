// SPDX-License-Identifier: MIT
#include "tools/import/lines/LineTable.h"

#include "tools/common/FunctionName.h"
#include "tools/common/SharedLosses.h"
#include "tools/common/parallel.h"
#include "tools/import/LineOwners.h"
#include "tools/import/lines/PackedLines.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <tuple>
#include <utility>

uint32_t LineTable::file(const std::string& path)
{
    const auto found = _fileNumbers.emplace(path, static_cast<uint32_t>(_files.size()));
    if (found.second) {
        _files.emplace_back();
        _files.back()._path = path;
    }
    return found.first->second;
}

uint32_t LineTable::test(const std::string& name)
{
    const auto found = _tests.emplace(name, static_cast<uint32_t>(_runs.size()));
    return found.second ? addRun(name) : found.first->second;
}

uint32_t LineTable::addRun(const std::string& name)
{
    _runs.emplace_back();
    _runs.back()._name = name;
    return static_cast<uint32_t>(_runs.size() - 1);
}

void LineTable::noteTime(uint32_t run, uint32_t time)
{
    _runs[run]._time = std::max(_runs[run]._time, time);
}

void LineTable::beginSection(uint32_t file, uint32_t run)
{
    _file = file;
    _run = run;
    _files[file]._nextFunction = 0;
    _section.clear();
    _lastLine = 0;
    _isSorted = true;
    _mostLines = LeastUnited;
}

void LineTable::addFunction(const char* name, size_t size, uint32_t first, uint32_t last)
{
    constexpr size_t ManyFunctions = 1000;
    File& file = _files[_file];
    // Sections of one file nearly always have the same functions in the same order.
    if (file._nextFunction < file._functions.size()) {
        Function& known = file._functions[file._nextFunction];
        if (known._first == first && known._size == size &&
            std::memcmp(known._name, name, size) == 0) {
            known._last = std::max(known._last, last);
            ++file._nextFunction;
            return;
        }
    }
    if (file._functions.size() > 2 * file._nDifferent + ManyFunctions) {
        uniteFunctions(file._functions);
        file._nDifferent = file._functions.size();
    }
    file._functions.push_back({_pool.keep(name, size), static_cast<uint32_t>(size), first, last});
    file._nextFunction = file._functions.size();
}

// Puts the functions in order, each place with each name once.
void LineTable::uniteFunctions(std::vector<Function>& functions)
{
    const auto compareNames = [](const Function& a, const Function& b) {
        const int order = std::memcmp(a._name, b._name, std::min(a._size, b._size));
        return order != 0 ? order : a._size < b._size ? -1 : a._size > b._size ? 1 : 0;
    };
    const auto isBefore = [&compareNames](const Function& a, const Function& b) {
        if (a._first != b._first) {
            return a._first < b._first;
        }
        const int order = compareNames(a, b);
        return order < 0 || (order == 0 && a._last > b._last);
    };
    if (!std::is_sorted(functions.begin(), functions.end(), isBefore)) {
        std::sort(functions.begin(), functions.end(), isBefore);
    }
    const auto end = std::unique(functions.begin(), functions.end(),
                                 [&compareNames](const Function& a, const Function& b) {
                                     return a._first == b._first && compareNames(a, b) == 0;
                                 });
    functions.erase(end, functions.end());
}

// Puts the lines of the section in order, each once.
void LineTable::sortSection()
{
    std::sort(_section.begin(), _section.end(), [](const LineHits& a, const LineHits& b) {
        return std::tie(a._line, a._count) < std::tie(b._line, b._count);
    });
    size_t kept = 0;
    for (size_t i = 1; i < _section.size(); ++i) {
        if (_section[i]._line == _section[kept]._line) {
            addCount(_section[kept]._count, _section[i]._count);
        } else {
            _section[++kept] = _section[i];
        }
    }
    _section.resize(kept + 1);
}

// Makes room in a section that has grown. What is left is at most half of what there may be before
// the next time, so that the cost of all of them is in proportion to the lines that came.
void LineTable::uniteSection()
{
    if (!_isSorted) {
        sortSection();
    }
    _isSorted = true;
    _lastLine = _section.back()._line;
    _mostLines = std::max(LeastUnited, 2 * _section.size());
}

void LineTable::endSection()
{
    if (!_isSorted) {
        sortSection();
    }
    _packed.clear();
    uint32_t before = 0;
    for (const LineHits& line : _section) {
        PackedLines::append(_packed, line._line - before, line._count);
        before = line._line;
    }
    _runs[_run]._sections.push_back({_file, static_cast<uint32_t>(_section.size()),
                                     _pool.keep(_packed.data(), _packed.size())});
}

// Makes the functions of one file.
class LineTable::FileBuild
{
public:
    FileBuild(File& file, const std::vector<const Section*>& sections)
        : _file(file), _sections(sections)
    {}

    // Block numbers and places count from this file's first line.
    void run();

    std::vector<FunctionCopy>& copies() { return _copies; }
    const ImportLosses& losses() const { return _losses; }

private:
    void uniteLines();
    void endFunctions();
    void findOwners();
    void makeCopies();
    static bool isInstance(const Function& owner, std::string& name, const Function& function);
    void nameCopies();

    File& _file;
    const std::vector<const Section*>& _sections;
    bool _isMixed = false;         // sections have different lines
    std::vector<uint32_t> _owners; // function of each line, or their number for a line in none
    std::vector<FunctionCopy> _copies;
    ImportLosses _losses;
};

void LineTable::FileBuild::uniteLines()
{
    std::vector<uint32_t>& lines = _file._lines;
    for (const Section* section : _sections) {
        const size_t first = lines.size();
        lines.reserve(std::max<size_t>(lines.capacity(), first + section->_nLines));
        PackedLines packed(section->_bytes, section->_nLines);
        size_t same = 0;
        while (packed.next()) {
            lines.push_back(packed.line());
            same += same < first && lines[same] == packed.line() ? 1 : 0;
        }
        if (same == first && same == section->_nLines) {
            lines.resize(first); // nothing new
        } else if (first != 0) {
            _isMixed = true;
        }
    }
    if (_isMixed) {
        std::sort(lines.begin(), lines.end());
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
        lines.shrink_to_fit();
    }
}

// Gives each function an end.
void LineTable::FileBuild::endFunctions()
{
    std::vector<Function>& functions = _file._functions;
    LineTable::uniteFunctions(functions);
    // Where the next one begins.
    uint32_t next = _file._lines.empty() ? 1 : _file._lines.back() + 1;
    for (size_t i = functions.size(); i-- > 0;) {
        Function& function = functions[i];
        if (i + 1 < functions.size() && functions[i + 1]._first != function._first) {
            next = functions[i + 1]._first;
        }
        if (function._last == 0) {
            function._last = std::max(function._first, next - 1);
            ++_losses._guessedEnds;
        }
    }
    const auto isBefore = [](const Function& a, const Function& b) {
        return std::tie(a._first, a._last) < std::tie(b._first, b._last);
    };
    if (!std::is_sorted(functions.begin(), functions.end(), isBefore)) {
        std::stable_sort(functions.begin(), functions.end(), isBefore);
    }
}

void LineTable::FileBuild::findOwners()
{
    const std::vector<Function>& functions = _file._functions;
    const auto nFunctions = static_cast<uint32_t>(functions.size());
    LineOwners index;
    for (uint32_t i = 0; i < nFunctions; ++i) {
        index.add(functions[i]._first, functions[i]._last, i);
    }
    index.build();
    _owners.reserve(_file._lines.size());
    size_t hint = 0;
    for (const uint32_t line : _file._lines) {
        _owners.push_back(std::min(index.ownerOf(line, hint), nFunctions));
    }
}

// Makes a copy of each function, and one more for lines in none.
void LineTable::FileBuild::makeCopies()
{
    std::vector<uint32_t> sizes(_file._functions.size() + 1);
    for (const uint32_t owner : _owners) {
        ++sizes[owner];
    }
    _copies.resize(sizes.size());
    uint32_t place = 0;
    for (size_t i = 0; i < sizes.size(); ++i) {
        _copies[i]._file = _file._number;
        _copies[i]._firstCount = place;
        _copies[i]._ownLines.reserve(sizes[i]);
        place += sizes[i];
    }
    const bool isInOrder = std::is_sorted(_owners.begin(), _owners.end());
    _file._place.resize(isInOrder ? 0 : _owners.size());
    for (size_t i = 0; i < _owners.size(); ++i) {
        FunctionCopy& copy = _copies[_owners[i]];
        const auto block = static_cast<uint32_t>(copy._ownLines.size());
        if (!isInOrder) {
            _file._place[i] = copy._firstCount + block;
        }
        copy._ownLines.push_back({block, _file._lines[i]});
    }
}

// Whether two functions have one range and are instances of one template. `name` is what
// templateName() says of the first one, empty until it was asked.
bool LineTable::FileBuild::isInstance(const Function& owner, std::string& name,
                                      const Function& function)
{
    if (owner._first != function._first || owner._last != function._last) {
        return false;
    }
    if (name.empty()) {
        name = templateName(std::string(owner._name, owner._size));
    }
    return name == templateName(std::string(function._name, function._size));
}

// Names the copies and gives them their ranges. A function without lines is no loss when it is
// another instance of the one that has them.
void LineTable::FileBuild::nameCopies()
{
    const Function* owner = nullptr; // the last one with lines
    std::string ownerName;
    for (size_t i = 0; i < _file._functions.size(); ++i) {
        const Function& function = _file._functions[i];
        FunctionCopy& copy = _copies[i];
        copy._symbol.assign(function._name, function._size);
        copy._startLine = function._first;
        copy._endLine = function._last;
        if (copy.hasLines()) {
            owner = &function;
            ownerName.clear();
        } else if (owner == nullptr || !isInstance(*owner, ownerName, function)) {
            ++_losses._functionsWithoutLines;
        }
    }
    FunctionCopy& rest = _copies.back();
    if (!rest.hasLines()) {
        _copies.pop_back();
        return;
    }
    _losses._linesOutsideFunctions += rest._ownLines.size();
    rest._symbol = _file._path.substr(_file._path.rfind('/') + 1);
    rest._startLine = rest._ownLines.front()._line;
    rest._endLine = rest._ownLines.back()._line;
}

void LineTable::FileBuild::run()
{
    uniteLines();
    endFunctions();
    findOwners();
    makeCopies();
    nameCopies();
    std::vector<Function>().swap(_file._functions);
    std::vector<uint32_t>().swap(_owners);
}

// Makes the functions of all files; each item is one.
class LineTable::FilesJob : public ParallelJob
{
public:
    explicit FilesJob(LineTable& table)
        : _files(table._files), _sections(table._files.size()), _copies(table._files.size())
    {
        for (const Run& run : table._runs) {
            for (const Section& section : run._sections) {
                _sections[section._file].push_back(&section);
            }
        }
    }

    void run(size_t item) override
    {
        if (!_files[item]._isKept) {
            return;
        }
        FileBuild build(_files[item], _sections[item]);
        build.run();
        _copies[item].swap(build.copies());
        _losses.add(build.losses());
    }

    size_t nCopies() const
    {
        return std::accumulate(
            _copies.begin(), _copies.end(), size_t{0},
            [](size_t sum, const std::vector<FunctionCopy>& one) { return sum + one.size(); });
    }
    std::vector<FunctionCopy>& copies(size_t item) { return _copies[item]; }
    const ImportLosses& losses() const { return _losses.sum(); }

private:
    std::vector<File>& _files;
    std::vector<std::vector<const Section*>> _sections;
    std::vector<std::vector<FunctionCopy>> _copies;
    SharedLosses _losses;
};

// Asks for each file whether it is wanted.
void LineTable::leaveOut(ImportedBuild& build, ImportLosses& losses)
{
    for (File& file : _files) {
        const SourceNumber source = build._sources.find(file._path);
        file._number = source._number;
        file._isKept = source._answer == SourceFilter::Kept;
        if (!file._isKept) {
            uniteFunctions(file._functions);
            (source._answer == SourceFilter::System ? losses._systemFunctions
                                                    : losses._excludedFunctions) +=
                file._functions.size();
        }
    }
}

bool LineTable::fillBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    leaveOut(build, losses);
    FilesJob job(*this);
    runParallel(job, _files.size(), nThreads);
    losses.add(job.losses());
    build._copies.reserve(job.nCopies());
    for (size_t i = 0; i < _files.size(); ++i) {
        File& file = _files[i];
        if (file._lines.size() > ImportedBuild::MostCounts - build._nCounts) {
            return false;
        }
        file._firstPlace = build._nCounts;
        build._nCounts += static_cast<uint32_t>(file._lines.size());
        for (FunctionCopy& copy : job.copies(i)) {
            copy._firstCount += file._firstPlace;
            build._copies.push_back(std::move(copy));
        }
        std::vector<FunctionCopy>().swap(job.copies(i));
    }
    _nCounts = build._nCounts;
    return true;
}

void LineTable::fillCounts(size_t run, std::vector<int64_t>& counts) const
{
    counts.assign(_nCounts, 0);
    for (const Section& section : _runs[run]._sections) {
        const File& file = _files[section._file];
        if (!file._isKept) {
            continue;
        }
        size_t at = 0;
        PackedLines lines(section._bytes, section._nLines);
        while (lines.next()) {
            // Nearly always the next one.
            if (at >= file._lines.size() || file._lines[at] != lines.line()) {
                at = static_cast<size_t>(
                    std::lower_bound(file._lines.begin(), file._lines.end(), lines.line()) -
                    file._lines.begin());
            }
            const size_t place = file._place.empty() ? at : file._place[at];
            addCount(counts[file._firstPlace + place], lines.count());
            ++at;
        }
    }
}
