// SPDX-License-Identifier: MIT
//
// A text file that is shown line by line: one scan notes where each line starts, and a line's text
// is read when it is first asked for and kept. Base of SrcBrowser and FileBrowser, whose entries
// have what they need beside the text. Entries come in pages, made when the first line of the page
// is asked for: a line that nobody has asked for costs the 8 bytes of its start.
//
// Life cycle: closed > open() > getLine(), any number of times > close() or open() of another file.
//
// The file may change, shrink or vanish while it is shown: a line is then what is found at its old
// place, cut to the room that the index foresaw.
#pragma once

#include "zem/Lines/LineStarts.h"

#include <cstdio>
#include <memory>
#include <vector>

class LinePage;
class TextLine;

class LineIndex
{
public:
    // Longest file, in bytes, and most lines that are indexed. A larger file is not opened: the
    // window would stand still while it is scanned, and coverage names no line past the 65535th.
    static constexpr long LargestFile = 64L * 1024 * 1024;
    static constexpr long MostLines = 8000000;
    // Characters of one line that are kept; the rest of a longer line is not shown.
    static constexpr int LongestText = 64 * 1024 * 1024;

    LineIndex();
    // Closes the file and frees the entries.
    virtual ~LineIndex();
    LineIndex(const LineIndex&) = delete;
    LineIndex& operator=(const LineIndex&) = delete;

    // Closes the file that is open, forgets its lines, and opens and scans `path`, of which it
    // keeps a copy. Returns 0, or -1 for a null or empty path, a file that cannot be opened, is no
    // regular file (a device or a pipe could hang the reader) or is too large, and whenever scan()
    // fails.
    [[nodiscard]] virtual int open(const char* path);

    // Closes the stream if one is open. The lines that have been read stay.
    void close();

    // Builds the index from the stream's position on. Returns 0, or -1 without an open file,
    // without memory, or with more than MostLines lines; there are no lines then.
    [[nodiscard]] int scan();

    // The text of line `line`, from 0, with tabs expanded to columns of 8 and without its newline;
    // every other byte as it is, zeros too. `len` becomes its length. Owned by the index, valid
    // until another file is opened. Null and 0 when there is no such line, or it cannot be read.
    const char* getLine(long line, int& len);

    // Where line `line`, from 0, starts, in bytes from the start of the file, and how many tabs it
    // has. REQUIRES: there is such a line.
    long offset(long line) const { return _starts.offset(static_cast<size_t>(line)); }
    int tabs(long line) const;

    // Memory that the starts of the lines take, in bytes.
    size_t indexBytes() const { return _starts.bytes(); }

    // Whether the last open() failed because the file has more bytes or lines than are indexed.
    bool tooLarge() const { return _tooLarge; }

    // Bytes of files that this object has read so far: the cost of open() and getLine().
    long long bytesRead() const { return _bytesRead; }

    const char* filename() const { return _filename; } // null before open()
    long nLines() const { return _nLines; }
    // The longest line in bytes as stored, its newline included, tabs not expanded. A last line
    // without a newline does not count.
    long maxLineSz() const { return _maxLineSz; }

protected:
    // A new page of entries; null without memory. The index takes it.
    virtual LinePage* newPage() const = 0;
    // How many lines, from the first, have their entries made by scan(), which fails without memory
    // for them.
    virtual long firstEntries() const { return 0; }
    // Keeps `text`, from malloc(), in an entry of a page that newPage() made.
    virtual void saveText(TextLine& entry, char* text, int len) = 0;

    // The entry of line `line`, from 0, made now if it has to be; null when there is no such line,
    // and without memory.
    TextLine* entry(long line);
    // The same for an entry that is there; null when it is not.
    TextLine* knownEntry(long line) const;

    // Exchanges files, lines and entries, which stay where they are in memory.
    void exchange(LineIndex& other);

    FILE* _fp;       // null when closed
    char* _filename; // owned
    long _nLines;
    long _maxLineSz;

private:
    class Scanner;

    void forget();
    int makeFirstEntries();
    void place(long first, LinePage& page) const;
    bool openFile();
    int scanStream(Scanner& scanner);
    long rawSize(long line);
    int readText(long line, char* text, int room);

    LineStarts _starts;
    std::vector<std::unique_ptr<LinePage>> _pages; // null where no line has been asked for
    bool _tooLarge;
    long long _bytesRead;
};
