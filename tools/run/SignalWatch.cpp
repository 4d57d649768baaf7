// SPDX-License-Identifier: MIT
#include "tools/run/SignalWatch.h"

#include <cerrno>
#include <ctime>
#include <initializer_list>
#include <sys/resource.h>

namespace {

constexpr int Second = 1000;           // milliseconds
constexpr long NanoOfMilli = 1000000L; // nanoseconds

} // namespace

SignalWatch::SignalWatch()
{
    sigemptyset(&_watched);
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            sigaddset(&_watched, signal);
        }
    }
    sigaddset(&_watched, SIGCHLD);
    sigprocmask(SIG_BLOCK, &_watched, &_before);
    // Where it is ignored, the system forgets how children ended.
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &action, &_childBefore);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, &_pipeBefore);
}

int SignalWatch::wait(int milliseconds)
{
    timespec limit = {milliseconds / Second, milliseconds % Second * NanoOfMilli};
    siginfo_t info = {};
    for (;;) {
        const int signal = sigtimedwait(&_watched, &info, milliseconds < 0 ? nullptr : &limit);
        if (signal > 0) {
            _isSent = info.si_code != SI_KERNEL;
            return signal;
        }
        if (errno != EINTR) {
            return 0;
        }
    }
}

void SignalWatch::restore() const
{
    sigaction(SIGPIPE, &_pipeBefore, nullptr);
    sigaction(SIGCHLD, &_childBefore, nullptr);
    sigprocmask(SIG_SETMASK, &_before, nullptr);
}

void SignalWatch::endBy(int signal)
{
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &only, nullptr);
}
