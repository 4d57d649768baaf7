// SPDX-License-Identifier: MIT
//
// The texts that a report shows in the window and in zem-report alike.
#pragma once

#include "zem/Rows/RptType.h"

#include <cstddef>
#include <iosfwd>
#include <string>

class RptText
{
public:
    // Per cent of `tested` in `total`, truncated towards zero; 0 when the total is 0. It divides
    // before it multiplies, in floating point: 29 of 100 gives 28. Pinned by
    // RptTextTest.PercentageTruncatesAfterDividing.
    static long percent(long tested, long total);

    // Formats " covered:uncovered (per cent%)", the text behind a bar, into `buffer` of `size`
    // bytes. Returns its length in characters.
    static int counts(long covered, long total, char* buffer, size_t size);

    // " Blocks: 3 tested, 1 untested, 75% coverage"; `untested` and `total` as the repository sums
    // them up.
    static std::string summary(long untested, long total);

    // "Report: by file, Sort keys: dF". Null keys are shown as no keys.
    static std::string header(RptType type, const char* keys);

    // Writes " *** RptArea::report: Error processing run.log: ", for the reason to follow. Takes no
    // memory: a lack of it may be the reason. Returns `out`.
    static std::ostream& beginLoadError(std::ostream& out, const char* logfile);

    // "directory", "file", "function" or "class"; "file" for any other number.
    static const char* typeWord(RptType type);
};
