// SPDX-License-Identifier: MIT
//
// What to do about a log that could not be merged.
#pragma once

#include <iosfwd>

class qipVLFailure;

// Writes advice for somebody who gave `log`, as the end of a sentence. `map` is the map file in
// which the reading failed, "" when it was the log itself. Takes no memory that is not given back.
void writeLoadAdvice(std::ostream& out, const char* log, const char* map,
                     const qipVLFailure& failure);
