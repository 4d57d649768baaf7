// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

// Opens the file `path` for reading, without waiting: such a path comes from a data file or a
// command line and may name a pipe, which would hold the program until somebody writes to it.
// Returns a descriptor for the caller to close, and sets `status`; or -1 with the reason in errno.
// Only regular files and directories are opened; a read from a directory fails.
int qipOpenFile(const char* path, struct stat& status);
