// SPDX-License-Identifier: MIT
//
// Reads exclusion markers out of any text, and paths that a --map is made of: the first line is the
// option's value, the second a path.
#include "fuzz/fuzzTarget.h"
#include "tools/import/ExclusionMarkers.h"
#include "tools/import/PathMap.h"

#include <cstdlib>
#include <string>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    ExclusionMarkers markers;
    markers.read(text);
    // A region that does not end excludes all behind it, one that ends nothing behind the text.
    const uint32_t behind = static_cast<uint32_t>(size) + 2;
    const bool isOpen = !markers.problems().empty();
    if (markers.excludes(0) || (markers.excludes(behind) && !isOpen)) {
        std::abort();
    }
    const size_t first = text.find('\n');
    if (first != std::string::npos) {
        PathMap map;
        const bool isGood = map.add(text.substr(0, first));
        const size_t second = text.find('\n', first + 1);
        const std::string path = "/" + text.substr(first + 1, second - first - 1);
        if (!isGood && map.moved(path) != path) {
            std::abort();
        }
    }
    return 0;
}
