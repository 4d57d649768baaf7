// SPDX-License-Identifier: MIT
//
// The source file that a SrcViewer shows: its lines, read when they are first drawn, and the
// coverage of each. Opening another file replaces both.
#pragma once

#include "zem/Lines/LineIndex.h"
#include "zem/Lines/SrcLineTable.h"

#include <cstdint>
#include <iosfwd>

class SrcLine;

class SrcBrowser : public LineIndex, public SrcLineTable
{
public:
    // Coverage data names lines by 16 bits.
    static constexpr long LinesWithCoverage = 65536;

    SrcBrowser();
    ~SrcBrowser() override;

    // What is known of line `n`, from 0: the sum of its hits (see SrcLine), -1 when there is no
    // such line; and the counts of its blocks, null and 0 when there is none.
    int32_t getHits(long n) const;
    const int32_t* getHitMap(long n) const;
    int32_t getHitMapSize(long n) const;

    // The entry of line `line`, from 0, or null. Those of the first LinesWithCoverage lines are
    // made when the file is opened; that of a later line when it is first asked for, which the
    // const form does not do.
    SrcLine* line(long line) override;
    const SrcLine* line(long line) const;
    long nLines() const override { return LineIndex::nLines(); }

    // Exchanges files, lines and coverage: a file can be opened aside and replace the one that is
    // shown only when that went well. Entries stay where they are in memory.
    void exchange(SrcBrowser& other) { LineIndex::exchange(other); }

protected:
    LinePage* newPage() const override;
    long firstEntries() const override { return LinesWithCoverage; }
    void saveText(TextLine& entry, char* text, int len) override;
};

// Writes the index as text, lines counted from 1.
std::ostream& operator<<(std::ostream& out, const SrcBrowser& browser);
