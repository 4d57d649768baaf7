// SPDX-License-Identifier: MIT
//
// What reports show of a name that a map stores.
#pragma once

#include "zem/Demangle/demangle.h"

#include <cstdlib>
#include <string>

// The name of a function, as the decoder's `mode` writes it; as stored when there is nothing to
// decode.
inline std::string reportedName(const std::string& stored, int mode)
{
    char* text = demangle_name(stored.c_str(), mode);
    std::string result = text != nullptr ? text : stored;
    std::free(text);
    return result;
}

// Its class, or nothing.
inline std::string reportedClass(const std::string& stored)
{
    const size_t colon = stored.rfind(':');
    return colon == std::string::npos || colon == 0 ? "" : stored.substr(0, colon - 1);
}
