// SPDX-License-Identifier: MIT
#include "tools/common/shellWord.h"

#include <gtest/gtest.h>

namespace {

TEST(ShellWordTest, AShellReadsAWordAsItIs)
{
    EXPECT_EQ(shellWord("cov/a-b.log"), "cov/a-b.log");
    EXPECT_EQ(shellWord("two words"), "'two words'");
    EXPECT_EQ(shellWord("it's"), "'it'\\''s'");
    EXPECT_EQ(shellWord("a;b"), "'a;b'");
    EXPECT_EQ(shellWord("J\u00fcrgen"), "J\u00fcrgen");
    EXPECT_EQ(shellWord(""), "''");
}

} // namespace
