// SPDX-License-Identifier: MIT
#include "qip/Support/asksFor.h"

#include <cstring>

bool asksFor(const char* option, int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0 || std::strcmp(argv[i], "-") == 0) {
            return false;
        }
        if (std::strcmp(argv[i], option) == 0) {
            return true;
        }
    }
    return false;
}
