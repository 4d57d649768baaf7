// SPDX-License-Identifier: MIT
#include "tools/common/standardStreams.h"

#include "tests/support/StdErr.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Closes the three streams in a process of its own. Returns what went wrong there, 0 for nothing.
int guardClosedStreams()
{
    const pid_t pid = fork();
    if (pid == 0) {
        for (int fd = 0; fd < 3; ++fd) {
            close(fd);
        }
        guardStandardStreams();
        char byte = 'x';
        if (open("/dev/null", O_RDWR) < 3) {
            _exit(1); // a data file would be written into
        }
        if (write(STDOUT_FILENO, &byte, 1) >= 0 || write(STDERR_FILENO, &byte, 1) >= 0) {
            _exit(2);
        }
        _exit(read(STDIN_FILENO, &byte, 1) >= 0 ? 3 : 0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(pid, &status, 0), pid);
    return WEXITSTATUS(status);
}

TEST(StandardStreamsTest, ClosedOnesAreNotTakenByDataFilesAndFail)
{
    EXPECT_EQ(guardClosedStreams(), 0);
}

TEST(StandardStreamsTest, OpenOnesAreLeftAlone)
{
    guardStandardStreams();
    EXPECT_EQ(fcntl(STDOUT_FILENO, F_GETFL) & O_ACCMODE,
              fcntl(dup(STDOUT_FILENO), F_GETFL) & O_ACCMODE);
    std::cout << "text\n";
    EXPECT_TRUE(finishStandardOutput("name"));
}

TEST(StandardStreamsTest, TextThatDidNotArriveIsTold)
{
    const int out = dup(STDOUT_FILENO);
    const int full = open("/dev/full", O_WRONLY);
    dup2(full, STDOUT_FILENO);
    StdErr err; // flushes
    std::cout << "text";
    const bool isFinished = finishStandardOutput("name");
    const std::string message = err.text();
    dup2(out, STDOUT_FILENO);
    std::cout.clear();
    clearerr(stdout);
    EXPECT_FALSE(isFinished);
    EXPECT_EQ(message, "name: cannot write to the standard output: No space left on device\n");
}

} // namespace
