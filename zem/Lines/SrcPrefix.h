// SPDX-License-Identifier: MIT
//
// The fixed columns left of the source text: the line number, and either the counts or a mark for
// each block of the line. Which columns there are, how wide they are and what stands in them, in
// characters; SrcViewer turns that into pixels. It does not scroll sideways.
//
//   "      5   3/0     |text"   line number, counts of two blocks
//   "      5   .!      |text"   line number, marks: "!" never ran
#pragma once

#include <cstddef>
#include <cstdint>

class RptInfo;
class SrcLine;

class SrcPrefix
{
public:
    // The columns that `info` asks for. The widths are those of SrcCoverage.
    SrcPrefix(const RptInfo& info, int hitDetailWidth, int maxBlocksOnLine);

    // Characters of all columns; 0 when there is none.
    int width() const { return numberWidth() + _blockWidth; }
    // The column, from 0, at which the source text starts.
    int textColumn() const { return width() + 1; }
    // The columns behind which a separator stands; -1 when there is no such separator.
    int numberSeparator() const { return _lineNumbers ? numberWidth() - 1 : -1; }
    int blockSeparator() const { return _blockWidth > 0 ? width() - 1 : -1; }

    // Writes the header line, titles and `filename`, into `text`, which has room for `size`
    // characters and gets no terminating zero. Returns the number written.
    int header(const char* filename, char* text, int size) const;

    // Likewise the columns of line `n`, from 0. `line` may be null.
    int prefix(long n, const SrcLine* line, char* text, int size) const;

private:
    int numberWidth() const;

    bool _lineNumbers;
    bool _counts;
    bool _marks;
    int _blockWidth; // of the column of counts or marks; 0 when there is none
};
