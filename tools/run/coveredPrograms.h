// SPDX-License-Identifier: MIT
//
// Finds what Clang instrumented: linked programs and shared libraries with a coverage map in them.
#pragma once

#include <string>
#include <vector>

// All in `folder` and below, each once, whatever links lead to it, sorted. Files that cannot be
// read are none of them.
std::vector<std::string> coveredPrograms(const std::string& folder);
