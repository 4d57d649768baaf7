// SPDX-License-Identifier: MIT
//
// The source file that a SrcViewer shows: its lines, read when they are first drawn, and the
// coverage of each. Opening another file replaces both.
#pragma once

#include "zem/Lines/LineIndex.h"

#include <cstdint>
#include <iosfwd>

class SrcLine;

class SrcBrowser : public LineIndex
{
public:
    SrcBrowser();
    ~SrcBrowser() override;

    // What is known of line `n`, from 0: the sum of its hits (see SrcLine), -1 when there is no
    // such line; and the counts of its blocks, null and 0 when there is none.
    int32_t getHits(long n) const;
    const int32_t* getHitMap(long n) const;
    int32_t getHitMapSize(long n) const;

    // The entry of line `line`, from 0, or null.
    SrcLine* line(long line);
    const SrcLine* line(long line) const;

    // Exchanges files, lines and coverage: a file can be opened aside and replace the one that is
    // shown only when that went well. Entries stay where they are in memory.
    void exchange(SrcBrowser& other);

protected:
    int makeEntries(long n) override;
    void dropEntries() override;
    TextLine& entry(long line) override;
    void saveText(long line, char* text, int len) override;

private:
    SrcLine* _lines; // owned, `_nLines` of them
};

// Writes the index as text, lines counted from 1.
std::ostream& operator<<(std::ostream& out, const SrcBrowser& browser);
