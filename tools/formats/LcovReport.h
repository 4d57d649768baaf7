// SPDX-License-Identifier: MIT
//
// A report as a tracefile, which lcov, genhtml and those that know their format read.
// docs/formats/lcov.md explains it.
#pragma once

#include "tools/formats/FunctionLabels.h"
#include "tools/formats/LcovText.h"
#include "tools/formats/LineCounts.h"
#include "tools/formats/ReportWriter.h"

#include <string>
#include <vector>

class ZEMFileRecord;
class ZEMFuncRecord;

class LcovReport : public ReportWriter
{
public:
    // Which lcov can read it. Version 1 takes the last line of a function for a part of its name,
    // so only EndLines has them.
    enum Dialect { AnyVersion, EndLines };

    // On a terminal names are visible instead of exact.
    LcovReport(Dialect dialect, bool isOnTerminal);

protected:
    void write(const ReportContents& contents, std::ostream& out) override;

private:
    struct Function
    {
        const ZEMFuncRecord* record;
        std::string label;
    };

    void collect(const ReportContents& contents, const ZEMFileRecord& file, FunctionLabels& labels);
    void writeFunctions(std::ostream& out) const;
    void writeLines(std::ostream& out) const;
    LcovText text(const char* name) const;

    const Dialect _dialect;
    const LcovText::Form _form;
    std::vector<Function> _functions; // of the file at hand
    LineCounts _lines;                // likewise
};
