// SPDX-License-Identifier: MIT
#include "tools/formats/LcovReport.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "tools/formats/ReportContents.h"
#include "tools/formats/functionRuns.h"
#include "tools/formats/writeNumber.h"
#include "zem/Data/ZEMFileRecord.h"

#include <ostream>

namespace {

// A line of two numbers or a number and a name.
void writeNumbered(std::ostream& out, const char* tag, int64_t number)
{
    out << tag << ':';
    writeNumber(out, number);
}

} // namespace

LcovReport::LcovReport(Dialect dialect, bool isOnTerminal)
    : _dialect(dialect), _form(isOnTerminal ? LcovText::Visible : LcovText::Exact)
{}

LcovText LcovReport::text(const char* name) const
{
    return LcovText(name, _form);
}

void LcovReport::write(const ReportContents& contents, std::ostream& out)
{
    FunctionLabels labels(contents.lineLevel());
    ListIterator<ZEMFileRecord*> files(*contents._files);
    while (const ZEMFileRecord* file = files.next()) {
        if (!contents._shown->shows(*file)) {
            continue;
        }
        collect(contents, *file, labels);
        out << "TN:\nSF:" << text(file->_filename) << '\n';
        writeFunctions(out);
        writeLines(out);
        out << "end_of_record\n";
    }
}

// Fills `_functions` and `_lines` with what is shown of a file.
void LcovReport::collect(const ReportContents& contents, const ZEMFileRecord& file,
                         FunctionLabels& labels)
{
    _functions.clear();
    _lines.clear();
    labels.clear();
    ListIterator<ZEMFuncRecord*> functions(file._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        if (contents._shown->shows(*function)) {
            _functions.push_back({function, labels.label(*function)});
            _lines.add(function->_blockMap, function->_nBlocks);
        }
    }
    _lines.finish();
}

void LcovReport::writeFunctions(std::ostream& out) const
{
    for (const Function& function : _functions) {
        const ZEMFuncRecord& record = *function.record;
        writeNumbered(out, "FN", record._startLine);
        if (_dialect == EndLines && record._endLine >= record._startLine) {
            out.put(',');
            writeNumber(out, record._endLine);
        }
        out << ',' << text(function.label.c_str()) << '\n';
    }
    int64_t run = 0;
    for (const Function& function : _functions) {
        const int64_t runs = functionRuns(*function.record);
        run += runs != 0 ? 1 : 0;
        writeNumbered(out, "FNDA", runs);
        out << ',' << text(function.label.c_str()) << '\n';
    }
    writeNumbered(out, "FNF", static_cast<int64_t>(_functions.size()));
    writeNumbered(out, "\nFNH", run);
    out << '\n';
}

void LcovReport::writeLines(std::ostream& out) const
{
    for (const LineCounts::Line& line : _lines.lines()) {
        writeNumbered(out, "DA", line.number);
        out.put(',');
        writeNumber(out, line.hits);
        out.put('\n');
    }
    writeNumbered(out, "LF", _lines.found());
    writeNumbered(out, "\nLH", _lines.run());
    out << '\n';
}
