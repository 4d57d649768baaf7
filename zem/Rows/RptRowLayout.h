// SPDX-License-Identifier: MIT
//
// The arithmetic of a report row: where its label, bar, frame and text go. The report viewer fills
// in the measures for each refresh and asks for one row after the other. It needs no display.
//
// Labels end against the middle of the canvas, bars begin behind it. All sums are done in 64 bits;
// what the 16 bits of the X protocol cannot carry is clipped, and of a text only the characters
// that can be seen are kept.
#pragma once

#include "zem/Rows/RptRow.h"

#include <cstdint>

class ZEMView;

class RptRowLayout
{
public:
    // All measures 0: every row is empty.
    RptRowLayout();

    // Works out row number `i` of the visible rows, counted from 0 at the top. The result borrows
    // the label of `view`.
    void layOut(const ZEMView& view, int i, RptRow& row) const;

    // Distance of a bar's upper edge and of a text's baseline from the top of its row.
    int barOffset() const;
    int textOffset() const;

    // In pixels.
    int _hPixels;    // width of a column
    int _vPixels;    // height of a row
    int _lineHeight; // of the font
    int _baseline;   // ascent of the font
    int _barHeight;

    // In columns.
    int _canvasWidth;
    int _viewX;        // first visible column
    int _viewDx;       // visible columns
    int _longestLabel; // of the table, in characters

    int _maxBlocks;      // largest number of blocks of a row of the table
    int _showPercentage; // all bars have the same length; else in proportion to the blocks

private:
    void barWidths(const ZEMView& view, std::int64_t& full, std::int64_t& covered) const;
    void frame(std::int64_t x, std::int64_t top, std::int64_t width, RptRow& row) const;
    RptTextRun visibleRun(const char* text, std::int64_t length, std::int64_t x,
                          std::int64_t y) const;
};
