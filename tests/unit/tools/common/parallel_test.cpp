// SPDX-License-Identifier: MIT
#include "tools/common/parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace {

class CountingJob : public ParallelJob
{
public:
    explicit CountingJob(size_t nItems) : _calls(nItems) {}
    void run(size_t item) override { ++_calls[item]; }

    std::vector<std::atomic<int>> _calls;
};

class FailingJob : public ParallelJob
{
public:
    void run(size_t item) override
    {
        if (item == 3) {
            throw std::runtime_error("item 3");
        }
    }
};

TEST(ParallelTest, RunsEachItemOnce)
{
    for (const unsigned int threads : {0u, 1u, 2u, 7u}) {
        CountingJob job(100);
        runParallel(job, 100, threads);
        for (const std::atomic<int>& calls : job._calls) {
            EXPECT_EQ(calls, 1);
        }
    }
}

TEST(ParallelTest, NothingToDoReturns)
{
    CountingJob job(0);
    runParallel(job, 0, 4);
}

TEST(ParallelTest, ProblemOfAnItemComesOut)
{
    FailingJob job;
    EXPECT_THROW(runParallel(job, 50, 4), std::runtime_error);
}

TEST(ParallelTest, ThereIsAtLeastOneCore)
{
    EXPECT_GE(coreCount(), 1u);
}

} // namespace
