#include "qip/Support/endWithoutMemory.h"

#include <csignal>
#include <exception>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace {

void fail(bool isOfMemory)
{
    if (isOfMemory) {
        throw std::bad_alloc();
    }
    throw std::runtime_error("something else");
}

// Promises not to throw.
void leave(bool isOfMemory) noexcept
{
    fail(isOfMemory);
}

TEST(endWithoutMemoryDeathTest, ALackOfMemoryThatNobodyCatchesEndsWithAMessage)
{
    EXPECT_EXIT(
        {
            endWithoutMemory("program", 7);
            leave(true);
        },
        ::testing::ExitedWithCode(7), "^program: out of memory; give the program more\n$");
}

TEST(endWithoutMemoryDeathTest, OtherReasonsToTerminateStayWhatTheyAre)
{
    EXPECT_EXIT(
        {
            endWithoutMemory("program", 7);
            leave(false);
        },
        ::testing::KilledBySignal(SIGABRT), "something else");
    EXPECT_EXIT(
        {
            endWithoutMemory("program", 7);
            std::terminate();
        },
        ::testing::KilledBySignal(SIGABRT), "without an active exception");
}

} // namespace
