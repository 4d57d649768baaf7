// SPDX-License-Identifier: MIT
//
// What has to be drawn for one row of a report, as RptRowLayout works it out: plain numbers for the
// report viewer to hand to X and for tests to look at. Everything is in pixels from the upper left
// corner of the visible part of the canvas, and fits the 16 bits of the X protocol.
#pragma once

// Nothing to draw when the width or the height is 0.
struct RptRect
{
    int x;
    int y;
    int width;
    int height;
};

// Both ends belong to the line.
struct RptLine
{
    int x0;
    int y0;
    int x1;
    int y1;
};

// The characters of a text that can be seen, from the baseline's left end. Nothing to draw when the
// length is 0.
struct RptTextRun
{
    const char* text; // not zero-terminated at `length`
    int length;       // characters
    int x;
    int y;
};

struct RptRow
{
    RptRect selection; // background of the row when it is the selected one
    RptTextRun label;  // points into the row's own label
    RptTextRun counts; // points into `countsText`
    RptRect covered;
    RptRect uncovered;
    RptLine light[4]; // upper and left edges of the frame, `nLight` of them
    RptLine dark[4];  // lower and right edges, `nDark` of them
    int nLight;
    int nDark;
    char countsText[80]; // "covered:uncovered (per cent)"

    RptRow() = default;
    // `counts` points into the row itself.
    RptRow(const RptRow&) = delete;
    RptRow& operator=(const RptRow&) = delete;
};
