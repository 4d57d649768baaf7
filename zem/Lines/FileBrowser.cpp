// SPDX-License-Identifier: MIT
#include "zem/Lines/FileBrowser.h"

#include "zem/Lines/FileLine.h"

#include <cstring>
#include <new>
#include <ostream>
#include <string_view>

FileBrowser::FileBrowser() : _lines(nullptr) {}

FileBrowser::~FileBrowser()
{
    delete[] _lines;
}

int FileBrowser::makeEntries(long n)
{
    delete[] _lines;
    _lines = new (std::nothrow) FileLine[static_cast<size_t>(n)];
    return _lines == nullptr ? -1 : 0;
}

void FileBrowser::dropEntries()
{
    delete[] _lines;
    _lines = nullptr;
}

TextLine& FileBrowser::entry(long line)
{
    return _lines[line];
}

void FileBrowser::saveText(long line, char* text, int len)
{
    _lines[line].saveFileLine(text, len);
}

const FileLine* FileBrowser::line(long line) const
{
    return line < 0 || line >= _nLines ? nullptr : &_lines[line];
}

long FileBrowser::search(const char* text)
{
    if (text == nullptr || text[0] == '\0') {
        return -1;
    }
    for (long i = 0; i < _nLines; ++i) {
        int len = 0;
        const char* found = getLine(i, len);
        const std::string_view line(found == nullptr ? "" : found, static_cast<size_t>(len));
        if (line.find(text) != std::string_view::npos) {
            return i;
        }
    }
    return -1;
}

void FileBrowser::clear()
{
    FileBrowser empty;
    LineIndex::exchange(empty);
    dropEntries();
}

std::ostream& operator<<(std::ostream& out, const FileBrowser& browser)
{
    out << " Line info dump for file " << (browser.filename() == nullptr ? "" : browser.filename())
        << '\n';
    for (long i = 0; i < browser.nLines(); ++i) {
        out << "    Line " << i + 1 << ":   offset=" << browser.line(i)->_offset << '\n';
    }
    return out;
}
