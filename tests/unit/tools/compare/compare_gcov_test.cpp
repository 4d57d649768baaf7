// SPDX-License-Identifier: MIT
//
// compare-gcov with a gcov that knows nothing: what it makes of its words.
#include "tests/support/DataFiles.h"
#include "tests/support/Golden.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

class CompareGcovTest : public ::testing::Test
{
protected:
    CompareGcovTest()
    {
        _dir.write("build/a.gcno", sampleNotes(12));
        _dir.write("build/b.gcno", sampleNotes(12));
        const std::string map = mapFile({{"a.cc", {{"f", 1, 2, {{1, 2}}}, {"g", 3, 4, {{3, 4}}}}}})
                                    .write(_dir.path("a.map"));
        _log = logFile({{"a.cc", map, {1, 0}}}).write(_dir.path("a.log"));
    }

    ProgramResult run(std::vector<std::string> words)
    {
        words.insert(words.begin(), {builtProgram("compare-gcov"), "--gcov", "true"});
        return runProgram(words);
    }

    ProgramResult compare(std::vector<std::string> words)
    {
        words.insert(words.end(), {_log, _dir.path("build")});
        return run(words);
    }

    const TempDir _dir;
    std::string _log;
};

TEST_F(CompareGcovTest, UnitThatGcovDoesNotKnowIsADisagreement)
{
    const ProgramResult result = compare({});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out.rfind("2 units, 0 files\n", 0), 0u) << result.out;
    EXPECT_NE(result.out.find("unit-failed  2  a unit that could not be read\n"),
              std::string::npos);
    EXPECT_EQ(compare({"--allow", "unit-failed"}).status, 0);
}

TEST_F(CompareGcovTest, PrintsAsManyExamplesAsItIsTold)
{
    const auto examples = [this](const char* number) {
        const std::string out = compare({"--examples", number}).out;
        size_t count = 0;
        for (size_t at = out.find(": true gave no lines"); at != std::string::npos;
             at = out.find(": true gave no lines", at + 1)) {
            ++count;
        }
        return count;
    };
    EXPECT_EQ(examples("0"), 0u);
    EXPECT_EQ(examples("1"), 1u);
    EXPECT_EQ(examples("5"), 2u);
}

TEST_F(CompareGcovTest, FilesOfTheSystemAreComparedWhenItIsTold)
{
    const std::string gcov = _dir.write(
        "gcov", "#!/bin/sh\n"
                "printf '{'; sleep 0.05\n" // a piece of its own
                "echo '\"current_working_directory\": \"/build\", \"files\": [{\"file\": "
                "\"/usr/include/a.h\", \"functions\": [], "
                "\"lines\": [{\"line_number\": 2, \"count\": 1}]}]}'\n");
    std::filesystem::permissions(gcov, std::filesystem::perms::owner_all);
    EXPECT_EQ(compare({"--gcov", gcov}).out.rfind("2 units, 1 files\n", 0), 0u);
    EXPECT_EQ(compare({"--gcov", gcov, "--system"}).out.rfind("2 units, 2 files\n", 0), 0u);
}

TEST_F(CompareGcovTest, WordsThatItCannotUseAreNamed)
{
    ProgramResult result = compare({"--allow", "no-such-class"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "compare-gcov: no such class: no-such-class\n");
    const std::string log = _dir.path("none.log");
    result = run({log, _dir.path("build")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "compare-gcov: " + log + ": fopen failed\n");
    result = run({_log, _dir.path()});
    EXPECT_EQ(result.status, 1); // what is below a folder is found
    result = run({"--none", _log});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(
        result.err.rfind("compare-gcov: unknown option, or its value is missing: --none\n", 0), 0u);
}

TEST_F(CompareGcovTest, UsageExplainsEveryClass)
{
    EXPECT_TRUE(matchesGolden("compare-gcov/usage.txt", run({}).err));
}

} // namespace
