#include "qip/Support/qipAssert.h"

#include <gtest/gtest.h>

namespace {

TEST(qipAssertDeathTest, NamesConditionAndFileWhateverNdebugSays)
{
    const int base = 0;
    EXPECT_DEATH(
        qipAssert(base != 0),
        "tests/unit/qip/Support/qipAssert_test.cpp:[0-9]+: .*Assertion `base != 0' failed");
}

TEST(qipAssertDeathTest, TextReplacesTheCondition)
{
    EXPECT_DEATH(qipAssertAs(false, "_base != (Widget) 0"),
                 "Assertion `_base != \\(Widget\\) 0' failed");
}

TEST(qipAssertTest, TrueConditionIsEvaluatedOnce)
{
    int n = 0;
    qipAssert(++n == 1);
    EXPECT_EQ(n, 1);
}

} // namespace
