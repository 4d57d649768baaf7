// SPDX-License-Identifier: MIT
//
// What an importer says of one run of a build.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ImportedRun
{
    // Empty: the log has the name of the import. Else what the user knows the run by, any text; the
    // log's name is made of it (RunNames.h).
    std::string _name;
    uint32_t _executionTime = 0;  // seconds since the epoch, 0 when it is not known
    std::vector<int64_t> _counts; // ImportedBuild::_nCounts; negative ones come from damaged counts
};
