// SPDX-License-Identifier: MIT
//
// Which code a report is about. The filters for files and functions count in every report, those
// for directories and classes in the report by directory or class: there they hide code from the
// rows. Code that has no row only because it lies in no directory or class is shown code all the
// same.
#pragma once

#include "qip/Support/List.h"
#include "zem/Rows/NameFilter.h"
#include "zem/Rows/RowMaker.h"
#include "zem/Rows/RptType.h"

#include <cstdint>

class ZEMFileRecord;
class ZEMFuncRecord;

class ShownCode
{
public:
    // Blocks, each counted once with what all logs say of it.
    struct Totals
    {
        int64_t blocks = 0;
        int64_t covered = 0;
        int64_t hits = 0;
    };

    // The filters are borrowed and must not change while this lives.
    ShownCode(RptType type, const RowMaker::Filters& shown);
    ShownCode(const ShownCode&) = delete;
    ShownCode& operator=(const ShownCode&) = delete;

    bool shows(const ZEMFileRecord& file) const;
    // Of a file that is shown.
    bool shows(const ZEMFuncRecord& function) const;

    // The sums over what is shown of one file, and of all.
    Totals totals(const ZEMFileRecord& file) const;
    Totals totals(const List<ZEMFileRecord*>& files) const;

private:
    const List<char*> _none;
    const NameFilter _files;
    const NameFilter _functions;
    const NameFilter _classes;
    const NameFilter _directories;
};
