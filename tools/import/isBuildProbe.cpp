// SPDX-License-Identifier: MIT
#include "tools/import/isBuildProbe.h"

#include <algorithm>
#include <fnmatch.h>
#include <iterator>

bool isBuildProbe(const std::string& path)
{
    static const char* const patterns[] = {"*/CMakeFiles/*/CompilerId*",
                                           "*/CMakeFiles/CMakeTmp/*",
                                           "*/CMakeFiles/CMakeScratch/*",
                                           "*/meson-private/*",
                                           "*/conftest.*",
                                           "*/.conf_check_*"};
    return std::any_of(std::begin(patterns), std::end(patterns), [&path](const char* pattern) {
        return fnmatch(pattern, path.c_str(), 0) == 0;
    });
}
