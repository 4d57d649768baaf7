// SPDX-License-Identifier: MIT
//
// A program that is started, watched over and waited for. It stays in the process group and on the
// terminal that this one has, and has its standard streams.
//
// What its processes leave behind when it ends becomes a child of this program, so that it is known
// whether anything still runs.
#pragma once

#include "tools/run/Environment.h"
#include "tools/run/SignalWatch.h"

#include <string>
#include <sys/types.h>
#include <vector>

class Process
{
public:
    enum Output {
        Shared,         // this program's own
        OnStandardError // what is printed goes to the standard error stream
    };

    // Borrows `watch` for its life.
    explicit Process(SignalWatch& watch) : _watch(watch) {}

    // Gives the program these descriptors as its standard output and error stream; -1 for none. To
    // be called before start().
    void useStreams(int output, int error)
    {
        _streams[0] = output;
        _streams[1] = error;
    }

    // Starts the program `words[0]`, looked for as a shell does; `words` ends with null. Returns 0
    // or the system's reason.
    int start(char* const* words, Environment& environment, Output output);
    int start(const std::vector<std::string>& words, Environment& environment, Output output);

    // Waits for its end and for those of children that ended on the way. Signals that another
    // process sent are passed on to it; the second SIGINT kills it.
    void wait();

    // Waits for what the program left behind, `milliseconds` at most or until a signal comes.
    // Returns whether nothing is left.
    bool waitForOthers(int milliseconds);

    // How it ended: its exit status, or 128 + the signal that killed it.
    int status() const;
    // The signal that killed it, 0 for none.
    int killer() const;
    // The last signal that came while it ran, 0 for none, and how many SIGINT.
    int interrupt() const { return _interrupt; }
    int interrupts() const { return _nInterrupts; }

    // Standard streams that were closed when this program was started, and that stay so for its
    // children. To be called first in main().
    static void rememberStreams();

private:
    void reap();
    void pass(int signal);

    SignalWatch& _watch;
    int _streams[2] = {-1, -1};
    pid_t _pid = 0;
    bool _hasEnded = false;
    int _end = 0; // as waitpid() tells it
    int _interrupt = 0;
    int _nInterrupts = 0;
};
