// SPDX-License-Identifier: MIT
//
// What an importer made of its inputs, as text.
#pragma once

#include "tools/import/Importer.h"

#include <map>
#include <string>
#include <utility>

struct ImportedText
{
    // Reads all with two threads; system files are kept.
    explicit ImportedText(Importer& importer);

    bool _isRead = false;
    // Of each function a line "path symbol first-last: line line...", in order.
    std::string _functions;
    // Of each run a line "name:", then "path line=count line=count..." of each file; counts of
    // blocks on one line are added up.
    std::string _runs;
    std::string _times; // of each run a line with its time
    // Of all runs together: lines that ran, lines.
    std::pair<size_t, size_t> _total;
    ImportLosses _losses;
    std::string _problems; // from the standard error stream
};
