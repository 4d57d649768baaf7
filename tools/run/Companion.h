// SPDX-License-Identifier: MIT
//
// The programs that belong together: where this one is, and where the others are.
#pragma once

#include <string>

// The path of the running program; empty when the system does not tell.
std::string ownPath();

// The program `name` as it can be started: beside this one, else by its name alone, which is looked
// for on the PATH.
std::string companion(const std::string& name);
