// SPDX-License-Identifier: MIT
//
// The display settings of a report. The report area holds one set and hands it to the source
// viewer, which keeps a copy.
#pragma once

#include "zem/Rows/RptType.h"

class RptInfo
{
public:
    // By file, no sort keys, untested lines marked, line numbers shown; hit counts and equal bar
    // lengths off.
    RptInfo();
    // Frees the sort keys.
    virtual ~RptInfo();

    // Both take the settings and a copy of the sort keys of `other`. Assignment from settings
    // without keys keeps the keys that are there, as sortKeys() does.
    RptInfo(const RptInfo& other);
    RptInfo& operator=(const RptInfo& other);

    // The sort keys (see ZEMRptTable::compareViews), or null while none have been set. The setter
    // keeps a copy; it ignores null and the empty string, so keys can be changed but never cleared.
    const char* sortKeys() const { return _sortKeys; }
    void sortKeys(const char* keys);

    char* _sortKeys; // owned, or null
    RptType _type;
    int _showHitCounts;   // the source viewer shows the count of each line
    int _markUncovered;   // the source viewer marks lines with blocks that never ran
    int _showPercentage;  // all bars of a report have the same length
    int _showLineNumbers; // the source viewer shows the line-number column

private:
    void copyFlags(const RptInfo& other);
};
