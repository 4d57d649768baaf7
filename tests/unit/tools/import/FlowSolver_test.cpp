// SPDX-License-Identifier: MIT
#include "tools/import/gcc/FlowSolver.h"

#include <gtest/gtest.h>

namespace {

constexpr int64_t OnTree = -1;

struct Arc
{
    uint32_t from;
    uint32_t to;
    int64_t count; // OnTree: to be found
};

class FlowSolverTest : public ::testing::Test
{
protected:
    bool solve(uint32_t nBlocks, const std::vector<Arc>& arcs)
    {
        _function._nBlocks = nBlocks;
        for (const Arc& each : arcs) {
            GcnoArc arc = {};
            arc._from = each.from;
            arc._to = each.to;
            arc._flags = each.count == OnTree ? GcnoArc::OnTree : 0;
            arc._count = each.count == OnTree ? 0 : each.count;
            _function._arcs.push_back(arc);
        }
        return solveFlow(_function, _counts);
    }

    GcnoFunction _function;
    std::vector<int64_t> _counts;
};

using Counts = std::vector<int64_t>;

TEST_F(FlowSolverTest, BranchIsTheRestOfItsBlock)
{
    EXPECT_TRUE(solve(
        6,
        {{0, 2, 10}, {2, 3, 4}, {2, 4, OnTree}, {3, 5, OnTree}, {4, 5, OnTree}, {5, 1, OnTree}}));
    EXPECT_EQ(_counts, (Counts{10, 10, 10, 4, 6, 10}));
    EXPECT_EQ(_function._arcs[2]._count, 6);
}

// Notes of clang++: with the arc from the exit to the entry all flow is there, and a block that
// nothing leads to never ran.
TEST_F(FlowSolverTest, ClosedGraphLeavesNoBlockOpen)
{
    const std::vector<Arc> open = {
        {0, 2, OnTree}, {2, 1, 7}, {2, 3, 2}, {3, 1, OnTree}, {4, 1, OnTree}};
    EXPECT_FALSE(solve(5, open));
    _function = GcnoFunction();
    EXPECT_TRUE(solve(
        5, {{0, 2, OnTree}, {2, 1, 7}, {2, 3, 2}, {3, 1, OnTree}, {4, 1, OnTree}, {1, 0, OnTree}}));
    EXPECT_EQ(_counts, (Counts{9, 9, 9, 2, 0}));
}

TEST_F(FlowSolverTest, LoopCountsItsTurns)
{
    EXPECT_TRUE(solve(5, {{0, 2, OnTree}, {2, 3, 30}, {3, 2, OnTree}, {2, 4, OnTree}, {4, 1, 2}}));
    EXPECT_EQ(_counts, (Counts{2, 2, 32, 30, 2}));
}

TEST_F(FlowSolverTest, CallThatDoesNotReturnLeavesTheBlockEarly)
{
    EXPECT_TRUE(solve(4, {{0, 2, 7}, {2, 3, 5}, {2, 1, OnTree}, {3, 1, OnTree}}));
    EXPECT_EQ(_counts, (Counts{7, 7, 7, 5}));
    EXPECT_EQ(_function._arcs[2]._count, 2);
}

TEST_F(FlowSolverTest, BlockWithoutArcsNeverRan)
{
    EXPECT_TRUE(solve(4, {{0, 2, 7}, {2, 1, OnTree}}));
    EXPECT_EQ(_counts, (Counts{7, 7, 7, 0}));
}

TEST_F(FlowSolverTest, WhatIsNotDeterminedIsZeroAndTold)
{
    EXPECT_FALSE(
        solve(5, {{0, 2, 7}, {2, 3, OnTree}, {2, 4, OnTree}, {3, 1, OnTree}, {4, 1, OnTree}}));
    EXPECT_EQ(_counts[2], 7);
    EXPECT_EQ(_counts[3], 0);
    EXPECT_EQ(_counts[4], 0);
}

TEST_F(FlowSolverTest, ContradictingCountersGiveNegativeNumbersWithoutOverflow)
{
    EXPECT_TRUE(solve(5, {{0, 2, 3}, {2, 3, 10}, {2, 4, OnTree}, {3, 1, OnTree}, {4, 1, OnTree}}));
    EXPECT_EQ(_counts[4], -7);
    _function = GcnoFunction();
    (void)solve(
        4,
        {{0, 2, INT64_MAX}, {0, 2, INT64_MAX}, {2, 3, INT64_MIN}, {2, 1, OnTree}, {3, 1, OnTree}});
}

TEST_F(FlowSolverTest, GraphsOfAnyShapeEnd)
{
    EXPECT_TRUE(solve(0, {}));
    (void)solve(1, {{0, 0, OnTree}});
    _function = GcnoFunction();
    (void)solve(2, {{1, 0, OnTree}, {0, 1, OnTree}});
    _function = GcnoFunction();
    (void)solve(3, {{2, 2, OnTree}, {0, 2, 1}, {2, 1, OnTree}, {2, 2, 4}});
}

TEST_F(FlowSolverTest, LongChainIsSolvedFromItsEnd)
{
    constexpr uint32_t nBlocks = 200000;
    std::vector<Arc> arcs = {{0, 2, OnTree}};
    for (uint32_t block = 2; block + 1 < nBlocks; ++block) {
        arcs.push_back({block, block + 1, OnTree});
    }
    arcs.push_back({nBlocks - 1, 1, 5});
    EXPECT_TRUE(solve(nBlocks, arcs));
    EXPECT_EQ(_counts, Counts(nBlocks, 5));
}

} // namespace
