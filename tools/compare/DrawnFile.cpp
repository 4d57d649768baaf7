// SPDX-License-Identifier: MIT
#include "tools/compare/DrawnFile.h"

#include "qip/Support/ListIterator.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Lines/SrcCoverage.h"
#include "zem/Lines/SrcLine.h"

bool DrawnFile::open(const ZEMFileRecord& record)
{
    if (_browser.open(record._filename) != 0) {
        return false;
    }
    SrcCoverage coverage(_browser);
    if (coverage.load(record) != 0) {
        return false;
    }
    findRunBlocks(record);
    return true;
}

// Marks where blocks begin and end, then sums up: the cost does not grow with their length.
void DrawnFile::findRunBlocks(const ZEMFileRecord& record)
{
    constexpr size_t PastLastLine = UINT16_MAX + 2;
    std::vector<int> changes(PastLastLine);
    ListIterator<ZEMFuncRecord*> functions(record._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        for (uint32_t i = 0; i < function->_nBlocks; ++i) {
            const ZEMBlkRecord& block = function->_blockMap[i];
            if (block._nHits > 0 && block._startLine > 0 && block._startLine < block._stopLine) {
                ++changes[block._startLine + 1];
                --changes[block._stopLine + 1];
            }
        }
    }
    _isInsideRun.assign(PastLastLine, false);
    int depth = 0;
    for (size_t line = 0; line < PastLastLine; ++line) {
        depth += changes[line];
        _isInsideRun[line] = depth > 0;
    }
}

bool DrawnFile::isRed(uint32_t line) const
{
    const SrcLine* entry = _browser.line(static_cast<long>(line) - 1);
    return entry != nullptr && entry->untested();
}

bool DrawnFile::hasMark(uint32_t line) const
{
    const SrcLine* entry = _browser.line(static_cast<long>(line) - 1);
    return entry != nullptr && entry->_hits >= 0;
}

bool DrawnFile::isInsideRun(uint32_t line) const
{
    return line < _isInsideRun.size() && _isInsideRun[line];
}

std::string DrawnFile::marks(uint32_t line) const
{
    const SrcLine* entry = _browser.line(static_cast<long>(line) - 1);
    std::string result;
    for (int32_t i = 0; entry != nullptr && entry->_hitMap != nullptr && i < entry->_nBlocks; ++i) {
        const int32_t hits = entry->_hitMap[i];
        result += (i > 0 ? "/" : "") + std::to_string(hits);
    }
    return result.empty() ? "." : result;
}

std::string DrawnFile::text(uint32_t line)
{
    int length = 0;
    const char* text = _browser.getLine(static_cast<long>(line) - 1, length);
    return text == nullptr ? std::string() : std::string(text, static_cast<size_t>(length));
}
