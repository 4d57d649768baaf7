// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace {

const char checkDocs[] = ZEM_SOURCE_DIR "/script/check-docs";

TEST(SecurityPageTest, EveryTestThatItNamesIsThere)
{
    const ProgramResult result = runProgram({checkDocs});
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST(SecurityPageTest, APromiseWithoutItsTestIsFound)
{
    const TempDir dir;
    const std::string page =
        TempDir::read(ZEM_SOURCE_DIR "/docs/SECURITY.md") + "(`SecurityPageTest.NobodyWroteIt`)\n";
    const ProgramResult result = runProgram({checkDocs, dir.write("page.md", page)});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("SecurityPageTest.NobodyWroteIt"), std::string::npos) << result.err;
}

} // namespace
