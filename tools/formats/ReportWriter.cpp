// SPDX-License-Identifier: MIT
#include "tools/formats/ReportWriter.h"

#include <new>

ReportWriter::ReportWriter() = default;

ReportWriter::~ReportWriter() = default;

bool ReportWriter::print(const ReportContents& contents, std::ostream& out)
{
    try {
        write(contents, out);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}
