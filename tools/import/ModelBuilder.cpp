// SPDX-License-Identifier: MIT
#include "tools/import/ModelBuilder.h"

#include "qip/Support/qipAssert.h"
#include "tools/common/FunctionName.h"
#include "tools/common/parallel.h"
#include "tools/import/LineOwners.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace {

// Where a line of a copy belongs.
struct Destination
{
    enum Kind : uint32_t { Own, ForPlace, ForFile };

    Kind _kind = Own;
    uint32_t _number = 0; // of the place or the file

    bool operator==(const Destination& other) const
    {
        return _kind == other._kind && _number == other._number;
    }
};

struct SortedLine
{
    Destination _destination;
    CovLine _line;

    bool operator<(const SortedLine& other) const
    {
        return std::tie(_destination._kind, _destination._number, _line._block, _line._line) <
               std::tie(other._destination._kind, other._destination._number, other._line._block,
                        other._line._line);
    }
};

// What one copy has of a function: all of it, or lines of another function that it holds.
struct Piece
{
    Destination _destination;
    std::vector<uint32_t> _counts; // of each block: number of what counts it
    std::vector<CovLine> _lines;   // by block, then line
};

// A function of the model while it is made.
struct Place
{
    uint32_t _file = 0;
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    bool _isPart = false; // an entry in another file
    std::vector<std::string> _symbols;
    std::vector<FunctionText> _texts; // of the first symbols, as far as they were read
    std::vector<FunctionCopy*> _copies;
    std::vector<Piece> _pieces;
    std::vector<Piece> _others; // pieces of its copies that belong elsewhere

    bool holds(uint32_t line) const
    {
        // A range that ends before it starts has its ends in two files and says nothing.
        return _endLine < _startLine || (_startLine <= line && line <= _endLine);
    }
};

// The copies of one place stand side by side, a body behind the rest of its function.
bool placeBefore(const FunctionCopy* a, const FunctionCopy* b)
{
    return std::tie(a->_file, a->_startLine, a->_startColumn, a->_symbol, a->_isBody, a->_endLine,
                    a->_endColumn) < std::tie(b->_file, b->_startLine, b->_startColumn, b->_symbol,
                                              b->_isBody, b->_endLine, b->_endColumn);
}

bool rangeBefore(const FunctionCopy* a, const FunctionCopy* b)
{
    return std::tie(a->_file, a->_startLine, a->_startColumn, a->_endLine, a->_endColumn,
                    a->_symbol, a->_isHidden) < std::tie(b->_file, b->_startLine, b->_startColumn,
                                                         b->_endLine, b->_endColumn, b->_symbol,
                                                         b->_isHidden);
}

bool sameRange(const FunctionCopy& a, const FunctionCopy& b)
{
    return a._file == b._file && a._startLine == b._startLine && a._startColumn == b._startColumn &&
           a._endLine == b._endLine && a._endColumn == b._endColumn;
}

// Whether a path is of text that is compiled by itself, not included.
bool isUnitSource(const std::string& path)
{
    static const char* const ends[] = {".c", ".cc", ".cpp", ".cxx", ".c++",
                                       ".C", ".cp", ".m",   ".mm"};
    const size_t dot = path.rfind('.');
    return dot != std::string::npos &&
           std::any_of(std::begin(ends), std::end(ends), [&](const char* end) {
               return path.compare(dot, std::string::npos, end) == 0;
           });
}

// Adds up the counts of pieces with the same blocks.
void sumPieces(std::vector<Piece>& pieces, CovFunction& function)
{
    function._lines.swap(pieces.front()._lines);
    function._nBasicBlocks = static_cast<uint32_t>(pieces.front()._counts.size());
    function._sums.reserve(pieces.size() * function._nBasicBlocks);
    for (uint32_t block = 0; block < function._nBasicBlocks; ++block) {
        for (const Piece& piece : pieces) {
            function._sums.push_back({piece._counts[block] & CovTerm::GreatestCount, 1, 0});
        }
        function._sums.back()._endsSum = 1;
    }
}

// What counts one line in one piece.
struct LineCount
{
    uint32_t _line;
    uint32_t _piece;
    uint32_t _count;

    bool operator<(const LineCount& other) const
    {
        return std::tie(_line, _piece, _count) < std::tie(other._line, other._piece, other._count);
    }
};

// Makes one block of each line of any piece. It ran as often as, in each piece, the block on it
// that ran most.
void uniteLines(const std::vector<Piece>& pieces, CovFunction& function)
{
    std::vector<LineCount> lines;
    for (uint32_t i = 0; i < pieces.size(); ++i) {
        for (const CovLine& line : pieces[i]._lines) {
            lines.push_back({line._line, i, pieces[i]._counts[line._block]});
        }
    }
    std::sort(lines.begin(), lines.end());
    function._sums.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i == 0 || lines[i - 1]._line != lines[i]._line) {
            function._lines.push_back({function._nBasicBlocks++, lines[i]._line});
        }
        const bool endsSum = i + 1 == lines.size() || lines[i + 1]._line != lines[i]._line;
        const bool endsMaximum = endsSum || lines[i + 1]._piece != lines[i]._piece;
        function._sums.push_back(
            {lines[i]._count & CovTerm::GreatestCount, endsMaximum ? 1u : 0u, endsSum ? 1u : 0u});
    }
}

class ModelBuilder
{
public:
    ModelBuilder(ImportedBuild& build, bool keepsInstances)
        : _copies(build._copies), _paths(build._sources.paths()), _nCounts(build._nCounts),
          _keepsInstances(keepsInstances), _owners(_paths.size())
    {}

    void makePlaces(unsigned int nThreads);
    void findTwoBuilds(ImportLosses& losses) const;
    // Both may be called for different places at once, distribute() in between.
    void split(Place& place) const;
    void distribute();
    void unite(Place& place, CovFunction& function) const;
    void fillModel(std::vector<CovFunction>& functions, CoverageModel& model) const;

    std::vector<Place>& places() { return _places; }

private:
    void addPlaces(FunctionCopy* const* first, FunctionCopy* const* last, FunctionText* texts);
    bool needsTexts(FunctionCopy* const* first, FunctionCopy* const* last) const;
    Destination destinationOf(const Place& place, const CopyLine& line) const;
    void splitCopy(Place& place, FunctionCopy& copy) const;
    std::string keyOf(Place& place) const;
    void moveToEntry(size_t giver, Piece& piece);

    std::vector<FunctionCopy>& _copies;
    const std::vector<std::string>& _paths;
    const uint32_t _nCounts;
    const bool _keepsInstances;
    std::vector<LineOwners> _owners; // by file
    std::vector<Place> _places;      // with the entries in other files behind, after distribute()
    std::map<std::pair<uint32_t, std::string>, size_t> _entries; // file and name > place
};

// A body ends where the function does that it belongs to. REQUIRES: in the order of placeBefore.
void endBodies(const std::vector<FunctionCopy*>& order)
{
    for (size_t i = 0; i < order.size(); ++i) {
        FunctionCopy& copy = *order[i];
        if (!copy._isBody) {
            continue;
        }
        const FunctionCopy* before = i == 0 ? nullptr : order[i - 1];
        if (before != nullptr && before->_file == copy._file &&
            before->_startLine == copy._startLine && before->_startColumn == copy._startColumn &&
            before->_symbol == copy._symbol) {
            copy._endLine = before->_endLine;
            copy._endColumn = before->_endColumn;
            continue;
        }
        for (const CopyLine& line : copy._lines) {
            copy._endLine =
                line._file == copy._file ? std::max(copy._endLine, line._line) : copy._endLine;
        }
    }
}

void addCopy(Place& place, FunctionCopy* copy)
{
    place._file = copy->_file;
    place._startLine = copy->_startLine;
    place._endLine = copy->_endLine;
    if (place._symbols.empty() || place._symbols.back() != copy->_symbol) {
        place._symbols.push_back(copy->_symbol);
    }
    place._copies.push_back(copy);
}

// Makes places of copies with one range, which are sorted by symbol. `texts` says what the first
// copy of each symbol is, when there are several symbols.
void ModelBuilder::addPlaces(FunctionCopy* const* first, FunctionCopy* const* last,
                             FunctionText* texts)
{
    const bool needsTexts = this->needsTexts(first, last);
    std::map<std::string, size_t> byName;
    while (first != last) {
        const std::string& symbol = (*first)->_symbol;
        const auto found =
            byName.emplace(needsTexts ? templateName(*texts) : symbol, _places.size());
        if (found.second) {
            _places.emplace_back();
        }
        Place& place = _places[found.first->second];
        if (needsTexts) {
            place._texts.push_back(std::move(*texts));
        }
        for (; first != last && (*first)->_symbol == symbol; ++first, ++texts) {
            addCopy(place, *first);
        }
    }
}

// Whether copies with one range have several symbols, which may be one function's.
bool ModelBuilder::needsTexts(FunctionCopy* const* first, FunctionCopy* const* last) const
{
    return !_keepsInstances && (*first)->_symbol != (*(last - 1))->_symbol;
}

// Reads the symbols of copies that share their range with others, the first copy of each.
class TextJob : public ParallelJob
{
public:
    explicit TextJob(const std::vector<const std::string*>& symbols)
        : _symbols(symbols), _texts(symbols.size())
    {}

    void run(size_t item) override
    {
        const size_t end = std::min(_symbols.size(), (item + 1) * ItemsAtOnce);
        for (size_t i = item * ItemsAtOnce; i < end; ++i) {
            if (_symbols[i] != nullptr) {
                _texts[i] = readFunctionText(*_symbols[i]);
                (void)templateName(_texts[i]); // which addPlaces() asks for
            }
        }
    }
    size_t nItems() const { return (_symbols.size() + ItemsAtOnce - 1) / ItemsAtOnce; }
    FunctionText* texts() { return _texts.data(); }

private:
    static constexpr size_t ItemsAtOnce = 64;

    const std::vector<const std::string*>& _symbols;
    std::vector<FunctionText> _texts;
};

void ModelBuilder::makePlaces(unsigned int nThreads)
{
    std::vector<FunctionCopy*> order;
    order.reserve(_copies.size());
    for (FunctionCopy& copy : _copies) {
        order.push_back(&copy);
    }
    std::sort(order.begin(), order.end(), placeBefore);
    endBodies(order);
    std::sort(order.begin(), order.end(), rangeBefore);
    std::vector<size_t> ends;                              // of the copies with one range
    std::vector<const std::string*> symbols(order.size()); // that must be read
    for (size_t first = 0; first < order.size(); first = ends.back()) {
        size_t last = first + 1;
        while (last < order.size() && sameRange(*order[first], *order[last])) {
            ++last;
        }
        ends.push_back(last);
        const bool isRead = needsTexts(order.data() + first, order.data() + last);
        for (size_t i = first; i < last && isRead; ++i) {
            const bool isFirst = i == first || order[i]->_symbol != order[i - 1]->_symbol;
            symbols[i] = isFirst ? &order[i]->_symbol : nullptr;
        }
    }
    TextJob reading(symbols);
    runParallel(reading, reading.nItems(), nThreads);
    size_t first = 0;
    for (const size_t last : ends) {
        addPlaces(order.data() + first, order.data() + last, reading.texts() + first);
        first = last;
    }
    for (uint32_t i = 0; i < _places.size(); ++i) {
        if (_places[i]._copies.front()->_isHidden) {
            continue;
        }
        _owners[_places[i]._file].add(_places[i]._startLine, _places[i]._endLine, i);
    }
    for (LineOwners& owners : _owners) {
        owners.build();
    }
}

// Copies of one symbol differ in a header when units include it under different macros. A source of
// its own is compiled in two ways.
void ModelBuilder::findTwoBuilds(ImportLosses& losses) const
{
    std::set<uint32_t> files;
    for (const Place& place : _places) {
        for (size_t i = 1; i < place._copies.size(); ++i) {
            const FunctionCopy& before = *place._copies[i - 1];
            const FunctionCopy& copy = *place._copies[i];
            if (before._symbol == copy._symbol && before._isBody == copy._isBody &&
                before._lines != copy._lines && isUnitSource(_paths[place._file])) {
                files.insert(place._file);
            }
        }
    }
    losses._sourcesOfTwoBuilds += files.size();
}

Destination ModelBuilder::destinationOf(const Place& place, const CopyLine& line) const
{
    const bool isInFile = line._file == place._file;
    if (isInFile && place.holds(line._line)) {
        return Destination();
    }
    const uint32_t owner = _owners[line._file].ownerOf(line._line);
    if (owner != LineOwners::Nobody) {
        return {Destination::ForPlace, owner};
    }
    return isInFile ? Destination() : Destination{Destination::ForFile, line._file};
}

// Sorts the lines of a copy out. Blocks are numbered again in each piece.
void ModelBuilder::splitCopy(Place& place, FunctionCopy& copy) const
{
    std::vector<SortedLine> lines;
    lines.reserve(copy._lines.size());
    for (const CopyLine& line : copy._lines) {
        const Destination destination = destinationOf(place, line);
        if (!copy._isHidden || destination._kind == Destination::ForPlace) {
            lines.push_back({destination, {line._block, line._line}});
        }
    }
    // Nearly all copies have lines of their own function alone, which are in order.
    if (!std::is_sorted(lines.begin(), lines.end())) {
        std::sort(lines.begin(), lines.end());
    }
    Piece* piece = nullptr;
    uint32_t block = 0;
    for (const SortedLine& line : lines) {
        const bool isNew = piece == nullptr || !(piece->_destination == line._destination);
        if (isNew) {
            std::vector<Piece>& pieces =
                line._destination._kind == Destination::Own ? place._pieces : place._others;
            pieces.emplace_back();
            piece = &pieces.back();
            piece->_destination = line._destination;
            piece->_lines.reserve(lines.size());
        }
        if (isNew || block != line._line._block) {
            block = line._line._block;
            qipAssert(copy._firstCount < _nCounts && block < _nCounts - copy._firstCount);
            piece->_counts.push_back(copy._firstCount + block);
        }
        piece->_lines.push_back(
            {static_cast<uint32_t>(piece->_counts.size() - 1), line._line._line});
    }
    copy = FunctionCopy();
}

void ModelBuilder::split(Place& place) const
{
    for (FunctionCopy* copy : place._copies) {
        splitCopy(place, *copy);
    }
}

// What the entries of a place in other files are known by.
std::string ModelBuilder::keyOf(Place& place) const
{
    if (_keepsInstances) {
        return place._symbols.front();
    }
    if (place._texts.empty()) {
        place._texts.push_back(readFunctionText(place._symbols.front()));
    }
    return templateName(place._texts.front());
}

void ModelBuilder::moveToEntry(size_t giver, Piece& piece)
{
    const std::vector<std::string> symbols = _places[giver]._symbols;
    const auto found = _entries.emplace(
        std::make_pair(piece._destination._number, keyOf(_places[giver])), _places.size());
    if (found.second) {
        Place entry;
        entry._file = piece._destination._number;
        entry._startLine = UINT32_MAX;
        entry._isPart = true;
        _places.push_back(std::move(entry));
    }
    Place& entry = _places[found.first->second];
    entry._symbols.insert(entry._symbols.end(), symbols.begin(), symbols.end());
    for (const CovLine& line : piece._lines) {
        entry._startLine = std::min(entry._startLine, line._line);
        entry._endLine = std::max(entry._endLine, line._line);
    }
    entry._pieces.push_back(std::move(piece));
}

// Gives each piece to the function that it belongs to.
void ModelBuilder::distribute()
{
    const size_t nPlaces = _places.size();
    for (size_t i = 0; i < nPlaces; ++i) {
        std::vector<Piece> others;
        others.swap(_places[i]._others);
        for (Piece& piece : others) {
            if (piece._destination._kind == Destination::ForFile) {
                moveToEntry(i, piece);
            } else {
                _places[piece._destination._number]._pieces.push_back(std::move(piece));
            }
        }
    }
    for (size_t i = nPlaces; i < _places.size(); ++i) {
        std::vector<std::string>& symbols = _places[i]._symbols;
        std::sort(symbols.begin(), symbols.end());
        symbols.erase(std::unique(symbols.begin(), symbols.end()), symbols.end());
    }
}

void ModelBuilder::unite(Place& place, CovFunction& function) const
{
    function._symbols.swap(place._symbols);
    function._texts.swap(place._texts);
    function._startLine = place._startLine;
    function._endLine = place._endLine;
    function._isPart = place._isPart;
    std::vector<Piece>& pieces = place._pieces;
    const bool isSame = std::all_of(pieces.begin(), pieces.end(), [&pieces](const Piece& piece) {
        return piece._lines == pieces.front()._lines;
    });
    if (pieces.empty()) {
        return;
    }
    if (isSame) {
        sumPieces(pieces, function);
    } else {
        uniteLines(pieces, function);
    }
    std::vector<Piece>().swap(pieces);
}

void ModelBuilder::fillModel(std::vector<CovFunction>& functions, CoverageModel& model) const
{
    std::vector<size_t> files(_paths.size(), SIZE_MAX); // number > place in the model
    for (size_t i = 0; i < _places.size(); ++i) {
        if (functions[i]._lines.empty()) {
            continue;
        }
        size_t& file = files[_places[i]._file];
        if (file == SIZE_MAX) {
            file = model._files.size();
            model._files.emplace_back();
            model._files.back()._path = _paths[_places[i]._file];
        }
        model._files[file]._functions.push_back(std::move(functions[i]));
    }
}

class SplitJob : public ParallelJob
{
public:
    explicit SplitJob(ModelBuilder& builder) : _builder(builder) {}
    void run(size_t item) override { _builder.split(_builder.places()[item]); }

private:
    ModelBuilder& _builder;
};

class UniteJob : public ParallelJob
{
public:
    explicit UniteJob(ModelBuilder& builder)
        : _builder(builder), _functions(builder.places().size())
    {}
    void run(size_t item) override { _builder.unite(_builder.places()[item], _functions[item]); }

    std::vector<CovFunction>& functions() { return _functions; }

private:
    ModelBuilder& _builder;
    std::vector<CovFunction> _functions;
};

} // namespace

void buildModel(ImportedBuild& build, bool keepsInstances, unsigned int nThreads,
                CoverageModel& model, ImportLosses& losses)
{
    qipAssert(build._nCounts <= ImportedBuild::MostCounts);
    model._isBoolean = build._isBoolean;
    ModelBuilder builder(build, keepsInstances);
    builder.makePlaces(nThreads);
    builder.findTwoBuilds(losses);
    SplitJob splitting(builder);
    runParallel(splitting, builder.places().size(), nThreads);
    std::vector<FunctionCopy>().swap(build._copies);
    builder.distribute();
    UniteJob uniting(builder);
    runParallel(uniting, builder.places().size(), nThreads);
    builder.fillModel(uniting.functions(), model);
}
