// SPDX-License-Identifier: MIT
#include "qip/Support/standardStreams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

void guardStandardStreams()
{
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(fd, F_GETFD) < 0 && errno == EBADF) {
            // The lowest free number is this one. Opened the wrong way round, so that use fails.
            (void)open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

bool finishStandardOutput(const char* name)
{
    const bool hasFailed = !std::cout;
    errno = 0;
    std::cout.clear();
    std::cout.flush(); // after a failure this tries again and meets the reason again
    const bool isFlushed = std::fflush(stdout) == 0;
    if (!hasFailed && std::cout && isFlushed && std::ferror(stdout) == 0) {
        return true;
    }
    std::cerr << name << ": cannot write to the standard output";
    if (errno != 0) {
        std::cerr << ": " << std::strerror(errno);
    }
    std::cerr << '\n';
    return false;
}
