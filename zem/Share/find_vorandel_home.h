// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// The directory that holds the help of `application`, as "HOME/APPLICATION/help/TOPIC.hlp", goes
// to `home`: the value of the environment variable VORANDEL when it is set, even to nothing; else
// the "share" directory of the running program (see programShare) that has such help.
// Returns whether there is one; `home` is left alone if not.
bool find_vorandel_home(const char* application, std::string& home);
