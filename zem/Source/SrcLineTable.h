// SPDX-License-Identifier: MIT
//
// The lines that SrcCoverage puts coverage on. SrcBrowser has those of a source file.
#pragma once

class SrcLine;

class SrcLineTable
{
public:
    virtual ~SrcLineTable() = default;

    // The entry of line `line`, from 0, or null when there is no such line. Owned by the table.
    virtual SrcLine* line(long line) = 0;
    virtual long nLines() const = 0;
};
