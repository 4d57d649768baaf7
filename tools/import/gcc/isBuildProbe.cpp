// SPDX-License-Identifier: MIT
#include "tools/import/gcc/isBuildProbe.h"

#include <algorithm>
#include <fnmatch.h>
#include <iterator>

bool isBuildProbe(const std::string& notes)
{
    static const char* const patterns[] = {"*/CMakeFiles/*/CompilerId*",
                                           "*/CMakeFiles/CMakeTmp/*",
                                           "*/CMakeFiles/CMakeScratch/*",
                                           "*/meson-private/*",
                                           "*/conftest.*",
                                           "*/.conf_check_*"};
    return std::any_of(std::begin(patterns), std::end(patterns), [&notes](const char* pattern) {
        return fnmatch(pattern, notes.c_str(), 0) == 0;
    });
}
