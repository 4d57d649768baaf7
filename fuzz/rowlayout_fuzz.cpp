// SPDX-License-Identifier: MIT
//
// A report row of any numbers in a window of any size: whatever is drawn fits the protocol, comes
// in order, and no text is read past its end. The input is the measures, the counts of the row,
// and its label.
#include "fuzz/FuzzBytes.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "zem/Rows/RptRowLayout.h"
#include "zem/Rows/ZEMFuncView.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

namespace {

constexpr int LowestX = -32768;
constexpr int HighestX = 32767;

// Small ones, those that fit 16 bits, or any.
int anyMeasure(FuzzBytes& bytes)
{
    const uint32_t kind = bytes.below(4);
    const uint32_t word = bytes.word();
    return static_cast<int>(kind == 0 ? word % 256 : kind == 1 ? word & 0x7fff : word & 0x7fffffff);
}

// Of a font: 16 bits in the protocol.
int fontMeasure(FuzzBytes& bytes)
{
    return anyMeasure(bytes) & 0x7fff;
}

void checkX(int x)
{
    qipAssert(x >= LowestX && x <= HighestX);
}

void check(const RptRect& rect)
{
    qipAssert(rect.width >= 0 && rect.height >= 0);
    checkX(rect.x);
    checkX(rect.y);
    checkX(rect.x + rect.width);
    checkX(rect.y + rect.height);
}

void check(const RptLine* lines, int count)
{
    qipAssert(count >= 0 && count <= 4);
    for (int i = 0; i < count; ++i) {
        checkX(lines[i].x0);
        checkX(lines[i].y0);
        checkX(lines[i].x1);
        checkX(lines[i].y1);
        qipAssert(lines[i].x0 <= lines[i].x1 && lines[i].y0 <= lines[i].y1);
    }
}

void check(const RptTextRun& run, const char* text, size_t length)
{
    qipAssert(run.length >= 0);
    if (run.length > 0) {
        qipAssert(run.text >= text && run.text + run.length <= text + length);
        checkX(run.x);
        checkX(run.y);
    }
}

void check(const RptRow& row, const ZEMView& view)
{
    check(row.selection);
    check(row.covered);
    check(row.uncovered);
    check(row.light, row.nLight);
    check(row.dark, row.nDark);
    check(row.label, view._label, view._label == nullptr ? 0 : std::strlen(view._label));
    check(row.counts, row.countsText, std::strlen(row.countsText));
    qipAssert(std::memchr(row.countsText, '\0', sizeof row.countsText) != nullptr);
    // The two parts of a bar lie side by side, and a part that is nothing has no width.
    qipAssert(row.covered.x + row.covered.width == row.uncovered.x);
    qipAssert(view._covBlk > 0 || row.covered.width == 0);
    qipAssert(view._covBlk < view._totBlk || row.uncovered.width == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzBytes bytes(data, size);
    RptRowLayout layout;
    layout._hPixels = fontMeasure(bytes);
    layout._vPixels = fontMeasure(bytes);
    layout._lineHeight = fontMeasure(bytes);
    layout._baseline = fontMeasure(bytes);
    layout._barHeight = fontMeasure(bytes);
    layout._canvasWidth = anyMeasure(bytes);
    layout._viewX = anyMeasure(bytes);
    layout._viewDx = anyMeasure(bytes);
    layout._longestLabel = anyMeasure(bytes);
    layout._showPercentage = static_cast<int>(bytes.below(2));

    ZEMFuncView view;
    const int total = anyMeasure(bytes);
    const int covered = anyMeasure(bytes);
    const bool isUnderstated = bytes.below(8) == 7;
    layout._maxBlocks = bytes.below(2) == 0 ? total : std::max(total, anyMeasure(bytes));
    view.setCounts(nullptr, total,
                   isUnderstated ? total - static_cast<int64_t>(covered) : std::min(covered, total),
                   0);
    const int place = anyMeasure(bytes);
    view.funcname(bytes.name(255).c_str());
    view.setLabel();

    RptRow row;
    layout.layOut(view, place, row);
    check(row, view);
    return 0;
}
