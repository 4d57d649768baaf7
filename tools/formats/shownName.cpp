// SPDX-License-Identifier: MIT
#include "tools/formats/shownName.h"

#include "zem/Demangle/demangle.h"
#include "zem/Rows/NameLevel.h"

#include <cstdlib>
#include <memory>

std::string shownName(const char* stored, int level)
{
    if (level == StoredNames) {
        return stored;
    }
    const std::unique_ptr<char, decltype(&std::free)> readable(
        demangle_name(stored, level - SimpleNames + DemangleName), std::free);
    return readable ? readable.get() : stored;
}
