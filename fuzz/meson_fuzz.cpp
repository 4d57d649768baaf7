// SPDX-License-Identifier: MIT
//
// What "meson introspect" prints, and the table that is made of it: any bytes for either.
#include "tools/run/mesonNames.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    char program[] = "/b/prog";
    char word[] = "1";
    char* const words[] = {program, word, nullptr};
    (void)mesonName(mesonNames(text), words);
    (void)mesonName(text, words);
    return 0;
}
