// SPDX-License-Identifier: MIT
#include "tools/formats/makeReportWriter.h"

#include "tools/formats/CoberturaReport.h"
#include "tools/formats/CsvReport.h"
#include "tools/formats/JsonReport.h"
#include "tools/formats/LcovReport.h"
#include "tools/formats/TextReport.h"

#include <cstring>
#include <new>

const char reportFormats[] = "text, csv, json, lcov, lcov2, cobertura";

namespace {

struct Format
{
    const char* name;
    ReportWriter* (*make)(const TextStyle& style);
};

const Format formats[] = {
    {"text",
     [](const TextStyle& style) -> ReportWriter* {
         return new (std::nothrow) TextReport(style);
     }},
    {"csv",
     [](const TextStyle&) -> ReportWriter* {
         return new (std::nothrow) CsvReport;
     }},
    {"json",
     [](const TextStyle&) -> ReportWriter* {
         return new (std::nothrow) JsonReport;
     }},
    {"lcov",
     [](const TextStyle& style) -> ReportWriter* {
         return new (std::nothrow) LcovReport(LcovReport::AnyVersion, style._isOnTerminal);
     }},
    {"lcov2",
     [](const TextStyle& style) -> ReportWriter* {
         return new (std::nothrow) LcovReport(LcovReport::EndLines, style._isOnTerminal);
     }},
    {"cobertura",
     [](const TextStyle&) -> ReportWriter* {
         return new (std::nothrow) CoberturaReport;
     }},
};

const Format* find(const char* name)
{
    for (const Format& format : formats) {
        if (std::strcmp(format.name, name) == 0) {
            return &format;
        }
    }
    return nullptr;
}

} // namespace

std::unique_ptr<ReportWriter> makeReportWriter(const char* name, const TextStyle& style)
{
    const Format* format = find(name);
    return std::unique_ptr<ReportWriter>(format == nullptr ? nullptr : format->make(style));
}

bool isReportFormat(const char* name)
{
    return find(name) != nullptr;
}
