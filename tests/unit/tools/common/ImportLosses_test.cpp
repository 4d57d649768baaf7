// SPDX-License-Identifier: MIT
#include "tools/common/ImportLosses.h"

#include "tests/support/Golden.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

TEST(ImportLossesTest, NothingLostGivesNoText)
{
    EXPECT_EQ(ImportLosses().text(), "");
    std::ostringstream out;
    ImportLosses().write(out);
    EXPECT_EQ(out.str(), "");
}

TEST(ImportLossesTest, NamesOnlyWhatOccurred)
{
    ImportLosses losses;
    losses._systemFunctions = 310;
    losses._negativeCounts = 2;
    EXPECT_EQ(losses.text(), "310 system functions, 2 negative counts taken as 0");
}

TEST(ImportLossesTest, EachLossHasItsWords)
{
    uint64_t ImportLosses::*const counts[] = {&ImportLosses::_failedUnits,
                                              &ImportLosses::_unreadFolders,
                                              &ImportLosses::_linkedFolders,
                                              &ImportLosses::_unitsNotRun,
                                              &ImportLosses::_unitsAsLines,
                                              &ImportLosses::_countersWithoutUnit,
                                              &ImportLosses::_systemFunctions,
                                              &ImportLosses::_excludedFunctions,
                                              &ImportLosses::_markedFunctions,
                                              &ImportLosses::_markedBlocks,
                                              &ImportLosses::_sourcesNotSearched,
                                              &ImportLosses::_unreadSources,
                                              &ImportLosses::_artificialFunctions,
                                              &ImportLosses::_blocksWithoutLine,
                                              &ImportLosses::_blocksOfOtherFiles,
                                              &ImportLosses::_linesOfOtherFiles,
                                              &ImportLosses::_linesShownRed,
                                              &ImportLosses::_linesShownBlack,
                                              &ImportLosses::_guessedEnds,
                                              &ImportLosses::_linesOutsideFunctions,
                                              &ImportLosses::_functionsWithoutLines,
                                              &ImportLosses::_linesWithoutNumber,
                                              &ImportLosses::_unknownRecords,
                                              &ImportLosses::_ambiguousSources,
                                              &ImportLosses::_probeUnits,
                                              &ImportLosses::_sourcesOfTwoBuilds,
                                              &ImportLosses::_clampedCounts,
                                              &ImportLosses::_negativeCounts,
                                              &ImportLosses::_unsolvedFunctions,
                                              &ImportLosses::_damagedFunctions,
                                              &ImportLosses::_staleFunctions,
                                              &ImportLosses::_sharedCounters,
                                              &ImportLosses::_profilesOfOthers,
                                              &ImportLosses::_regionsOfMacros,
                                              &ImportLosses::_renamedFunctions,
                                              &ImportLosses::_namesWithoutTypes,
                                              &ImportLosses::_namesNotUnfolded,
                                              &ImportLosses::_sourcesNotFound,
                                              &ImportLosses::_refusedFiles};
    ImportLosses losses;
    uint64_t number = 0;
    for (uint64_t ImportLosses::*const count : counts) {
        losses.*count = ++number;
    }
    std::ostringstream out;
    losses.write(out);
    EXPECT_TRUE(matchesGolden("zem-import/losses.txt", out.str()));
}

TEST(ImportLossesTest, AddsCountsAndKeepsTheMostRuns)
{
    ImportLosses sum;
    sum._clampedCounts = 1;
    sum._mostRuns = 7;
    ImportLosses other;
    other._clampedCounts = 2;
    other._mostRuns = 3;
    sum.add(other);
    EXPECT_EQ(sum._clampedCounts, 3u);
    EXPECT_EQ(sum._mostRuns, 7u);
}

TEST(ImportLossesTest, NoteSaysWhenCountersAddUpSeveralRuns)
{
    ImportLosses losses;
    losses._unitsNotRun = 4;
    losses._mostRuns = 3;
    std::ostringstream out;
    losses.write(out);
    EXPECT_EQ(out.str(), "4 units that never ran\nthe counters add up 3 runs\n");
}

TEST(ImportLossesTest, FilesWithBlocksPastTheLastLineAreNamed)
{
    ImportLosses losses;
    losses._blocksPastLastLine["/s/a.c"] = 3;
    ImportLosses more;
    more._blocksPastLastLine["/s/a.c"] = 4;
    more._blocksPastLastLine["/s/b.c"] = 1;
    losses.add(more);
    EXPECT_EQ(losses.text(),
              "7 blocks past line 65535 (counted, not shown in the source) in /s/a.c, "
              "1 blocks past line 65535 (counted, not shown in the source) in /s/b.c");
    std::ostringstream out;
    losses.write(out);
    EXPECT_EQ(out.str(), "7 blocks past line 65535 (counted, not shown in the source) in /s/a.c\n"
                         "1 blocks past line 65535 (counted, not shown in the source) in /s/b.c\n");
}

TEST(ImportLossesTest, ManyFilesWithBlocksPastTheLastLineAreAddedUpInTheText)
{
    ImportLosses losses;
    for (const char* file : {"/a.c", "/b.c", "/c.c", "/d.c"}) {
        losses._blocksPastLastLine[file] = 2;
    }
    EXPECT_EQ(losses.text(),
              "8 blocks past line 65535 (counted, not shown in the source) in 4 files");
}

} // namespace
