// SPDX-License-Identifier: MIT
//
// The formats by name.
#pragma once

#include "tools/formats/ReportWriter.h"

#include <memory>

struct TextStyle;

// What a user can choose from, for messages: "text, csv, ...".
extern const char reportFormats[];

// The writer of the format `name`; of `style` the others than
// text heed whether they go to a terminal. Null when there is no such format,
// and without memory. isReportFormat() tells which.
std::unique_ptr<ReportWriter> makeReportWriter(const char* name, const TextStyle& style);
bool isReportFormat(const char* name);
