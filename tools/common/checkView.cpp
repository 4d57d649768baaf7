// SPDX-License-Identifier: MIT
#include "tools/common/checkView.h"

#include "tools/common/BlockList.h"
#include "zem/Data/ZEMBlkRecord.h"
#include "zem/Lines/SrcCoverage.h"
#include "zem/Lines/SrcLine.h"
#include "zem/Lines/SrcLineTable.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// Lines without text, as many as a file's blocks can name.
class BareLines : public SrcLineTable
{
public:
    explicit BareLines(size_t count) : _count(count), _entries(new SrcLine[count]) {}

    SrcLine* line(long line) override
    {
        return line >= 0 && line < nLines() ? &_entries[static_cast<size_t>(line)] : nullptr;
    }
    long nLines() const override { return static_cast<long>(_count); }

private:
    const size_t _count;
    const std::unique_ptr<SrcLine[]> _entries;
};

enum LineState : unsigned char { NoCode, Unrun, Run, InsideRun };

// What each line should show, by its number.
std::vector<LineState> wantedStates(const CovFile& file, const std::vector<uint32_t>& values)
{
    std::vector<LineState> states;
    const uint32_t* value = values.data();
    for (const CovFunction& function : file._functions) {
        for (const CovLine& line : function._lines) {
            if (line._line > GreatestBlockLine) {
                continue;
            }
            if (line._line >= states.size()) {
                states.resize(std::max(line._line + size_t{1}, 2 * states.size()), NoCode);
            }
            const LineState state = value[line._block] == 0 ? Unrun : Run;
            states[line._line] = std::max(states[line._line], state);
        }
        value += function._nBasicBlocks;
    }
    return states;
}

// Fills `shown` with what the source view draws for a function when no line of a block is one of
// another; but several blocks may be on one line, the same one, and are drawn together. Returns
// false for a function that is not so.
bool showApart(const std::vector<CovBlock>& blocks, const uint32_t* counts,
               std::vector<LineState>& shown)
{
    for (size_t i = 0; i < blocks.size();) {
        const CovBlock& block = blocks[i];
        bool isRun = counts[i++] != 0;
        if (block._startLine == 0 || block._stopLine == 0) {
            continue;
        }
        for (; i < blocks.size() && blocks[i]._startLine == block._startLine; ++i) {
            if (block._stopLine != block._startLine || blocks[i]._stopLine != block._startLine) {
                return false;
            }
            isRun = isRun || counts[i] != 0;
        }
        if (block._stopLine < block._startLine || block._stopLine >= shown.size() ||
            shown[block._startLine] != NoCode) {
            return false;
        }
        shown[block._startLine] = isRun ? Run : Unrun;
        for (size_t line = block._startLine + size_t{1}; line <= block._stopLine; ++line) {
            if (shown[line] != NoCode) {
                return false;
            }
            shown[line] = isRun ? InsideRun : Unrun;
        }
    }
    return true;
}

// The same for a file. It asks for nothing but the bytes of its lines, and nearly all files are so.
bool showApart(const CovFile& file, const std::vector<uint32_t>& counts,
               std::vector<LineState>& shown)
{
    const uint32_t* count = counts.data();
    for (const CovFunction& function : file._functions) {
        if (!showApart(function._blocks, count, shown)) {
            return false;
        }
        count += function._blocks.size();
    }
    return true;
}

void loadFunction(const CovFunction& function, const uint32_t* counts, SrcCoverage& coverage)
{
    const size_t size = function._blocks.size();
    const std::unique_ptr<ZEMBlkRecord[]> blocks(new ZEMBlkRecord[size]);
    for (size_t i = 0; i < size; ++i) {
        blocks[i]._startLine = function._blocks[i]._startLine;
        blocks[i]._stopLine = function._blocks[i]._stopLine;
        blocks[i]._nHits = counts[i];
    }
    coverage.loadBlocks(blocks.get(), static_cast<uint32_t>(size));
}

// Fills `shown` with what the viewer's own code draws.
void askViewer(const CovFile& file, const std::vector<uint32_t>& counts,
               std::vector<LineState>& shown)
{
    BareLines lines(shown.size());
    SrcCoverage coverage(lines);
    const uint32_t* count = counts.data();
    for (const CovFunction& function : file._functions) {
        loadFunction(function, count, coverage);
        count += function._blocks.size();
    }
    for (size_t n = 1; n < shown.size(); ++n) {
        shown[n] = lines.line(static_cast<long>(n) - 1)->untested() ? Unrun : Run;
    }
}

} // namespace

void checkView(const CovFile& file, const std::vector<uint32_t>& values,
               const std::vector<uint32_t>& counts, ImportLosses& losses)
{
    const std::vector<LineState> wanted = wantedStates(file, values);
    std::vector<LineState> shown(wanted.size(), NoCode);
    if (!showApart(file, counts, shown)) {
        askViewer(file, counts, shown);
    }
    uint32_t red = 0;
    uint32_t black = 0;
    for (size_t n = 1; n < wanted.size(); ++n) { // without branches: many lines at once
        red += static_cast<uint32_t>(wanted[n] == Run) & static_cast<uint32_t>(shown[n] == Unrun);
        black +=
            static_cast<uint32_t>(wanted[n] == Unrun) & static_cast<uint32_t>(shown[n] != Unrun);
    }
    losses._linesShownRed += red;
    losses._linesShownBlack += black;
}
