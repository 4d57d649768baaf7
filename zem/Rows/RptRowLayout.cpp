// SPDX-License-Identifier: MIT
#include "zem/Rows/RptRowLayout.h"

#include "zem/Rows/RptText.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <cstring>

namespace {

// What an X coordinate can hold.
constexpr std::int64_t LowestX = -32768;
constexpr std::int64_t HighestX = 32767;

// In pixels, so that it can be multiplied by a number of blocks.
constexpr std::int64_t LongestBar = INT32_MAX;

// Bars are scaled to the longest label, but to no less than this many columns.
constexpr int ShortestScale = 40;

bool fits(std::int64_t coordinate)
{
    return coordinate >= LowestX && coordinate <= HighestX;
}

// The part of [begin, end) that coordinates can hold.
void clip(std::int64_t& begin, std::int64_t& end)
{
    begin = std::clamp(begin, LowestX, HighestX);
    end = std::clamp(end, begin, HighestX);
}

RptRect clippedRect(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height)
{
    std::int64_t right = x + std::max<std::int64_t>(width, 0);
    std::int64_t bottom = y + std::max<std::int64_t>(height, 0);
    clip(x, right);
    clip(y, bottom);
    return {static_cast<int>(x), static_cast<int>(y), static_cast<int>(right - x),
            static_cast<int>(bottom - y)};
}

// Adds an upright or level line, x0 <= x1 and y0 <= y1, unless none of it can be drawn.
void addLine(RptLine* lines, int& count, std::int64_t x0, std::int64_t y0, std::int64_t x1,
             std::int64_t y1)
{
    if (x1 < LowestX || x0 > HighestX || y1 < LowestX || y0 > HighestX) {
        return;
    }
    clip(x0, x1);
    clip(y0, y1);
    lines[count++] = {static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1),
                      static_cast<int>(y1)};
}

} // namespace

RptRowLayout::RptRowLayout()
    : _hPixels(0), _vPixels(0), _lineHeight(0), _baseline(0), _barHeight(0), _canvasWidth(0),
      _viewX(0), _viewDx(0), _longestLabel(0), _maxBlocks(0), _showPercentage(0)
{}

int RptRowLayout::barOffset() const
{
    return (_vPixels - _barHeight - 1) / 2;
}

int RptRowLayout::textOffset() const
{
    return (_vPixels - _lineHeight) / 2 + _baseline;
}

void RptRowLayout::layOut(const ZEMView& view, int i, RptRow& row) const
{
    const std::int64_t y = static_cast<std::int64_t>(i) * _vPixels;
    const std::int64_t middle = static_cast<std::int64_t>(_canvasWidth / 2) - _viewX;
    const std::int64_t barX = (middle + 1) * _hPixels;
    const std::int64_t barY = y + barOffset();
    const std::int64_t textY = y + textOffset();

    row.selection = clippedRect(0, y, static_cast<std::int64_t>(_viewDx) * _hPixels, _vPixels);

    const std::int64_t labelLength =
        view._label == nullptr ? 0 : static_cast<std::int64_t>(strlen(view._label));
    row.label = visibleRun(view._label, labelLength, (middle - labelLength) * _hPixels - 2, textY);

    std::int64_t full;
    std::int64_t covered;
    barWidths(view, full, covered);

    const int countsLength =
        RptText::counts(view._covBlk, view._totBlk, row.countsText, sizeof row.countsText);
    row.counts = visibleRun(row.countsText, countsLength, barX + full + 1, textY);

    row.covered = clippedRect(barX, barY, covered, _barHeight);
    row.uncovered = clippedRect(barX + covered, barY, full - covered, _barHeight);
    frame(barX, barY, full, row);
}

void RptRowLayout::barWidths(const ZEMView& view, std::int64_t& full, std::int64_t& covered) const
{
    const std::int64_t scale = std::max(_longestLabel, ShortestScale);
    const std::int64_t total = view._totBlk;
    const std::int64_t unit = std::min(_hPixels * scale, LongestBar);

    if (_showPercentage) {
        full = total == 0 ? 0 : unit;
        covered = total == 0 ? 0 : unit * view._covBlk / total;
    } else {
        full = _maxBlocks == 0 ? 0 : unit * total / _maxBlocks;
        covered = _maxBlocks == 0 ? 0 : unit * view._covBlk / _maxBlocks;
    }
    full = std::max<std::int64_t>(full, 0);
    covered = std::clamp<std::int64_t>(covered, 0, full);
}

// Two pixels wide on each side.
void RptRowLayout::frame(std::int64_t x, std::int64_t top, std::int64_t width, RptRow& row) const
{
    const std::int64_t right = x + width;
    const std::int64_t bottom = top + _barHeight;

    row.nLight = 0;
    addLine(row.light, row.nLight, x - 1, top, x - 1, bottom);
    addLine(row.light, row.nLight, x - 2, top - 1, x - 2, bottom + 1);
    addLine(row.light, row.nLight, x - 1, top, right, top);
    addLine(row.light, row.nLight, x - 2, top - 1, right + 1, top - 1);

    row.nDark = 0;
    addLine(row.dark, row.nDark, right, top + 1, right, bottom);
    addLine(row.dark, row.nDark, right + 1, top, right + 1, bottom + 1);
    addLine(row.dark, row.nDark, x, bottom, right, bottom);
    addLine(row.dark, row.nDark, x - 1, bottom + 1, right + 1, bottom + 1);
}

RptTextRun RptRowLayout::visibleRun(const char* text, std::int64_t length, std::int64_t x,
                                    std::int64_t y) const
{
    // One column more than the view has: the last one may be cut by the window's edge.
    const std::int64_t visible =
        std::min((static_cast<std::int64_t>(_viewDx) + 1) * _hPixels, HighestX);
    if (_hPixels <= 0 || length <= 0 || x >= visible || !fits(y)) {
        return {text, 0, 0, 0};
    }
    const std::int64_t first = x < 0 ? -x / _hPixels : 0;
    const std::int64_t behindLast = std::min(length, (visible - x + _hPixels - 1) / _hPixels);
    if (first >= behindLast) {
        return {text, 0, 0, 0};
    }
    return {text + first, static_cast<int>(behindLast - first),
            static_cast<int>(x + first * _hPixels), static_cast<int>(y)};
}
