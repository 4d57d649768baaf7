// SPDX-License-Identifier: MIT
#include "tools/common/countRun.h"

#include "tests/unit/tools/common/CovSampleTest.h"
#include "tools/common/finishCoverage.h"

#include <gtest/gtest.h>

namespace {

using Counts = std::vector<uint32_t>;

class CountRunTest : public CovSampleTest
{
protected:
    std::vector<Counts> count()
    {
        CoverageCounts result;
        countRun(_model, _counts, result, _losses, 2);
        return result._files;
    }
};

TEST_F(CountRunTest, CountsFollowTheOrderOfTheMap)
{
    addFile("/s/b.cc",
            {function("g", 5, 9, {{7, 7, 1}, {5, 5, 2}}), function("f", 1, 2, {{1, 2, 3}})});
    addFile("/s/a.cc", {function("h", 1, 1, {{1, 1, 4}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(count(), (std::vector<Counts>{{4}, {3, 2, 1}}));
    EXPECT_EQ(_losses._linesShownRed + _losses._linesShownBlack, 0u);
}

TEST_F(CountRunTest, EachRunHasItsOwnCounts)
{
    addFile("/s/a.cc", {function("f", 1, 9, {{1, 1, 4}, {2, 2, 0}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(count(), (std::vector<Counts>{{4, 0}}));
    _counts = {0, 7};
    EXPECT_EQ(count(), (std::vector<Counts>{{0, 7}}));
    EXPECT_EQ(_losses._linesShownRed + _losses._linesShownBlack, 0u);
}

// Drawing depends on which counts are 0 alone, so a run that has the same is not drawn again.
TEST_F(CountRunTest, ComparesWithTheViewWhenOtherCountsAreZero)
{
    addFile("/s/a.cc", {function("f", 1, 9, {{1, 1, 4}, {2, 2, 0}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    ComparedRuns before;
    const auto shownRed = [&](const std::vector<int64_t>& counts) {
        CoverageCounts result;
        ImportLosses losses;
        countRun(_model, counts, result, losses, 1, &before);
        return losses._linesShownRed;
    };
    EXPECT_EQ(shownRed({4, 0}), 0u);
    ASSERT_EQ(before._files.size(), 1u);
    before._files[0]._linesShownRed = 3;
    EXPECT_EQ(shownRed({400, 0}), 3u);
    EXPECT_EQ(shownRed({4, 1}), 0u);
    EXPECT_EQ(shownRed({4, 0}), 0u);
}

// What the run before left in the result is its own counts where they are the same.
TEST_F(CountRunTest, OneResultServesAllRuns)
{
    addFile("/s/a.cc", {function("f", 1, 9, {{1, 1, 4}, {2, 2, 0}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    ComparedRuns before;
    CoverageCounts result;
    const auto countsOf = [&](const std::vector<int64_t>& counts) {
        countRun(_model, counts, result, _losses, 1, &before);
        return result._files;
    };
    EXPECT_EQ(countsOf({4, 0}), (std::vector<Counts>{{4, 0}}));
    EXPECT_EQ(countsOf({4, 0}), (std::vector<Counts>{{4, 0}}));
    EXPECT_EQ(countsOf({5, 0}), (std::vector<Counts>{{5, 0}}));
    EXPECT_EQ(countsOf({0, -7}), (std::vector<Counts>{{0, 0}}));
    EXPECT_EQ(countsOf({0, -7}), (std::vector<Counts>{{0, 0}}));
    EXPECT_EQ(_losses._negativeCounts, 2u); // in each run
    result = CoverageCounts();
    EXPECT_EQ(countsOf({0, 0}), (std::vector<Counts>{{0, 0}}));
}

TEST_F(CountRunTest, SumsAddUpTheGreatestOfEachGroup)
{
    CovFunction f = function("f", 1, 9, {{1, 1, 4}, {2, 2, 0}});
    _counts = {4, 9, 5, 1, 100};
    f._sums = {{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {3, 1, 1}, {4, 1, 1}};
    addFile("/s/a.cc", {f});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(count(), (std::vector<Counts>{{10, 100}}));
    _counts = {-1, -9, -5, 1, 2};
    EXPECT_EQ(count(), (std::vector<Counts>{{0, 2}}));
}

TEST_F(CountRunTest, CountsAreKeptWithinWhatViewsShow)
{
    addFile("/s/a.cc",
            {function("f", 1, 4,
                      {{1, 1, -1}, {2, 2, 2147483647}, {3, 3, 2147483648}, {4, 4, INT64_MAX}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(count(), (std::vector<Counts>{{0, 2147483647, 2147483647, 2147483647}}));
    EXPECT_EQ(_losses._negativeCounts, 1u);
    EXPECT_EQ(_losses._clampedCounts, 2u);
}

TEST_F(CountRunTest, SumsDoNotOverflow)
{
    CovFunction f = function("f", 1, 9, {{1, 1, 0}, {2, 2, 0}});
    _counts = {INT64_MAX, 1, INT64_MIN, -1};
    f._sums = {{0, 1, 0}, {1, 1, 1}, {2, 1, 0}, {3, 1, 1}};
    addFile("/s/a.cc", {f});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(count(), (std::vector<Counts>{{2147483647, 0}}));
}

} // namespace
