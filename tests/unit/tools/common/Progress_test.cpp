// SPDX-License-Identifier: MIT
#include "tools/common/Progress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

// What `nItems` steps print where the standard error stream is a terminal.
std::string shownOnTerminal(size_t nItems)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        ADD_FAILURE() << "no terminal";
        return "";
    }
    const int other = open(ptsname(terminal), O_RDWR | O_NOCTTY);
    const int stream = dup(STDERR_FILENO);
    dup2(other, STDERR_FILENO);
    {
        Progress progress("Reading", nItems);
        for (size_t i = 0; i < nItems; ++i) {
            progress.step();
        }
    }
    dup2(stream, STDERR_FILENO);
    close(stream);
    // A terminal hands on what was written bit by bit: up to a mark behind it.
    std::string text;
    char c = '\0';
    if (write(other, "#", 1) == 1) {
        while (read(terminal, &c, 1) == 1 && c != '#') {
            text += c;
        }
    }
    close(other);
    close(terminal);
    return text;
}

TEST(ProgressTest, CountsInOneLineAndWipesIt)
{
    EXPECT_EQ(shownOnTerminal(1), "\rReading: 1 of 1\r\033[K");
    EXPECT_EQ(shownOnTerminal(2), "\rReading: 1 of 2\rReading: 2 of 2\r\033[K");
    EXPECT_EQ(shownOnTerminal(0), "");
}

TEST(ProgressTest, LineIsWrittenAgainOnlyWhenThePercentChange)
{
    const std::string text = shownOnTerminal(250);
    EXPECT_EQ(std::count(text.begin(), text.end(), ':'), 101); // 0 to 100
}

TEST(ProgressTest, NothingIsShownInAFile)
{
    testing::internal::CaptureStderr();
    {
        Progress progress("Reading", 1);
        progress.step();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
