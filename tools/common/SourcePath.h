// SPDX-License-Identifier: MIT
//
// Paths as the data files keep them: absolute, so that the viewer finds them from anywhere.
#pragma once

#include <cstdint>
#include <string>

// `path` seen from the folder `base`, without "." and ".." steps. Symbolic links stay as they are.
// A relative `base` counts from the current folder.
std::string absolutePath(const std::string& base, const std::string& path);

// The time of last change in seconds since the epoch, 0 when there is no such file.
uint32_t modificationTime(const std::string& path);
