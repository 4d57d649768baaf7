#include "part.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

static void sendOneBack(int)
{
    std::signal(SIGINT, SIG_IGN);
    kill(getppid(), SIGINT);
}

int main(int argc, char** argv)
{
    const char* what = argc > 1 ? argv[1] : "";
    if (std::strcmp(what, "leaf") == 0) {
        return leaf();
    }
    if (std::strcmp(what, "chain") == 0) {
        return becomeLeaf(argv[0]);
    }
    if (std::strcmp(what, "abort") == 0) {
        std::abort();
    }
    if (std::strcmp(what, "wait") == 0) {
        return waitForSignal(0);
    }
    if (std::strcmp(what, "apart") == 0) {
        return countApart();
    }
    if (std::strcmp(what, "behind") == 0) {
        return leaveBehind();
    }
    if (std::strcmp(what, "interrupted") == 0) { // what the parent is sent comes back
        return waitForSignal(getppid());
    }
    if (std::strcmp(what, "stubborn") == 0) { // and is sent again: only a kill ends this
        std::signal(SIGINT, sendOneBack);
        kill(getppid(), SIGINT);
        for (;;) {
            pause();
        }
    }
    if (std::strcmp(what, "orphan") == 0) {
        kill(getppid(), SIGKILL);
        _exit(0);
    }
    for (int i = 1; i < argc; ++i) {
        std::puts(argv[i]);
    }
    return 0;
}
