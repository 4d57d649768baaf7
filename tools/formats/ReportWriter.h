// SPDX-License-Identifier: MIT
//
// Writes a report in one format. Rows and files are written one after the other, so that memory
// does not grow with their number.
#pragma once

#include <iosfwd>

struct ReportContents;

class ReportWriter
{
public:
    ReportWriter();
    ReportWriter(const ReportWriter&) = delete;
    ReportWriter& operator=(const ReportWriter&) = delete;
    virtual ~ReportWriter();

    // Writes the whole of `contents`. False without memory: what stands in `out` then is of no use.
    // Whether `out` took the bytes, it says itself.
    [[nodiscard]] bool print(const ReportContents& contents, std::ostream& out);

protected:
    // May throw std::bad_alloc.
    virtual void write(const ReportContents& contents, std::ostream& out) = 0;
};
