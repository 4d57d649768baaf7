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

    // The entry of line `line`, from 0, or null, also without memory.
    const FileLine* line(long line);

    // Forgets file, lines and name.
    void clear();

protected:
    LinePage* newPage() const override;
    void saveText(TextLine& entry, char* text, int len) override;
};

// Writes the index as text, lines counted from 1.
std::ostream& operator<<(std::ostream& out, const FileBrowser& browser);
