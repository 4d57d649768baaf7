// SPDX-License-Identifier: MIT
#include "tools/formats/JsonReport.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "tools/formats/JsonText.h"
#include "tools/formats/Percent.h"
#include "tools/formats/ReportContents.h"
#include "tools/formats/RowPlace.h"
#include "tools/formats/functionRuns.h"
#include "tools/formats/shownName.h"
#include "tools/formats/writeNumber.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/RptText.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <ostream>

namespace {

constexpr int LinesInARow = 8;

// A comma and a new line before each element but the first.
class Separator
{
public:
    explicit Separator(const char* indent) : _indent(indent), _isFirst(true) {}

    void write(std::ostream& out)
    {
        out << (_isFirst ? "\n" : ",\n") << _indent;
        _isFirst = false;
    }
    bool isFirst() const { return _isFirst; }

private:
    const char* _indent;
    bool _isFirst;
};

const char* levelWord(int level)
{
    switch (level) {
    case StoredNames:
        return "stored";
    case ExtendedNames:
        return "extended";
    case ModifiedNames:
        return "modifiers";
    default:
        return "simple";
    }
}

const char* filterWord(char kind)
{
    switch (kind) {
    case 'd':
        return RptText::typeWord(RptByDirectory);
    case 'f':
        return RptText::typeWord(RptByFunction);
    case 'o':
        return RptText::typeWord(RptByClass);
    default:
        return RptText::typeWord(RptByFile);
    }
}

void writeMember(std::ostream& out, const char* name, int64_t number)
{
    out << ", \"" << name << "\": ";
    writeNumber(out, number);
}

// Without the braces around it.
void writeCounts(std::ostream& out, int64_t covered, int64_t blocks)
{
    out << "\"covered\": ";
    writeNumber(out, covered);
    writeMember(out, "uncovered", blocks - covered);
    out << ", \"percent\": ";
    Percent::write(out, covered, blocks);
}

void writeSettings(const ReportContents& contents, std::ostream& out)
{
    out << "  \"report\": {\"by\": \"" << RptText::typeWord(contents._type) << "\", \"names\": \""
        << levelWord(contents._level) << "\", \"sortKeys\": " << JsonText(contents._sortKeys)
        << ", \"filters\": [";
    Separator separator("    ");
    for (const ReportFilter& filter : contents._filters) {
        separator.write(out);
        out << "{\"kind\": \"" << filterWord(filter._kind)
            << "\", \"name\": " << JsonText(filter._name) << '}';
    }
    out << (separator.isFirst() ? "]},\n" : "\n  ]},\n");
}

void writeLogs(const ReportContents& contents, std::ostream& out)
{
    out << "  \"logs\": [";
    Separator separator("    ");
    for (const char* log : contents._logs) {
        separator.write(out);
        out << JsonText(log);
    }
    out << (separator.isFirst() ? "],\n" : "\n  ],\n");
}

void writeTotals(const ReportContents& contents, std::ostream& out)
{
    out << "  \"totals\": {\n    \"merged\": {";
    writeCounts(out, contents._merged.covered, contents._merged.blocks);
    writeMember(out, "hits", contents._merged.hits);
    out << "},\n    \"logRecords\": {";
    writeCounts(out, contents._recordBlocks - contents._recordUntested, contents._recordBlocks);
    out << "}\n  },\n";
}

void writeRow(const ZEMView& row, RptType type, std::ostream& out)
{
    out << "{\"name\": " << JsonText(row._label);
    const RowPlace place(row, type);
    if (row._owner != nullptr) {
        out << ", \"file\": " << JsonText(place.path());
    }
    if (place.line() != 0) {
        writeMember(out, "line", place.line());
    }
    out << ", ";
    writeCounts(out, row._covBlk, row._totBlk);
    writeMember(out, "hits", row._hits);
    out << '}';
}

void writeRows(const ReportContents& contents, std::ostream& out)
{
    out << "  \"rows\": [";
    Separator separator("    ");
    for (int i = 0; i < contents._table->_nItems; ++i) {
        separator.write(out);
        writeRow(*contents._table->_view[i], contents._type, out);
    }
    out << (separator.isFirst() ? "],\n" : "\n  ],\n");
}

} // namespace

void JsonReport::write(const ReportContents& contents, std::ostream& out)
{
    out << "{\n  \"format\": \"zem-report\",\n  \"version\": " << Version
        << ",\n  \"program\": " << JsonText(contents._version) << ",\n";
    writeSettings(contents, out);
    writeLogs(contents, out);
    writeTotals(contents, out);
    writeRows(contents, out);
    out << "  \"files\": [";
    Separator separator("    ");
    ListIterator<ZEMFileRecord*> files(*contents._files);
    while (const ZEMFileRecord* file = files.next()) {
        if (contents._shown->shows(*file)) {
            separator.write(out);
            writeFile(contents, *file, out);
        }
    }
    out << (separator.isFirst() ? "]\n}\n" : "\n  ]\n}\n");
}

void JsonReport::writeFile(const ReportContents& contents, const ZEMFileRecord& file,
                           std::ostream& out)
{
    const ShownCode::Totals totals = contents._shown->totals(file);
    out << "{\"path\": " << JsonText(file._filename) << ", ";
    writeCounts(out, totals.covered, totals.blocks);
    writeMember(out, "hits", totals.hits);
    out << ",\n     \"functions\": [";
    _lines.clear();
    Separator separator("       ");
    ListIterator<ZEMFuncRecord*> functions(file._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        if (contents._shown->shows(*function)) {
            separator.write(out);
            writeFunction(*function, contents._level, out);
            _lines.add(function->_blockMap, function->_nBlocks);
        }
    }
    _lines.finish();
    out << (separator.isFirst() ? "],\n" : "\n     ],\n");
    out << "     \"linesFound\": ";
    writeNumber(out, _lines.found());
    writeMember(out, "linesRun", _lines.run());
    out << ", \"lines\": [";
    writeLines(out);
    out << "]}";
}

void JsonReport::writeFunction(const ZEMFuncRecord& function, int level, std::ostream& out)
{
    const char* stored = orEmpty(function._funcname);
    int64_t covered = 0;
    int64_t hits = 0;
    for (uint32_t i = 0; i < function._nBlocks; ++i) {
        covered += function._blockMap[i]._nHits != 0 ? 1 : 0;
        hits += function._blockMap[i]._nHits;
    }
    out << "{\"name\": " << JsonText(shownName(stored, level).c_str())
        << ", \"stored\": " << JsonText(stored);
    writeMember(out, "start", function._startLine);
    writeMember(out, "end", function._endLine);
    writeMember(out, "runs", functionRuns(function));
    out << ", ";
    writeCounts(out, covered, function._nBlocks);
    writeMember(out, "hits", hits);
    out << '}';
}

void JsonReport::writeLines(std::ostream& out) const
{
    int inRow = 0;
    bool isFirst = true;
    for (const LineCounts::Line& line : _lines.lines()) {
        out << (isFirst ? "\n       [" : inRow == 0 ? ",\n       [" : ", [");
        writeNumber(out, line.number);
        out << ", ";
        writeNumber(out, line.hits);
        out << ']';
        isFirst = false;
        inRow = (inRow + 1) % LinesInARow;
    }
}
