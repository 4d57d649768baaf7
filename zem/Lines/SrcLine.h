// SPDX-License-Identifier: MIT
//
// One line of a source file with the coverage that is shown on it. Entries belong to a SrcBrowser;
// SrcCoverage fills them.
#pragma once

#include "zem/Lines/TextLine.h"

#include <cstdint>

class SrcLine : public TextLine
{
public:
    // Values of `_hits` that are no counts.
    static constexpr int32_t NoBlock = -1;     // no block starts here
    static constexpr int32_t InsideUnrun = -2; // inside a block that never ran

    SrcLine();
    // Frees the text and the hit map.
    ~SrcLine() override;

    // Frees the cached text and keeps `text`, from malloc(), of `len` characters.
    void saveSourceLine(char* text, int len);

    // Shows one block with `hits` runs, or InsideUnrun, in place of what was shown.
    void showBlock(int32_t hits);

    // Shows the counts of `map` in place of what was shown, with their sum `hits`. Takes `map`,
    // which was made with new[] and has at least `nBlocks` values.
    void showBlocks(int32_t* map, int32_t nBlocks, int32_t hits);

    // Whether the line is drawn in the colour of untested lines. It goes by the sum: a line on
    // which one of two blocks never ran is not.
    bool untested() const { return _hits == 0 || _hits == InsideUnrun; }

    int32_t _nBlocks; // counts shown on this line
    int32_t _hits;    // their sum, or NoBlock or InsideUnrun
    int32_t* _hitMap; // `_nBlocks` counts; null, `&_hits`, or an owned array

private:
    void dropMap();
};
