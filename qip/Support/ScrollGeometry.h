// SPDX-License-Identifier: MIT
//
// The arithmetic of scrolling, in cells, without X.
#pragma once

namespace ScrollGeometry {

// One axis of a view on a canvas, and what its scroll bar shows.
struct Axis
{
    int origin; // first visible cell; negative when a small canvas is centred
    int value;  // of the scroll bar; value + page never pass a canvas of 1 or more
    int page;   // of the scroll bar, at least 1
};

// Pulls a view of `extent` cells at `origin` into a canvas of `canvas` cells. A view larger than
// the canvas starts at 0, or lies around the canvas when it is to be centred.
Axis clamp(int origin, int extent, int canvas, bool centerWhenOversize);

} // namespace ScrollGeometry
