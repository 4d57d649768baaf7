// SPDX-License-Identifier: MIT
//
// A report as a JSON document: the rows, the sums, and for each file its functions and lines.
// docs/formats/report-json.md explains the schema.
#pragma once

#include "tools/formats/LineCounts.h"
#include "tools/formats/ReportWriter.h"

class ZEMFileRecord;
class ZEMFuncRecord;

class JsonReport : public ReportWriter
{
public:
    // Of the schema. It grows when a reader of the old one could go wrong.
    static constexpr int Version = 1;

protected:
    void write(const ReportContents& contents, std::ostream& out) override;

private:
    void writeFile(const ReportContents& contents, const ZEMFileRecord& file, std::ostream& out);
    void writeFunction(const ZEMFuncRecord& function, int level, std::ostream& out);
    void writeLines(std::ostream& out) const;

    LineCounts _lines; // of the file at hand
};
