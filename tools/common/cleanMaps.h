// SPDX-License-Identifier: MIT
//
// Maps are named after their content and stay as long as a log may need them. This takes away those
// that no log needs any more.
#pragma once

#include <string>
#include <vector>

struct CleanedMaps
{
    std::vector<std::string> _removed; // names of files
    size_t _kept = 0;                  // maps that a log names
    std::string _problem;              // why nothing, or no more, was removed
};

// Removes the maps in `folder` (files *.map that begin as a map does) that no log there names, and
// what dead imports left. A log names a map by the last part of its path, so that a folder that was
// moved loses nothing. Logs are known by how they begin, whatever their names. Waits for imports
// that write into the folder.
// Returns false, with a problem: the folder or a file in it, which may be a log, cannot be read,
// and nothing was removed; or a map cannot be removed.
[[nodiscard]] bool cleanMaps(const std::string& folder, CleanedMaps& result);
