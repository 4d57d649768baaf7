// --fail-under and --fail-under-each: what they count and how the program ends.
#include "tests/unit/tools/report/ReportProgram.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// 5 of 8 blocks: 62.5%.
class ReportLimitsTest : public ReportProgram
{};

TEST_F(ReportLimitsTest, TheWholeIsComparedExactly)
{
    EXPECT_EQ(run({"--fail-under", "62.5", _log}).status, 0);
    const ProgramResult under = run({"--fail-under", "62.5001", _log});
    EXPECT_EQ(under.status, 3);
    EXPECT_EQ(under.err, "zem-report: 5 of 8 merged blocks ran, 62.50%, which is under 62.5001%\n");
    EXPECT_EQ(under.out, run({_log}).out);
}

TEST_F(ReportLimitsTest, TheWholeIsMergedBlocksAndNotTheSumOverLogRecords)
{
    const std::string other =
        logFile({{"src/main.cpp", _map, {0, 0}}}).write(_dir.path("other.log"));
    const ProgramResult result = run({"--fail-under", "60", _log, other});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("50% coverage"), std::string::npos);
}

TEST_F(ReportLimitsTest, TheWholeIsTheSameInEachReport)
{
    for (const char* type : {"-dd", "-dF", "-df", "-do"}) {
        EXPECT_EQ(run({type, "--fail-under=62.5", _log}).status, 0) << type;
        EXPECT_EQ(run({type, "--fail-under=62.6", _log}).status, 3) << type;
    }
}

TEST_F(ReportLimitsTest, EachRowIsCompared)
{
    EXPECT_EQ(run({"-fF", "src/main.cpp", "--fail-under-each", "100", _log}).status, 0);
    const ProgramResult under = run({"--fail-under-each", "60", _log});
    EXPECT_EQ(under.status, 4);
    EXPECT_EQ(under.err, "zem-report: 1 of 3 rows are under 60%:\n  lib/a.cpp 0.00%\n");
    EXPECT_EQ(run({"-dd", "-fd", "src", "--fail-under-each", "71.4", _log}).status, 0); // 5 of 7
    EXPECT_EQ(run({"-dd", "-fd", "src", "--fail-under-each", "71.5", _log}).status, 4);
}

TEST_F(ReportLimitsTest, BothHaveAStatusOfTheirOwn)
{
    const ProgramResult both = run({"--fail-under", "90", "--fail-under-each", "90", _log});
    EXPECT_EQ(both.status, 5);
    EXPECT_NE(both.err.find("5 of 8 merged blocks"), std::string::npos);
    EXPECT_NE(both.err.find("2 of 3 rows"), std::string::npos);
    EXPECT_EQ(run({"--fail-under", "0", "--fail-under-each", "0", _log}).status, 0);
}

TEST_F(ReportLimitsTest, NumbersThatAreNotWholeComeFirst)
{
    EXPECT_EQ(run({"--fail-under", "90", _dir.path("none.log"), _log}).status, 1);
    EXPECT_EQ(run({"--fail-under", "0", _dir.path("none.log"), _log}).status, 1);
    EXPECT_EQ(run({"--fail-under", "90", "-o", "/dev/full", _log}).status, 1);
    EXPECT_EQ(run({"--fail-under", "90", "-fF", "none.c", _log}).status, 2);
}

TEST_F(ReportLimitsTest, NothingAtAllIsNotEnough)
{
    const std::string map = mapFile({{"a.c", {}}}).write(_dir.path("empty.map"));
    const std::string empty = logFile({{"a.c", map, {}}}).write(_dir.path("empty.log"));
    const ProgramResult result = run({"--fail-under", "1", empty});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "zem-report: 0 of 0 merged blocks ran, 0.00%, which is under 1%\n");
    EXPECT_EQ(run({"--fail-under", "0", empty}).status, 0);
}

TEST_F(ReportLimitsTest, ARowWithoutBlocksIsNotUnder)
{
    const std::string map =
        mapFile({{"a.c", {{"f", 1, 1, {{1, 1}}}}}, {"empty.c", {}}}).write(_dir.path("empty.map"));
    const std::string log =
        logFile({{"a.c", map, {1}}, {"empty.c", map, {}}}).write(_dir.path("empty.log"));
    EXPECT_EQ(run({"--fail-under-each", "100", log}).status, 0);
}

TEST_F(ReportLimitsTest, TenRowsAreNamed)
{
    std::vector<MapSource> sources;
    std::vector<LogSource> counts;
    for (int i = 10; i < 25; ++i) {
        const std::string path = "f" + std::to_string(i) + ".c";
        sources.push_back({path, {{"f", 1, 1, {{1, 1}}}}});
        counts.push_back({path, _dir.path("many.map"), {0}});
    }
    mapFile(sources).write(_dir.path("many.map"));
    const std::string log = logFile(counts).write(_dir.path("many.log"));
    const std::string message = run({"--fail-under-each", "1", log}).err;
    EXPECT_EQ(message.rfind("zem-report: 15 of 15 rows are under 1%:\n  /f10.c 0.00%\n", 0), 0u)
        << message;
    EXPECT_NE(message.find("  /f19.c 0.00%\n  and 5 more\n"), std::string::npos) << message;
}

// A gate that a letter wrong would leave open.
TEST_F(ReportLimitsTest, AnUnknownLongOptionIsAMistake)
{
    const ProgramResult result = run({"--fail-undr=80", _log});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zem-report: unknown option --fail-undr=80\n"
                          "zem-report: zem-report --help lists the options\n");
    EXPECT_EQ(run({"--fail-under", "80x", _log}).status, 2);
    EXPECT_EQ(run({"--format", "html", _log}).status, 2);
}

} // namespace
