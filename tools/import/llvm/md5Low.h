// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// What Clang's coverage knows a name or a list of files by: the first 8 bytes of its MD5 digest as
// a little-endian number. "f" has 0xcc914f75dd4ca18f.
uint64_t md5Low(const char* bytes, size_t size);
