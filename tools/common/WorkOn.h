// SPDX-License-Identifier: MIT
//
// What a part of the program is at work on, so that the message for memory that could not be had
// can say it: an exception has no room for that.
//
//     const WorkOn work("reading ", path); // borrows both
//
// The innermost one that an exception leaves is kept, of the first exception in the whole program.
#pragma once

#include <string>

class WorkOn
{
public:
    // `thing` may be empty.
    WorkOn(const char* what, const std::string& thing);
    // An exception that passes by leaves its words in interrupted().
    ~WorkOn();
    WorkOn(const WorkOn&) = delete;
    WorkOn& operator=(const WorkOn&) = delete;

    // Such as "reading a.gcno", at most a few thousand bytes; empty when nothing was interrupted.
    // Static storage. Not to be called while threads work.
    static const char* interrupted();

private:
    const char* _what;
    const std::string& _thing;
    int _exceptions; // on their way when the work began
};
