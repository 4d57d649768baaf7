// SPDX-License-Identifier: MIT
//
// Any bytes as an encoded name, at every level of detail. The first level that yields a name makes
// the others yield one too: what is printed does not decide whether a name is well formed.
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "zem/Demangle/demangle.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string encoded(reinterpret_cast<const char*>(data), size);
    bool decoded = false;
    for (int mode = -1; mode <= 1; ++mode) {
        char* name = demangle_name(encoded.c_str(), mode);
        if (mode == -1) {
            decoded = name != nullptr;
        }
        // Qualifiers make a name longer, and may take it past the longest that is made.
        qipAssert(mode == 1 || decoded == (name != nullptr));
        std::free(name);
    }
    return 0;
}
