// SPDX-License-Identifier: MIT
//
// The file that a FileViewer shows, its lines read when they are first drawn.
#pragma once

#include "zem/Lines/LineIndex.h"

#include <iosfwd>

class FileLine;

class FileBrowser : public LineIndex
{
public:
    FileBrowser();
    ~FileBrowser() override;

    // The first line, from 0, that contains `text` (the same bytes, tabs of the file expanded), or
    // -1 when there is none and for a null or empty text. Reads the lines up to there.
    long search(const char* text);

    // The entry of line `line`, from 0, or null.
    const FileLine* line(long line) const;

    // Forgets file, lines and name.
    void clear();

protected:
    int makeEntries(long n) override;
    void dropEntries() override;
    TextLine& entry(long line) override;
    void saveText(long line, char* text, int len) override;

private:
    FileLine* _lines; // owned, `_nLines` of them
};

// Writes the index as text, lines counted from 1.
std::ostream& operator<<(std::ostream& out, const FileBrowser& browser);
