// SPDX-License-Identifier: MIT
//
// Holds back the signals that would end the program, so that it can bring its work to an end: they
// are waited for, not handled. One that was ignored when the program was started stays ignored.
// There is one object in a program.
#pragma once

#include <csignal>

class SignalWatch
{
public:
    // Holds back SIGINT, SIGQUIT, SIGTERM and SIGHUP, waits for the end of children by SIGCHLD, and
    // ignores SIGPIPE: a message that nobody reads must not keep folders from being removed.
    SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    // Waits for one of these signals, `milliseconds` at most, for ever when that is negative.
    // Returns its number, 0 when none came.
    int wait(int milliseconds);

    // Whether the last signal was sent to this process by another. One that the terminal sent has
    // reached the whole group, the command included.
    bool isSent() const { return _isSent; }

    // Gives a new process what this one was started with. To be called between fork() and exec().
    void restore() const;

    // Ends the program by this signal, without a core file. Returns only when that fails.
    static void endBy(int signal);

private:
    sigset_t _watched = {};
    sigset_t _before = {};
    struct sigaction _pipeBefore = {};
    struct sigaction _childBefore = {};
    bool _isSent = false;
};
