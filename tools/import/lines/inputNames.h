// SPDX-License-Identifier: MIT
//
// What the names and the first bytes of an import's inputs say.
#pragma once

#include <cstddef>
#include <string>

// The first `size` bytes of the file `path`, unpacked when it is gzipped; empty when it cannot be
// read. Does not wait, whatever `path` is.
std::string headOf(const std::string& path, size_t size);
// The same with `problem` set when it cannot be read.
std::string headOf(const std::string& path, size_t size, std::string& problem);

// What a run is called that has no name but the file's: without folder, ".gz" and what stands
// behind the last dot.
std::string stemOf(const std::string& path);
