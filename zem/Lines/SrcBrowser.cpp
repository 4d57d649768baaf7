// SPDX-License-Identifier: MIT
#include "zem/Lines/SrcBrowser.h"

#include "qip/Support/qipVisibleText.h"
#include "zem/Lines/SrcLine.h"

#include <new>
#include <ostream>
#include <utility>

SrcBrowser::SrcBrowser() : _lines(nullptr) {}

SrcBrowser::~SrcBrowser()
{
    delete[] _lines;
}

int SrcBrowser::makeEntries(long n)
{
    delete[] _lines;
    _lines = new (std::nothrow) SrcLine[static_cast<size_t>(n)];
    return _lines == nullptr ? -1 : 0;
}

void SrcBrowser::dropEntries()
{
    delete[] _lines;
    _lines = nullptr;
}

TextLine& SrcBrowser::entry(long line)
{
    return _lines[line];
}

void SrcBrowser::saveText(long line, char* text, int len)
{
    _lines[line].saveSourceLine(text, len);
}

SrcLine* SrcBrowser::line(long line)
{
    return line < 0 || line >= _nLines ? nullptr : &_lines[line];
}

const SrcLine* SrcBrowser::line(long line) const
{
    return line < 0 || line >= _nLines ? nullptr : &_lines[line];
}

int32_t SrcBrowser::getHits(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? -1 : wanted->_hits;
}

const int32_t* SrcBrowser::getHitMap(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? nullptr : wanted->_hitMap;
}

int32_t SrcBrowser::getHitMapSize(long n) const
{
    const SrcLine* wanted = line(n);
    return wanted == nullptr ? 0 : wanted->_nBlocks;
}

void SrcBrowser::exchange(SrcBrowser& other)
{
    LineIndex::exchange(other);
    std::swap(_lines, other._lines);
}

std::ostream& operator<<(std::ostream& out, const SrcBrowser& browser)
{
    out << " Line info dump for file " << qipVisibleText(browser.filename()) << '\n';
    for (long i = 0; i < browser.nLines(); ++i) {
        const SrcLine& line = *browser.line(i);
        out << "    Line " << i + 1 << ":   offset=" << line._offset << " blocks=" << line._nBlocks
            << " hits=" << line._hits << " tabs=" << line._tabs << " len=" << line._len << '\n';
    }
    return out;
}
