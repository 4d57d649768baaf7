// SPDX-License-Identifier: MIT
//
// Reads the lines and functions that gcov prints as JSON, one document on one line for each unit.
#pragma once

#include "tools/compare/BuildFacts.h"
#include "tools/import/SourceFilter.h"

#include <string>

// Adds what `json` says about the source files that `filter` keeps. A line or function that stands
// there several times (an instance of a template each time) is added up. Returns false when the
// text is not gcov's; what was read before that point stays.
bool addGcovFacts(const std::string& json, const SourceFilter& filter, BuildFacts& facts);
