// SPDX-License-Identifier: MIT
#include "tests/unit/tools/import/GcovCounts.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace {

// A block of a unit: its function's place in the unit, and its number there.
using Block = std::pair<size_t, uint32_t>;

struct LineBlocks
{
    int64_t _sum = 0;           // of every block that names the line
    std::vector<Block> _blocks; // those that belong to it
};

// The blocks of one line that belong to one function, as a graph.
class LineGraph
{
public:
    LineGraph(const GcnoFunction& function, const std::set<uint32_t>& blocks) : _blocks(blocks)
    {
        for (const GcnoArc& arc : function._arcs) {
            if (_blocks.count(arc._to) != 0 && _blocks.count(arc._from) == 0) {
                _entries += arc._count;
            } else if (_blocks.count(arc._to) != 0) {
                _arcs.push_back(arc);
            }
        }
    }

    int64_t count()
    {
        int64_t result = _entries;
        for (const uint32_t start : _blocks) {
            _start = start;
            while (findCycle(start)) {
                int64_t turns = INT64_MAX;
                for (GcnoArc* arc : _path) {
                    turns = std::min(turns, arc->_count);
                }
                for (GcnoArc* arc : _path) {
                    arc->_count -= turns;
                }
                result += turns;
                _path.clear();
            }
        }
        return result;
    }

private:
    // A way from `block` back to the start over arcs that have turns left.
    bool findCycle(uint32_t block)
    {
        _seen.insert(block);
        bool isFound = false;
        for (size_t i = 0; i < _arcs.size() && !isFound; ++i) {
            GcnoArc& arc = _arcs[i];
            if (arc._from != block || arc._count <= 0 || arc._to < _start) {
                continue;
            }
            _path.push_back(&arc);
            isFound = arc._to == _start || (_seen.count(arc._to) == 0 && findCycle(arc._to));
            if (!isFound) {
                _path.pop_back();
            }
        }
        _seen.erase(block);
        return isFound;
    }

    const std::set<uint32_t> _blocks;
    std::vector<GcnoArc> _arcs; // inside the line
    int64_t _entries = 0;
    uint32_t _start = 0;
    std::set<uint32_t> _seen;
    std::vector<GcnoArc*> _path;
};

// Functions that start on one line have lines of their own; all others share those of the file.
struct LineKey
{
    std::string _file;
    uint32_t _line;
    size_t _function; // its place from 1, 0 for the shared lines

    bool operator<(const LineKey& other) const
    {
        return std::tie(_file, _line, _function) <
               std::tie(other._file, other._line, other._function);
    }
};

using Lines = std::map<LineKey, LineBlocks>;

// Of the lines that a block names in one file it belongs to the greatest, whatever their order.
bool isTheBlocksOwn(const std::vector<GcnoLine>& lines, size_t i)
{
    const auto isMate = [&](size_t other) {
        return lines[other]._block == lines[i]._block && lines[other]._file == lines[i]._file;
    };
    for (size_t before = i; before > 0 && isMate(before - 1); --before) {
        if (lines[before - 1]._line > lines[i]._line) {
            return false;
        }
    }
    for (size_t behind = i + 1; behind < lines.size() && isMate(behind); ++behind) {
        if (lines[behind]._line >= lines[i]._line) {
            return false;
        }
    }
    return true;
}

void collect(const GcnoFunction& function, size_t place, bool isGrouped,
             const std::vector<int64_t>& counts, Lines& byKey)
{
    const std::vector<GcnoLine>& lines = function._lines;
    for (size_t i = 0; i < lines.size(); ++i) {
        const GcnoLine& line = lines[i];
        const bool isOwn = isGrouped && line._file == 0 && function._startLine <= line._line &&
                           line._line <= function._endLine;
        LineBlocks& entry =
            byKey[{std::string(function._files[line._file]), line._line, isOwn ? place + 1 : 0}];
        entry._sum += counts[line._block];
        // gcov leaves the entry and the block with the greatest number out of its line graphs.
        if (isTheBlocksOwn(lines, i) && line._block != GcnoFunction::EntryBlock &&
            line._block + 1 != function._nBlocks) {
            entry._blocks.push_back({place, line._block});
        }
    }
}

int64_t countOf(const LineBlocks& line, const std::vector<GcnoFunction>& functions)
{
    if (line._blocks.empty()) {
        return line._sum;
    }
    std::map<size_t, std::set<uint32_t>> byFunction;
    for (const Block& block : line._blocks) {
        byFunction[block.first].insert(block.second);
    }
    int64_t result = 0;
    for (const auto& part : byFunction) {
        result += LineGraph(functions[part.first], part.second).count();
    }
    return result;
}

} // namespace

void GcovCounts::addUnit(const std::vector<GcnoFunction>& functions,
                         const std::vector<std::vector<int64_t>>& counts)
{
    std::map<std::pair<std::string, uint32_t>, int> starts;
    for (const GcnoFunction& function : functions) {
        starts[{std::string(function._files[0]), function._startLine}] +=
            function._isArtificial ? 0 : 1;
    }
    Lines lines;
    for (size_t i = 0; i < functions.size(); ++i) {
        const GcnoFunction& function = functions[i];
        if (!function._isArtificial) {
            const bool isGrouped =
                starts[{std::string(function._files[0]), function._startLine}] > 1;
            collect(function, i, isGrouped, counts[i], lines);
        }
    }
    for (const auto& line : lines) {
        _lines[line.first._file][line.first._line] += countOf(line.second, functions);
    }
}
