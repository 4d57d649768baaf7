// SPDX-License-Identifier: MIT
//
// All that a report says, for the writers of its formats. Everything is borrowed.
#pragma once

#include "qip/Support/List.h"
#include "tools/formats/ShownCode.h"
#include "zem/Rows/NameLevel.h"
#include "zem/Rows/RptType.h"

#include <cstdint>
#include <vector>

class ZEMFileRecord;
class ZEMRptTable;

struct ReportFilter
{
    char _kind; // the letter of the option: F, f, o or d
    const char* _name;
};

struct ReportContents
{
    const char* _version = "";      // of the program
    int64_t _time = 0;              // of the report, seconds since the epoch
    std::vector<const char*> _logs; // that were merged, in their order
    RptType _type = RptByFile;
    int _level = SimpleNames; // a NameLevel
    bool _isLevelChosen = false;
    const char* _sortKeys = ""; // never null
    std::vector<ReportFilter> _filters;
    const ZEMRptTable* _table = nullptr;          // sorted
    const List<ZEMFileRecord*>* _files = nullptr; // with up to date hits
    const ShownCode* _shown = nullptr;
    ShownCode::Totals _merged; // of what is shown, each block once
    // The status bar's sum: each block of every file, once for each log record that has it.
    long _recordBlocks = 0;
    long _recordUntested = 0;

    // Functions as files of lines name them: with parameters, unless another level was asked for.
    int lineLevel() const { return _isLevelChosen ? _level : ModifiedNames; }
};
