// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CountPlan.h"

#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t difference(uint32_t number)
{
    return number << 2 | 2;
}
constexpr uint32_t sum(uint32_t number)
{
    return number << 2 | 3;
}

// The counts of blocks with these counters.
std::vector<int64_t> counts(const std::vector<CoverageExpression>& expressions,
                            const std::vector<uint32_t>& blocks,
                            const std::vector<uint64_t>& counters)
{
    CoverageFunction function;
    function._expressions = expressions;
    CountPlan::Function made;
    if (!CountPlan::make(function, blocks, made)) {
        return {};
    }
    CountPlan plan;
    EXPECT_EQ(plan.add(made), 0u);
    std::vector<int64_t> result(plan.counts(), -77);
    (void)plan.evaluate(0, 1, {counters.data()}, {static_cast<uint32_t>(counters.size())},
                        result.data());
    return result;
}

using Counts = std::vector<int64_t>;

TEST(CountPlanTest, AddsAndSubtracts)
{
    const uint32_t first = counterNumber(0);
    const uint32_t second = counterNumber(1);
    EXPECT_EQ(counts({}, {0, first, second}, {5, 7}), (Counts{0, 5, 7}));
    EXPECT_EQ(counts({{first, second}}, {difference(0), sum(0)}, {9, 2}), (Counts{7, 11}));
    // An expression that needs one behind it, and one that two need.
    EXPECT_EQ(counts({{sum(1), sum(1)}, {first, second}}, {sum(0), difference(0), sum(1)}, {9, 2}),
              (Counts{22, 0, 11}));
}

TEST(CountPlanTest, CountsBelowZeroAndPastTheGreatest)
{
    const std::vector<CoverageExpression> expressions = {{counterNumber(0), counterNumber(1)}};
    EXPECT_EQ(counts(expressions, {difference(0)}, {1, 3}), (Counts{-2}));
    EXPECT_EQ(counts(expressions, {sum(0)}, {UINT64_MAX / 2, 5}), (Counts{INT64_MAX}));
    EXPECT_EQ(counts({}, {counterNumber(0)}, {UINT64_MAX - 3}), (Counts{INT64_MAX}));
}

TEST(CountPlanTest, RefusesExpressionsThatNeedThemselves)
{
    EXPECT_EQ(counts({{sum(0), 0}}, {sum(0)}, {}), Counts());
    EXPECT_EQ(counts({{sum(1), 0}, {0, difference(2)}, {sum(0), 1}}, {sum(0)}, {1}), Counts());
    // One that nobody needs does not matter.
    EXPECT_EQ(counts({{sum(0), 0}}, {counterNumber(0)}, {4}), (Counts{4}));
}

// Without a note of what was seen this takes 2 to the power of 100,000 steps, or as deep a stack.
TEST(CountPlanTest, TakesLongChainsInTheirStride)
{
    std::vector<CoverageExpression> chain(100000);
    for (uint32_t i = 0; i + 1 < chain.size(); ++i) {
        chain[i] = {difference(i + 1), difference(i + 1)};
    }
    chain.back() = {counterNumber(0), 0};
    EXPECT_EQ(counts(chain, {difference(0)}, {6}), (Counts{0}));
}

TEST(CountPlanTest, GivesZerosWhereCountersLackAndNoMemoryToTheirNumbers)
{
    CoverageFunction function;
    CountPlan::Function made;
    ASSERT_TRUE(CountPlan::make(function, {counterNumber((1u << 30) - 2), counterNumber(0)}, made));
    CountPlan plan;
    (void)plan.add(made);
    const std::vector<uint64_t> counters = {4};
    Counts result(2, -77);
    EXPECT_EQ(plan.evaluate(0, 1, {counters.data()}, {1}, result.data()), 1u);
    EXPECT_EQ(result, (Counts{0, 0}));
    EXPECT_EQ(plan.evaluate(0, 1, {nullptr}, {0}, result.data()), 0u);
}

} // namespace
