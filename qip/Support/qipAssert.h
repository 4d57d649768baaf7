// SPDX-License-Identifier: MIT
//
// Assertions that are part of the program's behaviour: they are compiled into every build, whatever
// NDEBUG says, because a broken precondition must stop the program with its condition and its
// source file on the standard error stream.
#pragma once

// Prints "FILE:LINE: FUNCTION: Assertion `CONDITION' failed." and aborts.
[[noreturn]] void qipAssertFailed(const char* condition, const char* file, unsigned line,
                                  const char* function);

// qipAssertAs: `text` stands in the message instead of the condition's own spelling. Used where the
// message is fixed to the letter, blanks included, and a formatter would change the condition.
#define qipAssertAs(condition, text)                                                               \
    ((condition) ? static_cast<void>(0) : qipAssertFailed(text, __FILE__, __LINE__, __func__))

#define qipAssert(condition) qipAssertAs(condition, #condition)
