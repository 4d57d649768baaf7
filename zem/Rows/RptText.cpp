// SPDX-License-Identifier: MIT
#include "zem/Rows/RptText.h"

#include "qip/Support/qipVisibleText.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

long RptText::percent(long tested, long total)
{
    return total == 0 ? 0
                      : static_cast<long>(static_cast<double>(tested) / static_cast<double>(total) *
                                          100.0);
}

int RptText::counts(long covered, long total, char* buffer, size_t size)
{
    const int length = snprintf(buffer, size, " %ld:%ld (%ld%%)", covered, total - covered,
                                percent(covered, total));
    return std::min(length, static_cast<int>(size) - 1);
}

std::string RptText::summary(long untested, long total)
{
    const long tested = total - untested;
    char text[128];
    snprintf(text, sizeof text, " Blocks: %ld tested, %ld untested, %ld%% coverage", tested,
             untested, percent(tested, total));
    return text;
}

std::string RptText::header(RptType type, const char* keys)
{
    std::string text("Report: by ");
    text += typeWord(type);
    text += ", Sort keys: ";
    text += keys == nullptr ? "" : keys;
    return text;
}

std::ostream& RptText::beginLoadError(std::ostream& out, const char* logfile)
{
    return out << " *** RptArea::report: Error processing " << qipVisibleText(logfile) << ": ";
}

const char* RptText::typeWord(RptType type)
{
    switch (type) {
    case RptByDirectory:
        return "directory";
    case RptByFunction:
        return "function";
    case RptByClass:
        return "class";
    default:
        return "file";
    }
}
