// SPDX-License-Identifier: MIT
//
// The rows of a report as comma-separated values (RFC 4180), with a header line. The last two lines
// are the sums.
// docs/formats/report-csv.md explains the columns.
#pragma once

#include "tools/formats/ReportWriter.h"

class CsvReport : public ReportWriter
{
protected:
    void write(const ReportContents& contents, std::ostream& out) override;
};
