#include "tools/common/WorkOn.h"

#include <gtest/gtest.h>
#include <new>

namespace {

void readWithoutMemory(const std::string& path)
{
    const WorkOn work("reading ", path);
    throw std::bad_alloc();
}

// One case: what is kept is kept for the whole program.
TEST(WorkOnTest, KeepsTheInnermostWorkOfTheFirstException)
{
    const std::string folder = "build";
    {
        const WorkOn done("importing ", folder);
    }
    EXPECT_STREQ(WorkOn::interrupted(), "");
    const std::string first = "a.gcno";
    const std::string second = "b.gcno";
    EXPECT_THROW(
        {
            const WorkOn work("importing ", folder);
            readWithoutMemory(first);
        },
        std::bad_alloc);
    EXPECT_STREQ(WorkOn::interrupted(), "reading a.gcno");
    EXPECT_THROW(readWithoutMemory(second), std::bad_alloc);
    EXPECT_STREQ(WorkOn::interrupted(), "reading a.gcno");
}

} // namespace
