#include "tests/support/DataFiles.h"
#include "tests/support/Golden.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class ZemReportTest : public ::testing::Test
{
protected:
    ZemReportTest()
    {
        const std::string map =
            mapFile({{"src/list.cpp",
                      {{"List::append__FP3Foo", 1, 20, {{2, 4}, {5, 5}, {6, 9}}},
                       {"List::remove__FPC3Foo", 22, 40, {{23, 30}}}}},
                     {"src/main.cpp", {{"main", 1, 9, {{2, 3}, {4, 8}}}}},
                     {"lib/a.cpp", {{"A::run", 1, 5, {{1, 5}}}}}})
                .write(_dir.path("p.map"));
        _log = logFile({{"src/list.cpp", map, {4, 0, 2, 0}},
                        {"src/main.cpp", map, {1, 1}},
                        {"lib/a.cpp", map, {0}}})
                   .write(_dir.path("p.log"));
    }

    ProgramResult run(std::vector<std::string> words) const
    {
        words.insert(words.begin(), builtProgram("zem-report"));
        return runProgram(words);
    }

    TempDir _dir;
    std::string _log;
};

TEST_F(ZemReportTest, ByFileInTheOrderLoaded)
{
    const ProgramResult result = run({_log});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(matchesGolden("zem-report/file.txt", result.out));
}

TEST_F(ZemReportTest, ByDirectory)
{
    EXPECT_TRUE(matchesGolden("zem-report/directory.txt", run({"-dd", "-sd", _log}).out));
}

TEST_F(ZemReportTest, ByFunctionAtEachLevel)
{
    EXPECT_TRUE(matchesGolden("zem-report/function-simple.txt", run({"-df", _log}).out));
    EXPECT_TRUE(matchesGolden("zem-report/function-extended.txt", run({"-df", "-ne", _log}).out));
    EXPECT_TRUE(matchesGolden("zem-report/function-modifiers.txt", run({"-df", "-nm", _log}).out));
}

TEST_F(ZemReportTest, ByClassSortedByCoverage)
{
    EXPECT_TRUE(matchesGolden("zem-report/class.txt", run({"-do", "-s", "%", _log}).out));
}

TEST_F(ZemReportTest, FiltersRestrictTheRows)
{
    EXPECT_TRUE(matchesGolden("zem-report/filtered.txt",
                              run({"-fF", "src/list.cpp", "-df", "-sf", _log}).out));
}

TEST_F(ZemReportTest, TwoLogsAddUp)
{
    EXPECT_TRUE(matchesGolden("zem-report/two-logs.txt", run({"-sF", _log, _log}).out));
}

TEST_F(ZemReportTest, AFailedLogIsNamedAndTheOthersAreReported)
{
    const ProgramResult result = run({_dir.path("none.log"), _log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, " *** RptArea::report: Error processing " + _dir.path("none.log") +
                              ": fopen failed\n");
    EXPECT_TRUE(matchesGolden("zem-report/file.txt", result.out));
}

TEST_F(ZemReportTest, WithoutALogItPrintsTheUsage)
{
    const ProgramResult result = run({});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("zem-report: no log file given\nUsage: zem-report", 0), 0u);
}

TEST_F(ZemReportTest, UnknownLettersPrintTheUsageAndGoOn)
{
    const ProgramResult result = run({"-dz", _log});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err.rfind("Unknown report type option: -dz\nUsage:", 0), 0u);
    EXPECT_TRUE(matchesGolden("zem-report/file.txt", result.out));
}

TEST_F(ZemReportTest, UnknownOptionsAreNamed)
{
    const ProgramResult result = run({"-q", _log});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "zem-report: unknown option -q ignored\n");
}

TEST_F(ZemReportTest, ALoneTerminatorPrintsTheUsage)
{
    EXPECT_EQ(run({"--"}).status, 255);
    EXPECT_EQ(run({"-"}).status, 255);
}

TEST_F(ZemReportTest, HelpAndVersion)
{
    EXPECT_EQ(run({"--help"}).status, 0);
    const ProgramResult version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("zem-report 3.1", 0), 0u);
}

TEST_F(ZemReportTest, LinksNoXLibrary)
{
    const ProgramResult libraries = runProgram({"readelf", "-d", builtProgram("zem-report")});
    ASSERT_EQ(libraries.status, 0);
    EXPECT_NE(libraries.out.find("NEEDED"), std::string::npos);
    for (const char* name : {"libX", "libxcb", "libSM", "libICE"}) {
        EXPECT_EQ(libraries.out.find(name), std::string::npos) << name;
    }
}

TEST_F(ZemReportTest, TextThatCannotBeWrittenIsAnError)
{
    for (const char* word : {"--version"}) {
        const std::string line = builtProgram("zem-report") + " " + word;
        const std::string quiet = " 2>" + _dir.path("err");
        EXPECT_NE(std::system((line + " >/dev/full" + quiet).c_str()), 0) << word;
        EXPECT_NE(std::system((line + " >&-" + quiet).c_str()), 0) << word;
        EXPECT_EQ(std::system((line + " >/dev/null" + quiet).c_str()), 0) << word;
    }
}

} // namespace
