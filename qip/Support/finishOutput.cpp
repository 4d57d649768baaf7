// SPDX-License-Identifier: MIT
#include "qip/Support/finishOutput.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

bool finishOutput(const char* program)
{
    errno = 0;
    const bool failedBefore = !std::cout.good();
    std::cout.clear();
    std::cout.flush(); // after a failure this tries again and finds the reason again
    const bool written = std::cout.good() && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (written && !failedBefore) {
        return true;
    }
    std::cerr << program << ": cannot write the standard output: "
              << (errno == 0 ? "not all of it was taken" : std::strerror(errno)) << std::endl;
    return false;
}
