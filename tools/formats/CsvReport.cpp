// SPDX-License-Identifier: MIT
#include "tools/formats/CsvReport.h"

#include "tools/formats/CsvText.h"
#include "tools/formats/Percent.h"
#include "tools/formats/ReportContents.h"
#include "tools/formats/RowPlace.h"
#include "tools/formats/writeNumber.h"
#include "zem/Rows/RptText.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <ostream>

namespace {

constexpr char LineEnd[] = "\r\n";

// The columns behind the names.
void writeCounts(std::ostream& out, int64_t covered, int64_t blocks)
{
    out.put(',');
    writeNumber(out, covered);
    out.put(',');
    writeNumber(out, blocks - covered);
    out.put(',');
    Percent::write(out, covered, blocks);
    out.put(',');
}

void writeRow(std::ostream& out, const ZEMView& row, RptType type)
{
    const RowPlace place(row, type);
    out << RptText::typeWord(type) << ',' << CsvText(row._label) << ',' << CsvText(place.path());
    out.put(',');
    if (place.line() != 0) {
        writeNumber(out, place.line());
    }
    writeCounts(out, row._covBlk, row._totBlk);
    writeNumber(out, row._hits);
    out << LineEnd;
}

} // namespace

void CsvReport::write(const ReportContents& contents, std::ostream& out)
{
    out << "kind,name,file,line,covered,uncovered,per cent,hits" << LineEnd;
    for (int i = 0; i < contents._table->_nItems; ++i) {
        writeRow(out, *contents._table->_view[i], contents._type);
    }
    out << "sum,merged blocks,,";
    writeCounts(out, contents._merged.covered, contents._merged.blocks);
    writeNumber(out, contents._merged.hits);
    out << LineEnd << "sum,log records,,";
    writeCounts(out, contents._recordBlocks - contents._recordUntested, contents._recordBlocks);
    out << LineEnd;
}
