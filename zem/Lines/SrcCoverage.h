// SPDX-License-Identifier: MIT
//
// Puts the coverage of a file record on the lines of its source file, and measures what the viewer
// needs to lay it out. Made by SrcViewer for each file that it shows.
//
// The order of the blocks decides: only blocks that follow each other directly and start on the
// same line are shown together, and a later block takes the place of an earlier one on its line.
#pragma once

#include "zem/Data/ZEMBlkRecord.h"

#include <cstdint>

class SrcLineTable;
class ZEMFileRecord;

class SrcCoverage
{
public:
    // Column widths are never below this.
    static constexpr int LeastWidth = 4;

    // Borrows `lines` while it lives.
    explicit SrcCoverage(SrcLineTable& lines);

    // Puts the blocks of every function of `file` on the lines. Lines that the source file does
    // not have are skipped; so is a block whose first or last line is unknown (0). Returns 0, or
    // -1 without memory for the counts of a line: some lines lack theirs then.
    [[nodiscard]] int load(const ZEMFileRecord& file);

    // Puts `count` blocks on the lines, which are all blocks of one function in their order.
    void loadBlocks(const ZEMBlkRecord* blocks, uint32_t count);

    int hitDetailWidth() const { return _hitDetailWidth; }   // widest text of counts, characters
    int maxBlocksOnLine() const { return _maxBlocksOnLine; } // most blocks shown together

private:
    // Lines that a block can name.
    static constexpr int Lines = 65536;
    static constexpr int WordBits = 64;

    void showFirst(const ZEMBlkRecord& block);
    void paintUnrun(int first, int last);
    int64_t showTogether(const ZEMBlkRecord* blocks, uint32_t count);
    void changed(int line);
    int nextChanged(int line, int last) const;

    SrcLineTable& _lines;
    int _hitDetailWidth;
    int _maxBlocksOnLine;
    bool _complete; // no line lacks its counts
    // A bit for each line, from 0, that is not painted as the inside of an unrun block. Without it
    // a map of many large unrun blocks would paint the same lines again for every block.
    uint64_t _notPainted[Lines / WordBits];
};
