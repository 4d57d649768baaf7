// SPDX-License-Identifier: MIT
//
// The programs with hardly more memory than their libraries take: there is none for an exception.
#include "tests/support/DataFiles.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr int LoaderFailed = 127; // what the system's loader ends with

// KiB.
constexpr int LeastMemory = 4000;
constexpr int MostMemory = 64000;
constexpr int CoarseStep = 64;
constexpr int FineStep = 8;

ProgramResult runWithin(int kibibytes, const std::vector<std::string>& words)
{
    std::vector<std::string> all = {
        "sh", "-c", "ulimit -v " + std::to_string(kibibytes) + "; exec \"$0\" \"$@\""};
    all.insert(all.end(), words.begin(), words.end());
    return runProgram(all);
}

// From where the program starts at all until it does its work.
void expectNoSignal(const std::vector<std::string>& words)
{
    int limit = LeastMemory;
    while (limit < MostMemory && runWithin(limit, words).status == LoaderFailed) {
        limit += CoarseStep;
    }
    ASSERT_LT(limit, MostMemory);
    limit -= CoarseStep;
    ProgramResult result;
    do {
        limit += FineStep;
        result = runWithin(limit, words);
        const bool isRight = result.status == 0 && result.err.empty();
        const bool isTold = result.status == 1 || result.status == LoaderFailed;
        EXPECT_TRUE(isRight || (isTold && !result.err.empty()))
            << words[0] << " in " << limit << ": " << result.status << ": " << result.err;
    } while (result.status != 0 && limit < MostMemory);
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST(LittleMemoryTest, NoProgramEndsByASignal)
{
    const TempDir dir;
    const std::string map = mapFile({{"a.c", {{"f", 1, 2, {{1, 2}}}}}}).write(dir.path("p.map"));
    const std::string log = logFile({{"a.c", map, {1}}}).write(dir.path("p.log"));
    expectNoSignal({builtProgram("zem-import"), "--version"});
    expectNoSignal({builtProgram("zem-report"), log});
    expectNoSignal({builtProgram("zem-dump"), log});
}

} // namespace
