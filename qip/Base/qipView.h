// SPDX-License-Identifier: MIT
//
// A rectangle in cells (columns and rows, not pixels): the visible part of a canvas. A plain value.
#pragma once

class qipView
{
public:
    qipView() : _x(0), _y(0), _dx(0), _dy(0) {}
    qipView(int x, int y, int dx, int dy) : _x(x), _y(y), _dx(dx), _dy(dy) {}
    qipView(const qipView&) = default;
    qipView& operator=(const qipView&) = default;
    virtual ~qipView() = default;

    int _x;  // first column; negative when a small canvas is centred
    int _y;  // first row
    int _dx; // columns
    int _dy; // rows
};
