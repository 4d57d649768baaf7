// SPDX-License-Identifier: MIT
#include "tools/compare/GraphFacts.h"

#include "tests/unit/tools/import/GcovBuilder.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t Stamp = 7;

// One unit with a function that somebody wrote, line 3, and one that the compiler made, line 5,
// each of a single block.
std::string notes()
{
    GcovBuilder builder(12);
    builder.notesHead(Stamp, "/build");
    for (const uint32_t made : {0u, 1u}) {
        builder.function(made + 1, 1, 1, "f", made, "a.cc", 3, 5);
        builder.blocks(3);
        builder.arcs(0, {{2, 4}});
        builder.arcs(2, {{1, 5}});
        builder.lines(2, "a.cc", {3 + 2 * made});
    }
    return builder.bytes();
}

// How often the one and the other ran.
std::string counters(int64_t written, int64_t made)
{
    GcovBuilder builder(12);
    builder.countersHead(Stamp);
    builder.summary(1);
    builder.ran(1, 1, 1);
    builder.counters({written});
    builder.ran(2, 1, 1);
    builder.counters({made});
    builder.word(0);
    return builder.bytes();
}

std::string text(const LineFacts& facts)
{
    return std::string(facts._isTouched ? "touched " : "") + (facts._blockRan ? "ran " : "") +
           (facts._isTouchedMade ? "touched by made " : "") + (facts._madeRan ? "made ran" : "");
}

TEST(GraphFactsTest, BlocksOfWrittenAndOfMadeFunctionsAreToldApart)
{
    BuildFacts facts;
    ASSERT_TRUE(addGraphFacts(notes(), counters(2, 0), SourceFilter(), facts));
    auto& lines = facts._files.at("/build/a.cc")._lines;
    EXPECT_EQ(text(lines.at(3)), "touched ran ");
    EXPECT_EQ(text(lines.at(5)), "touched by made ");
    ASSERT_TRUE(addGraphFacts(notes(), counters(0, 3), SourceFilter(), facts));
    EXPECT_EQ(text(lines.at(3)), "touched ran ");
    EXPECT_EQ(text(lines.at(5)), "touched by made made ran");
    EXPECT_FALSE(lines.at(3)._isListed);
}

TEST(GraphFactsTest, UnitThatNeverRanIsTouchedOnly)
{
    BuildFacts facts;
    ASSERT_TRUE(addGraphFacts(notes(), "", SourceFilter(), facts));
    EXPECT_EQ(text(facts._files.at("/build/a.cc")._lines.at(3)), "touched ");
}

TEST(GraphFactsTest, UnitThatCannotBeReadAddsNothing)
{
    const std::string good = notes();
    BuildFacts facts;
    EXPECT_FALSE(addGraphFacts("no notes", "", SourceFilter(), facts));
    EXPECT_FALSE(addGraphFacts(good, "no counters", SourceFilter(), facts));
    EXPECT_FALSE(addGraphFacts(good.substr(0, good.size() - 8), "", SourceFilter(), facts));
    EXPECT_TRUE(facts._files.empty());
}

TEST(GraphFactsTest, FilesThatTheImportLeavesOutAreLeftOut)
{
    SourceFilter filter;
    filter.only("/elsewhere");
    BuildFacts facts;
    ASSERT_TRUE(addGraphFacts(notes(), counters(2, 0), filter, facts));
    EXPECT_TRUE(facts._files.empty());
}

} // namespace
