// SPDX-License-Identifier: MIT
//
// What a signal that ends the program takes along: temporary folders (TemporaryFolder.h) and the
// programs that were started to fill them (ToolRun.h). A thread waits for the signal, because a
// signal handler may do next to nothing.
#pragma once

#include <spawn.h>
#include <string>
#include <sys/types.h>

namespace CleanEnd {

// Has SIGHUP, SIGINT, SIGQUIT and SIGTERM wait for that thread, which cleans up and lets the signal
// end the program. One that is ignored stays so. To be called once, before there are other threads;
// where it was not, signals end the program as ever.
void start();

// Makes a folder of its own for this user and remembers it. `pattern` ends in XXXXXX and becomes
// its path. Returns false where the system refuses.
bool makeFolder(std::string& pattern);
// Puts a symbolic link into such a folder. Returns false where the system refuses.
bool makeLink(const std::string& target, const std::string& path);
// Removes the folder with all that is in it.
void removeFolder(const std::string& path);

// Starts the program `words[0]`, found as the shell does, and remembers it; `words` ends with null.
// It has the signals that this program was started with. Returns 0 or the system's reason.
int startProgram(pid_t& child, char* const* words, const posix_spawn_file_actions_t& actions);
// Waits for its end. Returns its status as waitpid() tells it.
int waitForProgram(pid_t child);

} // namespace CleanEnd
