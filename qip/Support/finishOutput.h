// SPDX-License-Identifier: MIT
#pragma once

// Sends what was printed on the standard output on its way. Returns true; false, with a message
// that names `program`, when some of it could not be written: the disk is full, or the output is
// closed. A program that printed anything asks before it says that all went well.
bool finishOutput(const char* program);
