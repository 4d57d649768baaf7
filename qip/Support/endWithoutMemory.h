// SPDX-License-Identifier: MIT
#pragma once

// From now on a lack of memory for which even an exception cannot be made, or whose exception
// nobody catches, ends the program `name` with a message and `status`, and not by a signal. Other
// reasons to terminate stay what they are. `name` is borrowed for ever. To be called at the start
// of main().
void endWithoutMemory(const char* name, int status);
