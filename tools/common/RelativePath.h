// SPDX-License-Identifier: MIT
//
// Makes absolute paths relative to the current folder, for data files that travel with their
// sources.
#pragma once

#include <string>
#include <vector>

class RelativePath
{
public:
    // Takes the current folder, also as the shell knows it: that may lead there over a link.
    RelativePath();

    // `path` seen from the current folder. A path that shares no folder with it stays as it is.
    // The result has a slash ("./a.cc"), so that it has a folder in the reports.
    std::string of(const std::string& path) const;

private:
    std::vector<std::string> _folders; // names of the current folder
};
