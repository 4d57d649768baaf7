// SPDX-License-Identifier: MIT
//
// Reads which blocks touch each line from the notes and counters of a unit: the line ran when one
// of them did. gcov tells less: it gives a line the count of the blocks that end there.
#pragma once

#include "tools/compare/BuildFacts.h"
#include "tools/import/SourceFilter.h"

#include <string>

// Adds the unit with the notes `notes`. `counters` is the text of its counter file, empty when it
// never ran. Returns false when they cannot be read or do not fit together; then nothing is added.
bool addGraphFacts(const std::string& notes, const std::string& counters,
                   const SourceFilter& filter, BuildFacts& facts);
