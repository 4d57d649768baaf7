// SPDX-License-Identifier: MIT
#include "tools/common/BlockList.h"

#include <algorithm>

namespace {

// What touches one line of the file.
struct LineUse
{
    uint32_t _place = 0;    // among the lines with code
    uint32_t _function = 0; // that shows the line
    bool _isUsed = false;
    bool _isAlone = true;   // one block only
    bool _isShared = false; // several functions
    int64_t _othersHits = 0;
};

void boundCount(int64_t& hits, ImportLosses& losses)
{
    if (hits < 0) {
        hits = 0;
        ++losses._negativeCounts;
    } else if (hits > GreatestCount) {
        hits = GreatestCount;
        ++losses._clampedCounts;
    }
}

bool startsBefore(const CovBlock& a, const CovBlock& b)
{
    return a._startLine != b._startLine ? a._startLine < b._startLine : a._stopLine < b._stopLine;
}

class FileArranger
{
public:
    FileArranger(CovFile& file, ImportLosses& losses)
        : _file(file), _functions(file._functions), _losses(losses)
    {}

    void arrange();

private:
    uint32_t lastLine() const;
    void use(uint32_t function, uint32_t line);
    void numberLines();
    void addBlocks(uint32_t function);
    size_t addBlock(uint32_t function, size_t first);
    void addLine(uint32_t function, uint32_t line, int64_t hits);
    void endStretch(uint32_t function, int64_t hits);
    void addOthers();

    CovFile& _file;
    std::vector<CovFunction>& _functions;
    ImportLosses& _losses;
    std::vector<LineUse> _uses; // by line
    CovBlock _stretch;          // the one that is growing; start 0 when there is none
    bool _isOutside = false;    // the block at hand has lines that it cannot show
    uint64_t _pastLastLine = 0;
};

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

void FileArranger::use(uint32_t function, uint32_t line)
{
    LineUse& use = _uses[line];
    if (!use._isUsed) {
        use._isUsed = true;
        use._function = function;
        return;
    }
    use._isAlone = false;
    if (use._function != function) {
        use._isShared = true;
        // Line numbers are bounded by 32 bits, so differences are, too, when taken as 64.
        const auto width = [this](uint32_t f) {
            return int64_t{_functions[f]._endLine} - int64_t{_functions[f]._startLine};
        };
        if (width(function) > width(use._function)) {
            use._function = function;
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

void FileArranger::endStretch(uint32_t function, int64_t hits)
{
    if (_stretch._startLine != 0) {
        _functions[function]._blocks.push_back({_stretch._startLine, _stretch._stopLine, hits});
        _stretch = CovBlock();
    }
}

void FileArranger::addLine(uint32_t function, uint32_t line, int64_t hits)
{
    if (line > GreatestBlockLine) {
        _isOutside = true;
        return;
    }
    LineUse& use = _uses[line];
    if (use._isShared && use._function != function) {
        use._othersHits = std::min(use._othersHits + hits, GreatestCount);
        _isOutside = true;
        return;
    }
    const bool isNext =
        _stretch._startLine != 0 && use._place == _uses[_stretch._stopLine]._place + 1;
    if (!use._isAlone || !isNext) {
        endStretch(function, hits);
    }
    if (!use._isAlone) {
        _functions[function]._blocks.push_back({line, line, hits});
        return;
    }
    _stretch._startLine = _stretch._startLine == 0 ? line : _stretch._startLine;
    _stretch._stopLine = line;
}

// Returns where the lines of the next block begin.
size_t FileArranger::addBlock(uint32_t function, size_t first)
{
    CovFunction& entry = _functions[function];
    const uint32_t block = entry._lines[first]._block;
    const int64_t hits = entry._hits[block];
    _isOutside = false;
    size_t next = first;
    for (; next < entry._lines.size() && entry._lines[next]._block == block; ++next) {
        addLine(function, entry._lines[next]._line, hits);
    }
    endStretch(function, hits);
    if (_isOutside) {
        entry._blocks.push_back({0, 0, hits});
        _pastLastLine += entry._lines[next - 1]._line > GreatestBlockLine ? 1 : 0;
    }
    return next;
}

void FileArranger::addBlocks(uint32_t function)
{
    CovFunction& entry = _functions[function];
    entry._blocks.clear();
    for (size_t line = 0; line < entry._lines.size();) {
        line = addBlock(function, line);
    }
}

void FileArranger::addOthers()
{
    for (uint32_t line = 0; line < _uses.size(); ++line) {
        const LineUse& use = _uses[line];
        if (use._isShared) {
            _functions[use._function]._blocks.push_back({line, line, use._othersHits});
        }
    }
}

void FileArranger::arrange()
{
    _uses.assign(lastLine() + size_t{1}, LineUse());
    for (uint32_t i = 0; i < _functions.size(); ++i) {
        for (int64_t& hits : _functions[i]._hits) {
            boundCount(hits, _losses);
        }
        for (const CovLine& line : _functions[i]._lines) {
            if (line._line <= GreatestBlockLine) {
                use(i, line._line);
            }
        }
    }
    numberLines();
    for (uint32_t i = 0; i < _functions.size(); ++i) {
        addBlocks(i);
    }
    addOthers();
    for (CovFunction& function : _functions) {
        std::stable_sort(function._blocks.begin(), function._blocks.end(), startsBefore);
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
