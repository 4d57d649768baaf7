// SPDX-License-Identifier: MIT
#include "tools/common/BlockList.h"

#include "qip/Support/qipAssert.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace {

// What touches one line of the file. All zero at first: there are many.
struct LineUse
{
    uint32_t _place;    // among the lines with code
    uint32_t _function; // that shows the line
    bool _isUsed;
    bool _hasSeveral; // blocks
    bool _isShared;   // several functions
    bool _isCarried;  // by one around them, which has no code on it
};

// On a line that another function shows: the value of a basic block that touches it, and which of
// the line's blocks it counts in.
struct OtherUse
{
    uint32_t _line = 0;
    uint32_t _group = 0;
    uint32_t _value = 0;
    uint32_t _function = 0; // whose value it is; values of one function stand together

    bool isWith(const OtherUse& other) const
    {
        return _line == other._line && _group == other._group;
    }
    bool operator<(const OtherUse& other) const
    {
        return std::tie(_line, _group, _value) < std::tie(other._line, other._group, other._value);
    }
};

// By first line, last line, value. A function has its blocks in the order of their values at first.
// A type, not a function: then the comparison becomes part of the loops of std::sort().
struct StartsBefore
{
    static uint32_t lines(const CovBlock& block)
    {
        return uint32_t{block._startLine} << 16 | block._stopLine;
    }
    bool operator()(const CovBlock& a, const CovBlock& b) const
    {
        return lines(a) != lines(b) ? lines(a) < lines(b) : a._value < b._value;
    }
};

constexpr int MostTries = 16; // functions whose ranges overlap without being in each other

using Widths = std::set<std::pair<int64_t, uint32_t>>; // of functions, each with its number

class FileArranger
{
public:
    FileArranger(CovFile& file, ImportLosses& losses)
        : _file(file), _functions(file._functions), _losses(losses)
    {}

    void arrange();

private:
    uint32_t lastLine() const;
    void findUses();
    int64_t widthOf(uint32_t function) const;
    void use(uint32_t function, uint32_t line);
    void findCarriers();
    bool canCarry(uint32_t function, uint32_t other) const;
    void giveToCarrier(LineUse& use, const Widths& around) const;
    void numberLines();
    void addBlocks(uint32_t function);
    const CovLine* addBlock(uint32_t function, const CovLine* line, const CovLine* end);
    void addOthers();

    CovFile& _file;
    std::vector<CovFunction>& _functions;
    ImportLosses& _losses;
    std::vector<LineUse> _uses; // by line
    bool _isAnyShared = false;
    std::vector<CovBlock> _blocks; // of the function at hand
    std::vector<OtherUse> _others;
    uint32_t _firstValue = 0; // of the function at hand
    uint64_t _pastLastLine = 0;
};

// The last one that a block can name and that is used, or 0.
uint32_t FileArranger::lastLine() const
{
    uint32_t last = 0;
    for (const CovFunction& function : _functions) {
        for (const CovLine& line : function._lines) {
            last = std::max(last, line._line);
        }
    }
    return std::min(last, GreatestBlockLine);
}

// In lines. Their numbers have 32 bits, so differences fit when taken as 64.
int64_t FileArranger::widthOf(uint32_t function) const
{
    return int64_t{_functions[function]._endLine} - int64_t{_functions[function]._startLine};
}

void FileArranger::use(uint32_t function, uint32_t line)
{
    LineUse& use = _uses[line];
    if (!use._isUsed) {
        use._isUsed = true;
        use._function = function;
        return;
    }
    use._hasSeveral = true;
    if (use._function != function) {
        use._isShared = _isAnyShared = true;
        if (widthOf(function) > widthOf(use._function)) {
            use._function = function;
        }
    }
}

// Looks at the lines of all functions, as far as blocks can name them.
void FileArranger::findUses()
{
    _uses.assign(lastLine() + size_t{1}, LineUse());
    for (uint32_t i = 0; i < _functions.size(); ++i) {
        for (const CovLine& line : _functions[i]._lines) {
            if (line._line <= GreatestBlockLine) {
                use(i, line._line);
            }
        }
    }
}

// Whether a function without code on a line can show it for another.
bool FileArranger::canCarry(uint32_t function, uint32_t other) const
{
    return _functions[function]._startLine <= _functions[other]._startLine &&
           _functions[other]._endLine <= _functions[function]._endLine;
}

// Gives the line to the narrowest function that is around the one that would show it.
void FileArranger::giveToCarrier(LineUse& use, const Widths& around) const
{
    auto wider = around.upper_bound({widthOf(use._function), UINT32_MAX});
    for (int tries = 0; wider != around.end() && tries < MostTries; ++wider, ++tries) {
        if (canCarry(wider->second, use._function)) {
            use._function = wider->second;
            use._isCarried = true;
            return;
        }
    }
}

// Gives each line that several functions share, two lambdas, to the innermost function around them.
void FileArranger::findCarriers()
{
    std::vector<uint32_t> order;
    for (uint32_t i = 0; i < _functions.size(); ++i) {
        if (!_functions[i]._isPart && widthOf(i) >= 0) {
            order.push_back(i);
        }
    }
    std::sort(order.begin(), order.end(), [this](uint32_t a, uint32_t b) {
        return _functions[a]._startLine < _functions[b]._startLine;
    });
    Widths around;
    std::set<std::pair<uint32_t, uint32_t>> ends; // of these
    auto next = order.begin();
    for (uint32_t line = 0; line < _uses.size(); ++line) {
        for (; next != order.end() && _functions[*next]._startLine <= line; ++next) {
            around.insert({widthOf(*next), *next});
            ends.insert({_functions[*next]._endLine, *next});
        }
        for (; !ends.empty() && ends.begin()->first < line; ends.erase(ends.begin())) {
            around.erase({widthOf(ends.begin()->second), ends.begin()->second});
        }
        if (_uses[line]._isShared) {
            giveToCarrier(_uses[line], around);
        }
    }
}

void FileArranger::numberLines()
{
    uint32_t place = 0;
    for (LineUse& use : _uses) {
        use._place = place;
        place += use._isUsed ? 1 : 0;
    }
}

// Adds what shows the basic block whose lines begin at `line`. Returns where those of the next one
// begin.
const CovLine* FileArranger::addBlock(uint32_t function, const CovLine* line, const CovLine* end)
{
    const uint32_t block = line->_block;
    const uint32_t value = _firstValue + block;
    bool isOutside = false; // it has lines that it cannot show
    bool isGrowing = false; // the last of _blocks is a stretch
    uint32_t nextPlace = 0; // of the line that it may get, too
    for (; line != end && line->_block == block; ++line) {
        if (line->_line > GreatestBlockLine) {
            isOutside = true;
            continue;
        }
        const LineUse& use = _uses[line->_line];
        if (use._isShared && use._function != function) {
            _others.push_back({line->_line, use._isCarried ? function : 0, value, function});
            isOutside = true;
            continue;
        }
        const auto shown = static_cast<uint16_t>(line->_line);
        if (isGrowing && !use._hasSeveral && use._place == nextPlace) {
            _blocks.back()._stopLine = shown;
        } else {
            _blocks.push_back({shown, shown, value});
            isGrowing = !use._hasSeveral;
        }
        nextPlace = use._place + 1;
    }
    if (isOutside) {
        _blocks.push_back({0, 0, value});
        _pastLastLine += line[-1]._line > GreatestBlockLine ? 1 : 0;
    }
    return line;
}

void FileArranger::addBlocks(uint32_t function)
{
    CovFunction& entry = _functions[function];
    _blocks.clear();
    const CovLine* const end = entry._lines.data() + entry._lines.size();
    for (const CovLine* line = entry._lines.data(); line != end;) {
        line = addBlock(function, line, end);
    }
    entry._blocks.assign(_blocks.begin(), _blocks.end());
    _firstValue += entry._nBasicBlocks;
}

// Each line that several functions touch has a block that ran as often as the others than the one
// that shows it ran the line, each as often as its block there that ran most; when that one has no
// code on the line, a block for each of the others.
void FileArranger::addOthers()
{
    std::sort(_others.begin(), _others.end());
    _file._sums.reserve(_others.size());
    uint32_t value = _firstValue;
    for (size_t i = 0; i < _others.size(); ++i) {
        const uint32_t line = _others[i]._line;
        const bool isLast = i + 1 == _others.size() || !_others[i + 1].isWith(_others[i]);
        qipAssert(_others[i]._value <= CovTerm::GreatestCount);
        const bool isOwn = !isLast && _others[i + 1]._function == _others[i]._function;
        _file._sums.push_back(
            {_others[i]._value & CovTerm::GreatestCount, isOwn ? 0u : 1u, isLast ? 1u : 0u});
        if (isLast) {
            const auto shown = static_cast<uint16_t>(line);
            _functions[_uses[line]._function]._blocks.push_back({shown, shown, value++});
        }
    }
}

void FileArranger::arrange()
{
    _file._sums.clear();
    findUses();
    if (_isAnyShared) {
        findCarriers();
    }
    numberLines();
    for (uint32_t i = 0; i < _functions.size(); ++i) {
        addBlocks(i);
    }
    addOthers();
    for (CovFunction& function : _functions) {
        std::vector<CovBlock>& blocks = function._blocks;
        if (!std::is_sorted(blocks.begin(), blocks.end(), StartsBefore())) {
            std::sort(blocks.begin(), blocks.end(), StartsBefore());
        }
        function._blocks.shrink_to_fit(); // there are millions, and they stay to the end
    }
    if (_pastLastLine != 0) {
        _losses._blocksPastLastLine[_file._path] += _pastLastLine;
    }
}

} // namespace

void arrangeBlocks(CovFile& file, ImportLosses& losses)
{
    FileArranger(file, losses).arrange();
}
