// SPDX-License-Identifier: MIT
#include "tools/formats/TextReport.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/formats/ReportContents.h"
#include "zem/Rows/RptText.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <string>

namespace {

constexpr int64_t BarLength = 20;
constexpr size_t ColumnWidth = 11; // of numbers on a terminal, the space in front included

constexpr char Red[] = "\033[31m";
constexpr char Yellow[] = "\033[33m";
constexpr char Green[] = "\033[32m";
constexpr char Plain[] = "\033[0m";

// From how many per cent on a row is yellow or green when there is no limit.
constexpr int64_t YellowFrom = 50;
constexpr int64_t GreenFrom = 80;

// Bytes of the longest label as printed.
size_t longestLabel(const ZEMRptTable& table)
{
    size_t longest = 0;
    for (int i = 0; i < table._nItems; ++i) {
        longest = std::max(longest, qipVisibleText(table._view[i]->_label).length());
    }
    return longest;
}

// Padded to `width` bytes.
void writeLabel(const char* label, size_t width, std::ostream& out)
{
    const qipVisibleText text(label);
    out << text;
    if (width == 0) {
        return;
    }
    for (size_t length = text.length(); length < width; ++length) {
        out << ' ';
    }
}

// A field of a line behind the label: behind a tab, or right-aligned in its column. `colour` is
// null for none.
void writeField(std::ostream& out, const char* text, bool isPadded, const char* colour = nullptr)
{
    if (isPadded) {
        for (size_t length = std::strlen(text); length < ColumnWidth; ++length) {
            out << ' ';
        }
    } else {
        out << '\t';
    }
    if (colour != nullptr) {
        out << colour << text << Plain;
    } else {
        out << text;
    }
}

void writeField(std::ostream& out, long number, bool isPadded)
{
    char digits[24];
    std::snprintf(digits, sizeof digits, "%ld", number);
    writeField(out, digits, isPadded);
}

const char* colourOf(const ZEMView& row, const Percent* limit)
{
    const int64_t blocks = row._totBlk;
    const int64_t covered = row._covBlk;
    if (limit != nullptr) {
        return limit->isAbove(covered, blocks) ? Red : Green;
    }
    if (covered * 100 < blocks * YellowFrom) {
        return Red;
    }
    return covered * 100 < blocks * GreenFrom ? Yellow : Green;
}

void writeBar(const ZEMView& row, std::ostream& out)
{
    const int64_t blocks = row._totBlk;
    const int64_t covered = std::clamp<int64_t>(row._covBlk, 0, std::max<int64_t>(blocks, 0));
    const int64_t filled = blocks <= 0 ? 0 : covered * BarLength / blocks;
    out << "  [";
    for (int64_t i = 0; i < BarLength; ++i) {
        out << (i < filled ? '#' : '-');
    }
    out << ']';
}

} // namespace

TextReport::TextReport(const TextStyle& style) : _style(style) {}

void TextReport::write(const ReportContents& contents, std::ostream& out)
{
    // Before anything is printed: it is the only thing here that takes memory.
    const std::string summary = RptText::summary(contents._recordUntested, contents._recordBlocks);
    const ZEMRptTable& table = *contents._table;
    const size_t width = _style._isPadded ? longestLabel(table) : 0;
    writeLabel(RptText::typeWord(contents._type), width, out);
    for (const char* column : {"covered", "uncovered", "per cent", "hits"}) {
        writeField(out, column, _style._isPadded);
    }
    out << '\n';
    for (int i = 0; i < table._nItems; ++i) {
        writeRow(*table._view[i], width, out);
    }
    out << summary << '\n';
    if (_style._namesTotals) {
        writeSum("Merged, each block once", static_cast<long>(contents._merged.covered),
                 static_cast<long>(contents._merged.blocks), out);
        writeSum("Sum over log records, as above and in the status bar",
                 contents._recordBlocks - contents._recordUntested, contents._recordBlocks, out);
    }
}

void TextReport::writeRow(const ZEMView& row, size_t width, std::ostream& out) const
{
    const long covered = row._covBlk;
    const long blocks = row._totBlk;
    writeLabel(row._label, width, out);
    writeField(out, covered, _style._isPadded);
    writeField(out, blocks - covered, _style._isPadded);
    char percent[24];
    std::snprintf(percent, sizeof percent, "%ld%%", RptText::percent(covered, blocks));
    writeField(out, percent, _style._isPadded,
               _style._hasColours ? colourOf(row, _style._limit) : nullptr);
    writeField(out, row._hits, _style._isPadded);
    if (_style._hasBars) {
        writeBar(row, out);
    }
    out << '\n';
}

void TextReport::writeSum(const char* name, long covered, long blocks, std::ostream& out)
{
    out << ' ' << name << ": " << covered << " tested, " << blocks - covered << " untested, ";
    Percent::write(out, covered, blocks);
    out << "%\n";
}
