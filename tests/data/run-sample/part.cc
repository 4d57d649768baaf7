#include "part.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

static volatile std::sig_atomic_t nSignals;

static void count(int)
{
    nSignals = nSignals + 1;
}

int leaf()
{
    return 7;
}

// A child that becomes another program, twice one behind the other.
int becomeLeaf(const char* program)
{
    for (int i = 0; i < 2; ++i) {
        if (fork() == 0) {
            execl(program, program, "leaf", nullptr);
        }
        int status = 0;
        wait(&status);
    }
    return 0;
}

// Counts the interrupts that come, at least one, until none has come for a while. Interrupts the
// process `sender` when it is ready, unless that is 0.
int waitForSignal(int sender)
{
    std::signal(SIGINT, count);
    if (sender != 0) {
        kill(sender, SIGINT);
    }
    std::puts("ready");
    std::fflush(stdout);
    const timespec while_ = {0, 300000000};
    while (nanosleep(&while_, nullptr) != 0 || nSignals == 0) {
    }
    std::printf("interrupts: %d\n", static_cast<int>(nSignals));
    return 0;
}

// Counts the interrupts that come for a while, in a process group that the terminal sends none.
int countApart()
{
    std::signal(SIGINT, count);
    setpgid(0, 0);
    std::puts("ready");
    std::fflush(stdout);
    const timespec while_ = {0, 500000000};
    nanosleep(&while_, nullptr);
    std::printf("interrupts: %d\n", static_cast<int>(nSignals));
    return 0;
}

// A process that goes on until somebody removes the file "goon".
int leaveBehind()
{
    if (fork() == 0) {
        std::fclose(stdout);
        const timespec moment = {0, 10000000};
        while (access("goon", F_OK) == 0) {
            nanosleep(&moment, nullptr);
        }
    }
    return 0;
}
