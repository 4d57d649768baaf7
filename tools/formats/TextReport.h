// SPDX-License-Identifier: MIT
//
// A report as text: a line of column names, a line for each row with its fields separated by tabs,
// and the summary of the status bar.
#pragma once

#include "tools/formats/ReportWriter.h"
#include "tools/formats/TextStyle.h"

#include <cstddef>

class ZEMView;

class TextReport : public ReportWriter
{
public:
    explicit TextReport(const TextStyle& style);

protected:
    void write(const ReportContents& contents, std::ostream& out) override;

private:
    void writeRow(const ZEMView& row, size_t width, std::ostream& out) const;
    static void writeSum(const char* name, long covered, long blocks, std::ostream& out);

    const TextStyle _style;
};
