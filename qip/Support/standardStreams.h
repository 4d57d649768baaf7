// SPDX-License-Identifier: MIT
//
// The three streams that every program gets: what to do when it does not get them.
#pragma once

// Puts something into the place of each standard stream that is closed, so that no data file gets
// its number and is written into by messages. What is written there fails. To be called first in
// main().
void guardStandardStreams();

// Whether all that was printed on the standard output has arrived; false with a message of the
// program `name` when it has not. To be called last.
[[nodiscard]] bool finishStandardOutput(const char* name);
