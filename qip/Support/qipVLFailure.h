// SPDX-License-Identifier: MIT
//
// Why and where the reading of a record file failed, for people. The codes that the operations
// return say less: a payload for which there is no memory, or that the disk does not give, is "file
// corrupt" to them.
#pragma once

#include <cstdint>
#include <iosfwd>

class qipVLFailure
{
public:
    // No failure.
    qipVLFailure();

    // What a person can do about it, as the end of a sentence. Static storage.
    const char* advice() const;

    int _cause;          // a code of qipVLRecFile; 0 when nothing failed
    bool _isChanging;    // somebody writes to the file
    const char* _reason; // in other words, such as the system's; static storage, or null
    long _record;        // from 1; 0 when it was in the headers or before
    int64_t _offset;     // of the record, bytes from the start of the file
};

// Writes the cause, the reason and the place: "fopen failed: No such file or directory", "file
// corrupt (record 3 at byte 4711)". No newline. Takes no memory.
std::ostream& operator<<(std::ostream& out, const qipVLFailure& failure);
