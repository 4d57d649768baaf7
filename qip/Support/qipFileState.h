// SPDX-License-Identifier: MIT
//
// The size and the times of a file when its reading began, for seeing at the end whether somebody
// wrote to it meanwhile.
//
// A file system gives all writes of a few milliseconds the same time. So a state counts only when
// the file's times lie further back than that: watch() waits until they do.
//
// Not seen: writes by mmap() to pages that were written to before, and a single call that began to
// write over the old bytes before watch() and goes on behind it. The times of another computer's
// disk are as good as that computer makes them.
#pragma once

#include <sys/stat.h>

class qipFileState
{
public:
    // Of no file.
    qipFileState();

    // Takes the state of the open file `fd`. Returns null, or why there is none, in static storage:
    // the system's reason, or that somebody keeps writing to the file. It waits a few milliseconds
    // for a file that was written to a moment ago, some seconds where the file system counts in
    // seconds, and no time for one whose times lie in the future or that has no name any more.
    const char* watch(int fd);

    // Compares the file `fd` with the state. Returns null when nobody wrote to it, otherwise what
    // happened, in static storage. That its name was taken or given to another file is no write.
    // REQUIRES: watch() returned null.
    const char* change(int fd) const;

    // Bytes of the file.
    off_t size() const { return _status.st_size; }

private:
    struct stat _status;
};
