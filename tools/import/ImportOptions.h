// SPDX-License-Identifier: MIT
//
// The options that all kinds of coverage have in common.
#pragma once

#include "tools/common/CoverageWriter.h"
#include "tools/common/FunctionName.h"
#include "tools/import/PathMap.h"
#include "tools/import/SourceFilter.h"

#include <iosfwd>
#include <string>
#include <vector>

struct ImportOptions
{
    CoverageOutput _output;
    NameStyle _names;
    SourceFilter _filter;
    PathMap _moves;               // of source files
    bool _keepsInstances = false; // of a template, apart
    bool _obeysMarkers = true;    // ExclusionMarkers.h
    std::string _badMove;         // what is behind a --map and is none
    std::vector<std::string> _inputs;

    // Takes the option at `words[0]` and what belongs to it; `words` ends with a null pointer.
    // Returns how many words it took, 0 for an option that it does not know or whose value is
    // missing.
    int take(char** words);

    // What is wrong with the options together, such as a name that no file can have; empty when
    // nothing is.
    std::string problem() const;

    // Writes a line for each option.
    static void usage(std::ostream& out);
};
