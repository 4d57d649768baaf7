// SPDX-License-Identifier: MIT
#include "zem/Demangle/demangle.h"

#include "zem/Demangle/Decoder.h"
#include "zem/Demangle/growString.h"

#include <algorithm>

// Set by nobody here: marks decoded names for a caller that mixes them with others.
int indicate_cplusplus = 0;

char* demangle_name(const char* encoded, int mode)
{
    using namespace Demangle;
    if (encoded == nullptr || encoded[0] == '\0') {
        return nullptr;
    }
    mode = std::clamp<int>(mode, DemangleName, DemangleModifiers);
    string name;
    if (!Decoder(encoded, mode).decode(name)) {
        return nullptr;
    }
    if (mode == DemangleName && indicate_cplusplus != 0) {
        string_append(name, " (C++)");
    }
    string_appendn(name, "", 1); // the zero at the end
    char* result = name.b;
    string_init(name); // the caller has the buffer
    return result;
}
