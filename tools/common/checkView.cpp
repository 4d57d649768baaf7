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

enum LineState : unsigned char { NoCode, Unrun, Run };

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
                states.resize(line._line + size_t{1}, NoCode);
            }
            const LineState state = value[line._block] == 0 ? Unrun : Run;
            states[line._line] = std::max(states[line._line], state);
        }
        value += function._nBasicBlocks;
    }
    return states;
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

} // namespace

void checkView(const CovFile& file, const std::vector<uint32_t>& values,
               const std::vector<uint32_t>& counts, ImportLosses& losses)
{
    const std::vector<LineState> wanted = wantedStates(file, values);
    BareLines lines(wanted.size());
    SrcCoverage coverage(lines);
    const uint32_t* count = counts.data();
    for (const CovFunction& function : file._functions) {
        loadFunction(function, count, coverage);
        count += function._blocks.size();
    }
    for (size_t n = 1; n < wanted.size(); ++n) {
        const SrcLine& line = *lines.line(static_cast<long>(n) - 1);
        if (wanted[n] == Run && line.untested()) {
            ++losses._linesShownRed;
        } else if (wanted[n] == Unrun && !line.untested()) {
            ++losses._linesShownBlack;
        }
    }
}
