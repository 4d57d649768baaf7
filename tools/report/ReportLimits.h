// SPDX-License-Identifier: MIT
//
// Whether enough of the code ran.
#pragma once

class Percent;
struct ReportContents;

class ReportLimits
{
public:
    // The limits are borrowed; null for none.
    ReportLimits(const Percent* whole, const Percent* row);

    // Whether less of all merged blocks ran than the limit says, also when there are none: nothing
    // was measured. Prints a message on the standard error stream then.
    bool isWholeUnder(const ReportContents& contents) const;

    // Whether less of the blocks of a row ran. Prints a message that names the first of such rows.
    // A row without blocks has nothing that could run.
    bool isARowUnder(const ReportContents& contents) const;

private:
    const Percent* _whole;
    const Percent* _row;
};
