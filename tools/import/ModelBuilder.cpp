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

// A function of the model while it is made. Nearly all have one copy with lines of their own alone:
// that is their function as it is, and no pieces are made.
struct Place
{
    uint32_t _file = 0;
    uint32_t _startLine = 0;
    uint32_t _endLine = 0;
    bool _isPart = false; // an entry in another file
    bool _isPlain = false;
    std::vector<std::string> _symbols; // of an entry
    size_t _giver = SIZE_MAX;          // of an entry: the place that gave it pieces last
    std::vector<FunctionText> _texts;  // of the first symbols, as far as they were read
    FunctionCopy** _copies = nullptr;  // in the builder's order
    uint32_t _nCopies = 0;
    std::vector<Piece> _pieces;
    std::vector<Piece> _others; // pieces of its copies that belong elsewhere

    bool holds(uint32_t line) const
    {
        // A range that ends before it starts has its ends in two files and says nothing.
        return _endLine < _startLine || (_startLine <= line && line <= _endLine);
    }
};

// What comes first in the order of copies, as numbers: most copies differ in it.
struct CopyKey
{
    uint64_t _line; // file and first line
    uint32_t _column;
    uint32_t _copy;

    explicit CopyKey(const FunctionCopy& copy, size_t number)
        : _line(uint64_t(copy._file) << 32 | copy._startLine), _column(copy._startColumn),
          _copy(static_cast<uint32_t>(number))
    {}
    bool isAt(const CopyKey& other) const
    {
        return _line == other._line && _column == other._column;
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
    void findPlain();
    void findOwners();
    void findTwoBuilds(ImportLosses& losses) const;
    // May be called for different places at once.
    void split(Place& place) const;
    void distribute();
    // Makes the functions of the file number `file` behind distribute(); different ones at once.
    void unite(size_t file, CovFile& result);

    std::vector<Place>& places() { return _places; }
    size_t nFiles() const { return _paths.size(); }

private:
    void sortCopies();
    void addPlaces(FunctionCopy** first, FunctionCopy** last, FunctionText* texts);
    Place& addPlace(const FunctionCopy& copy);
    bool needsTexts(FunctionCopy* const* first, FunctionCopy* const* last) const;
    Destination destinationOf(const Place& place, const CopyLine& line) const;
    bool isPlain(const Place& place) const;
    void splitCopy(Place& place, FunctionCopy& copy) const;
    void numberBlocks(const FunctionCopy& copy, CovFunction& function) const;
    void fillPlain(Place& place, CovFunction& function) const;
    void unite(Place& place, CovFunction& function) const;
    uint32_t countOf(const FunctionCopy& copy, uint32_t block) const;
    std::string keyOf(Place& place) const;
    void moveToEntry(size_t giver, Piece& piece);

    std::vector<FunctionCopy>& _copies;
    const std::vector<std::string>& _paths;
    const uint32_t _nCounts;
    const bool _keepsInstances;
    std::vector<FunctionCopy*> _order; // of all copies; those of a place side by side
    std::vector<LineOwners> _owners;   // by file
    std::vector<Place> _places;        // with the entries in other files behind, after distribute()
    std::vector<std::vector<uint32_t>> _placesOfFiles;
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
        for (const CovLine& line : copy._ownLines) {
            copy._endLine = std::max(copy._endLine, line._line);
        }
    }
}

Place& ModelBuilder::addPlace(const FunctionCopy& copy)
{
    _places.emplace_back();
    Place& place = _places.back();
    place._file = copy._file;
    place._startLine = copy._startLine;
    place._endLine = copy._endLine;
    return place;
}

// Makes places of copies with one range, which are sorted by symbol, and puts those of one place
// side by side. `texts` says what the first copy of each symbol is, when there are several symbols.
void ModelBuilder::addPlaces(FunctionCopy** first, FunctionCopy** last, FunctionText* texts)
{
    if ((*first)->_symbol == (*(last - 1))->_symbol) {
        Place& place = addPlace(**first);
        place._copies = first;
        place._nCopies = static_cast<uint32_t>(last - first);
        return;
    }
    const bool needsTexts = this->needsTexts(first, last);
    const size_t nBefore = _places.size();
    std::map<std::string, size_t> byName;
    std::vector<std::pair<size_t, FunctionCopy*>> placed;
    for (FunctionCopy** copy = first; copy != last;) {
        const std::string& symbol = (*copy)->_symbol;
        const auto found =
            byName.emplace(needsTexts ? templateName(*texts) : symbol, _places.size());
        Place& place = found.second ? addPlace(**copy) : _places[found.first->second];
        if (needsTexts) {
            place._texts.push_back(std::move(*texts));
        }
        for (; copy != last && (*copy)->_symbol == symbol; ++copy, ++texts) {
            ++place._nCopies;
            placed.emplace_back(found.first->second, *copy);
        }
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (size_t i = 0; i < placed.size(); ++i) {
        first[i] = placed[i].second;
    }
    for (size_t i = nBefore; i < _places.size(); ++i) {
        _places[i]._copies = first;
        first += _places[i]._nCopies;
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

// Puts the copies in the order of their ranges and symbols.
void ModelBuilder::sortCopies()
{
    std::vector<CopyKey> keys;
    keys.reserve(_copies.size());
    bool hasBodies = false;
    for (size_t i = 0; i < _copies.size(); ++i) {
        keys.emplace_back(_copies[i], i);
        hasBodies = hasBodies || _copies[i]._isBody;
    }
    const auto isBefore = [](const CopyKey& a, const CopyKey& b) {
        return a._line != b._line       ? a._line < b._line
               : a._column != b._column ? a._column < b._column
                                        : a._copy < b._copy;
    };
    if (!std::is_sorted(keys.begin(), keys.end(), isBefore)) {
        std::sort(keys.begin(), keys.end(), isBefore);
    }
    _order.reserve(keys.size());
    for (const CopyKey& key : keys) {
        _order.push_back(&_copies[key._copy]);
    }
    const auto sortTies = [&](bool (*before)(const FunctionCopy*, const FunctionCopy*)) {
        for (size_t first = 0, last = 0; first < keys.size(); first = last) {
            for (last = first + 1; last < keys.size() && keys[first].isAt(keys[last]);) {
                ++last;
            }
            if (last - first > 1) {
                std::sort(&_order[first], &_order[first] + (last - first), before);
            }
        }
    };
    if (hasBodies) {
        sortTies(placeBefore);
        endBodies(_order);
    }
    sortTies(rangeBefore);
}

void ModelBuilder::makePlaces(unsigned int nThreads)
{
    sortCopies();
    std::vector<FunctionCopy*>& order = _order;
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
    _places.reserve(ends.size());
    size_t first = 0;
    for (const size_t last : ends) {
        addPlaces(order.data() + first, order.data() + last, reading.texts() + first);
        first = last;
    }
}

// Finds the places that are plain. The copies of the others have all lines in one form afterwards.
void ModelBuilder::findPlain()
{
    for (Place& place : _places) {
        place._isPlain = isPlain(place);
        for (size_t i = 0; i < place._nCopies && !place._isPlain; ++i) {
            place._copies[i]->spreadLines();
        }
    }
}

// Finds who has the lines of the files that places which are not plain have lines in.
void ModelBuilder::findOwners()
{
    std::vector<bool> isAsked(_paths.size());
    for (Place& place : _places) {
        for (size_t i = 0; i < place._nCopies && !place._isPlain; ++i) {
            for (const CopyLine& line : place._copies[i]->_lines) {
                isAsked[line._file] = true;
            }
        }
    }
    for (uint32_t i = 0; i < _places.size(); ++i) {
        const Place& place = _places[i];
        if (isAsked[place._file] && !place._copies[0]->_isHidden) {
            _owners[place._file].add(place._startLine, place._endLine, i);
        }
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
        for (size_t i = 1; i < place._nCopies; ++i) {
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

// Whether the place has one copy, with lines of its own alone.
bool ModelBuilder::isPlain(const Place& place) const
{
    if (place._nCopies != 1 || place._copies[0]->_isHidden) {
        return false;
    }
    const FunctionCopy& copy = *place._copies[0];
    return std::all_of(copy._ownLines.begin(), copy._ownLines.end(),
                       [&place](const CovLine& line) { return place.holds(line._line); }) &&
           std::all_of(copy._lines.begin(), copy._lines.end(), [&place](const CopyLine& line) {
               return line._file == place._file && place.holds(line._line);
           });
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
            piece->_counts.push_back(countOf(copy, block));
        }
        piece->_lines.push_back(
            {static_cast<uint32_t>(piece->_counts.size() - 1), line._line._line});
    }
    std::vector<CopyLine>().swap(copy._lines);
}

void ModelBuilder::split(Place& place) const
{
    for (size_t i = 0; i < place._nCopies && !place._isPlain; ++i) {
        splitCopy(place, *place._copies[i]);
    }
}

// Which count of a run is that of a block.
uint32_t ModelBuilder::countOf(const FunctionCopy& copy, uint32_t block) const
{
    qipAssert(copy._firstCount < _nCounts && block < _nCounts - copy._firstCount);
    return copy._firstCount + block;
}

// Of the copies of a place, each once.
std::vector<std::string> symbolsOf(const Place& place)
{
    std::vector<std::string> symbols;
    for (size_t i = 0; i < place._nCopies; ++i) {
        const std::string& symbol = place._copies[i]->_symbol;
        if (symbols.empty() || symbols.back() != symbol) {
            symbols.push_back(symbol);
        }
    }
    return symbols;
}

// What the entries of a place in other files are known by.
std::string ModelBuilder::keyOf(Place& place) const
{
    const std::string& symbol = place._copies[0]->_symbol;
    if (_keepsInstances) {
        return symbol;
    }
    if (place._texts.empty()) {
        place._texts.push_back(readFunctionText(symbol));
    }
    return templateName(place._texts.front());
}

void ModelBuilder::moveToEntry(size_t giver, Piece& piece)
{
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
    // A place may give hundreds of pieces, one of each instance; its symbols are the same each
    // time.
    if (entry._giver != giver) {
        entry._giver = giver;
        const std::vector<std::string> symbols = symbolsOf(_places[giver]);
        entry._symbols.insert(entry._symbols.end(), symbols.begin(), symbols.end());
    }
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
    _placesOfFiles.resize(_paths.size());
    for (uint32_t i = 0; i < _places.size(); ++i) {
        _placesOfFiles[_places[i]._file].push_back(i);
    }
}

// Whether the blocks of lines are all from that of the first to that of the last one.
bool isWithoutHoles(const std::vector<CovLine>& lines)
{
    for (size_t i = 1; i < lines.size(); ++i) {
        if (lines[i]._block - lines[i - 1]._block > 1) {
            return false;
        }
    }
    return true;
}

// Gives a plain function its counts and numbers its blocks again, those without lines left out.
// REQUIRES: it has lines, with the blocks of the copy.
void ModelBuilder::numberBlocks(const FunctionCopy& copy, CovFunction& function) const
{
    std::vector<CovLine>& lines = function._lines;
    const uint32_t first = lines.front()._block;
    const uint32_t last = lines.back()._block;
    function._firstCount = countOf(copy, first);
    (void)countOf(copy, last);
    if (isWithoutHoles(lines)) {
        function._nBasicBlocks = last - first + 1;
        for (size_t i = 0; i < lines.size() && first != 0; ++i) {
            lines[i]._block -= first;
        }
        return;
    }
    uint32_t before = 0;
    for (CovLine& line : lines) {
        if (function._nBasicBlocks == 0 || line._block != before) {
            before = line._block;
            function._sums.push_back(CovTerm::alone(countOf(copy, before)));
            ++function._nBasicBlocks;
        }
        line._block = function._nBasicBlocks - 1;
    }
    function._sums.shrink_to_fit();
}

// Makes the function of a plain place: its copy, whose lines it takes.
void ModelBuilder::fillPlain(Place& place, CovFunction& function) const
{
    FunctionCopy& copy = *place._copies[0];
    function._symbols.push_back(std::move(copy._symbol));
    function._lines.swap(copy._ownLines);
    if (!copy._lines.empty()) {
        function._lines.reserve(copy._lines.size());
        for (const CopyLine& line : copy._lines) {
            function._lines.push_back({line._block, line._line});
        }
        std::vector<CopyLine>().swap(copy._lines);
    }
    if (!function._lines.empty()) {
        numberBlocks(copy, function);
    }
}

void ModelBuilder::unite(Place& place, CovFunction& function) const
{
    function._texts.swap(place._texts);
    function._startLine = place._startLine;
    function._endLine = place._endLine;
    function._isPart = place._isPart;
    if (place._isPlain && place._pieces.empty()) {
        fillPlain(place, function);
        return;
    }
    function._symbols = place._isPart ? std::move(place._symbols) : symbolsOf(place);
    std::vector<Piece> pieces;
    if (place._isPlain) { // others have pieces for it
        pieces.swap(place._pieces);
        place._copies[0]->spreadLines();
        splitCopy(place, *place._copies[0]);
        std::move(pieces.begin(), pieces.end(), std::back_inserter(place._pieces));
    }
    pieces.swap(place._pieces);
    place._pieces.clear();
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
}

void ModelBuilder::unite(size_t file, CovFile& result)
{
    const std::vector<uint32_t>& places = _placesOfFiles[file];
    result._path = _paths[file];
    result._functions.reserve(places.size());
    for (const uint32_t place : places) {
        result._functions.emplace_back();
        unite(_places[place], result._functions.back());
        if (result._functions.back()._lines.empty()) {
            result._functions.pop_back();
        }
    }
}

class SplitJob : public ParallelJob
{
public:
    explicit SplitJob(ModelBuilder& builder) : _places(builder.places()), _builder(builder) {}
    void run(size_t item) override
    {
        const size_t end = std::min(_places.size(), (item + 1) * PlacesAtOnce);
        for (size_t i = item * PlacesAtOnce; i < end; ++i) {
            _builder.split(_places[i]);
        }
    }
    size_t nItems() const { return (_places.size() + PlacesAtOnce - 1) / PlacesAtOnce; }

private:
    static constexpr size_t PlacesAtOnce = 64;

    std::vector<Place>& _places;
    ModelBuilder& _builder;
};

class UniteJob : public ParallelJob
{
public:
    explicit UniteJob(ModelBuilder& builder) : _builder(builder), _files(builder.nFiles()) {}
    void run(size_t item) override { _builder.unite(item, _files[item]); }

    // Moves the files that have functions.
    void fillModel(CoverageModel& model)
    {
        for (CovFile& file : _files) {
            if (!file._functions.empty()) {
                model._files.push_back(std::move(file));
            }
        }
    }

private:
    ModelBuilder& _builder;
    std::vector<CovFile> _files;
};

} // namespace

void buildModel(ImportedBuild& build, bool keepsInstances, unsigned int nThreads,
                CoverageModel& model, ImportLosses& losses)
{
    qipAssert(build._nCounts <= ImportedBuild::MostCounts);
    model._isBoolean = build._isBoolean;
    ModelBuilder builder(build, keepsInstances);
    builder.makePlaces(nThreads);
    builder.findPlain();
    builder.findTwoBuilds(losses);
    builder.findOwners();
    SplitJob splitting(builder);
    runParallel(splitting, splitting.nItems(), nThreads);
    builder.distribute();
    UniteJob uniting(builder);
    runParallel(uniting, builder.nFiles(), nThreads);
    uniting.fillModel(model);
    std::vector<FunctionCopy>().swap(build._copies);
}
