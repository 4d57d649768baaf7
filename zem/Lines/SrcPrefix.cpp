// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcPrefix.h"

#include "zem/Lines/SrcLine.h"
#include "zem/Rows/RptInfo.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr char NumberTitle[] = " Line #  ";
constexpr char BlockTitle[] = "Hits";
constexpr int NumberWidth = sizeof NumberTitle - 1;
constexpr int BlockTitleWidth = sizeof BlockTitle - 1;
constexpr int BlockMargin = 3;

// A line of text of limited length: what does not fit is dropped, so that the cost of a line with
// very many blocks depends on what is seen of it.
class Writer
{
public:
    Writer(char* text, int size) : _text(text), _size(size), _used(0) {}

    bool full() const { return _used >= _size; }
    int used() const { return _used; }

    void put(char c)
    {
        if (!full()) {
            _text[_used++] = c;
        }
    }
    void put(const char* s)
    {
        for (; *s != '\0' && !full(); ++s) {
            put(*s);
        }
    }
    void padTo(int column)
    {
        while (_used < column && !full()) {
            put(' ');
        }
    }

private:
    char* _text;
    int _size;
    int _used;
};

void putCounts(Writer& out, const SrcLine& line)
{
    char number[16];
    for (int32_t i = 0; i < line._nBlocks && !out.full(); ++i) {
        snprintf(number, sizeof number, "%d", static_cast<int>(line._hitMap[i]));
        out.put(i == 0 ? ' ' : '/');
        out.put(number);
    }
}

// A line inside a block that never ran has no block of its own and gets the mark of one that did.
void putMarks(Writer& out, const SrcLine& line)
{
    out.put(' ');
    for (int32_t i = 0; i < line._nBlocks && !out.full(); ++i) {
        out.put(line._hitMap[i] == 0 ? '!' : '.');
    }
    out.put(' ');
}

} // namespace

SrcPrefix::SrcPrefix(const RptInfo& info, int hitDetailWidth, int maxBlocksOnLine)
    : _lineNumbers(info._showLineNumbers != 0), _counts(info._showHitCounts != 0),
      _marks(!_counts && info._markUncovered != 0), _blockWidth(0)
{
    if (_counts) {
        _blockWidth = hitDetailWidth + BlockMargin;
    } else if (_marks) {
        _blockWidth = maxBlocksOnLine + BlockMargin;
    }
}

int SrcPrefix::numberWidth() const
{
    return _lineNumbers ? NumberWidth : 0;
}

int SrcPrefix::header(const char* filename, char* text, int size) const
{
    Writer out(text, size);
    if (_lineNumbers) {
        out.put(NumberTitle);
    }
    if (_blockWidth > 0) {
        out.padTo(numberWidth() + (_blockWidth - BlockTitleWidth) / 2 + 1);
        out.put(BlockTitle);
    }
    out.padTo(textColumn());
    out.put(filename);
    return out.used();
}

int SrcPrefix::prefix(long n, const SrcLine* line, char* text, int size) const
{
    Writer out(text, size);
    if (_lineNumbers) {
        char number[32];
        snprintf(number, sizeof number, "%7ld  ", n + 1);
        out.put(number);
    }
    if (line != nullptr && line->_hitMap != nullptr) {
        if (_counts) {
            putCounts(out, *line);
        } else if (_marks) {
            putMarks(out, *line);
        }
    }
    return out.used();
}
