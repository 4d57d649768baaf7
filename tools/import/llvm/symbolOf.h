// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// The symbol in a name of Clang's coverage, which has the name of the main file before that of a
// local function ("main.cc:_ZL4halfi", ";" since some versions) and a number behind one that was
// made unique.
std::string symbolOf(std::string_view name);
