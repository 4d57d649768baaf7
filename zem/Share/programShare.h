// SPDX-License-Identifier: MIT
//
// Where the data files of the running program are. They stand below a directory "share": beside
// the directory of the installed program, or at the root of the build tree that the program or a
// test was built in. Both are found by going up from the program.
#pragma once

#include <string>

// The first directory "share", going up from the one that holds `program`, in which `entry` exists;
// the empty text when there is none, also for a null or relative `program`. `entry` is relative to
// "share".
std::string programShare(const char* program, const char* entry);

// The same for the running program.
std::string programShare(const char* entry);

// The file of default resources, which a program that is not installed under the system's prefix
// must read by itself (see qipApplication::addDefaults); the empty text when there is none.
std::string programDefaults(const char* application);
