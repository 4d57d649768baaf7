// SPDX-License-Identifier: MIT
//
// Tells a program's units from those that only try the compiler.
#pragma once

#include <string>

// Whether `path` is where build systems compile programs to try the compiler: those of
// CMake, Meson, and configure scripts.
bool isBuildProbe(const std::string& path);
