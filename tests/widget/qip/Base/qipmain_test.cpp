#include "tests/support/gtest_x.h"

#include "tests/support/Program.h"
#include "tests/support/XServer.h"

#include <csignal>

namespace {

TEST(qipmainTest, ProgramWithoutAnApplicationAbortsAndSaysWhy)
{
    const ProgramResult result = runProgram({ENTRY_WITHOUT_APPLICATION});
    EXPECT_EQ(result.status, 128 + SIGABRT);
    EXPECT_THAT(result.err, ::testing::HasSubstr("qip/Base/qipmain.cpp"));
    EXPECT_THAT(result.err, ::testing::HasSubstr("Assertion `theApplication != 0' failed"));
}

// Before the toolkit is there, so that no display is needed.
TEST(qipmainTest, ALoneTerminatorPrintsTheDefaultUsage)
{
    unsetenv("DISPLAY");
    const ProgramResult result = runProgram({ENTRY_WITH_APPLICATION, "--"});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, "generic\n"
                          "    Usage:\n"
                          "\n"
                          "            This is the default qipApplication::usage() method\n"
                          "            You need to write your own!\n");
}

TEST(qipmainTest, WithoutADisplayTheToolkitEndsTheProgram)
{
    unsetenv("DISPLAY");
    const ProgramResult result = runProgram({ENTRY_WITH_APPLICATION, "-df"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, ::testing::HasSubstr("Can't open display"));
}

} // namespace
