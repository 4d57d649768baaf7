// SPDX-License-Identifier: MIT
#include "tools/report/ReportLimits.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/formats/Percent.h"
#include "tools/formats/ReportContents.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <iostream>

namespace {

constexpr int MostNamed = 10;

} // namespace

ReportLimits::ReportLimits(const Percent* whole, const Percent* row) : _whole(whole), _row(row) {}

bool ReportLimits::isWholeUnder(const ReportContents& contents) const
{
    if (_whole == nullptr) {
        return false;
    }
    const ShownCode::Totals& merged = contents._merged;
    // Of nothing a part is taken for 0 of 1.
    if (!_whole->isAbove(merged.covered, merged.blocks == 0 ? 1 : merged.blocks)) {
        return false;
    }
    std::cerr << "zem-report: " << merged.covered << " of " << merged.blocks
              << " merged blocks ran, ";
    Percent::write(std::cerr, merged.covered, merged.blocks);
    std::cerr << "%, which is under " << _whole->text() << '%' << std::endl;
    return true;
}

bool ReportLimits::isARowUnder(const ReportContents& contents) const
{
    if (_row == nullptr) {
        return false;
    }
    const ZEMRptTable& table = *contents._table;
    int nUnder = 0;
    for (int i = 0; i < table._nItems; ++i) {
        nUnder += _row->isAbove(table._view[i]->_covBlk, table._view[i]->_totBlk) ? 1 : 0;
    }
    if (nUnder == 0) {
        return false;
    }
    std::cerr << "zem-report: " << nUnder << " of " << table._nItems << " rows are under "
              << _row->text() << "%:\n";
    int nNamed = 0;
    for (int i = 0; i < table._nItems && nNamed < MostNamed; ++i) {
        const ZEMView& row = *table._view[i];
        if (_row->isAbove(row._covBlk, row._totBlk)) {
            ++nNamed;
            std::cerr << "  " << qipVisibleText(row._label) << ' ';
            Percent::write(std::cerr, row._covBlk, row._totBlk);
            std::cerr << "%\n";
        }
    }
    if (nUnder > nNamed) {
        std::cerr << "  and " << nUnder - nNamed << " more\n";
    }
    std::cerr << std::flush;
    return true;
}
