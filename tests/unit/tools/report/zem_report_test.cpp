#include "tests/support/DataFiles.h"
#include "tests/support/Golden.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
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

TEST_F(ZemReportTest, ALogThatDoesNotFitItsMapIsNamedAndReported)
{
    const std::string map =
        mapFile({{"src/a.c", {{"f", 1, 2, {{1, 2}}}}}}).write(_dir.path("a.map"));
    const std::string log = logFile({{"src/A.c", map, {7}}}).write(_dir.path("a.log"));
    const ProgramResult result = run({_log, log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "zem-report: " + log +
                  ": 1 records of this log and its maps do not fit: counts are missing, "
                  "or stand at other code; give logs of one build alone, or import the "
                  "build and its run again\n");
    EXPECT_NE(result.out.find("src/list.cpp"), std::string::npos);
    EXPECT_NE(result.out.find("src/a.c"), std::string::npos);
}

TEST_F(ZemReportTest, AFailedLogIsNamedAndTheOthersAreReported)
{
    const ProgramResult result = run({_dir.path("none.log"), _log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, " *** RptArea::report: Error processing " + _dir.path("none.log") +
                              ": fopen failed: No such file or directory; check that the file is "
                              "there and that you may read it\n");
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
    // Wherever they stand, but behind the end of the options.
    const std::string help = run({"--help"}).out;
    EXPECT_EQ(run({"--help", _log}).out, help);
    EXPECT_EQ(run({"-df", _log, "--help", "--nonsense"}).out, help);
    EXPECT_EQ(run({_log, "--version"}).out, version.out);
    EXPECT_NE(run({_log, "--", "--help"}).out, help);
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

TEST_F(ZemReportTest, OutputThatCannotBeWrittenIsAFailure)
{
    for (const std::string& word : {std::string("--help"), std::string("--version"), _log}) {
        for (const char* output : {">/dev/full", ">&-"}) {
            const ProgramResult result =
                runProgramWithOutput(output, {builtProgram("zem-report"), word});
            EXPECT_EQ(result.status, 1) << word << output;
            EXPECT_EQ(result.err.rfind("zem-report: cannot write to the standard output: ", 0), 0u)
                << result.err;
        }
    }
    const ProgramResult full =
        runProgramWithOutput(">/dev/full", {builtProgram("zem-report"), _log});
    EXPECT_NE(full.err.find("No space left on device"), std::string::npos) << full.err;
}

TEST_F(ZemReportTest, HelpGoesToTheStandardOutput)
{
    const ProgramResult help = run({"--help"});
    EXPECT_EQ(help.err, "");
    EXPECT_TRUE(matchesGolden("zem-report/usage.txt", help.out));
}

TEST_F(ZemReportTest, ANameCannotForgeARowOrSteerTheTerminal)
{
    const std::string map =
        mapFile({{"src/a\n/b.c\t9\t0\t100%\t9", {{"f\x1b[2J\xe9", 1, 2, {{1, 2}}}}}})
            .write(_dir.path("forged.map"));
    const std::string log =
        logFile({{"src/a\n/b.c\t9\t0\t100%\t9", map, {0}}}).write(_dir.path("forged.log"));
    EXPECT_EQ(run({log}).out, "file\tcovered\tuncovered\tper cent\thits\n"
                              "src/a\\x0a/b.c\\x099\\x090\\x09100%\\x099\t0\t1\t0%\t0\n"
                              " Blocks: 0 tested, 1 untested, 0% coverage\n");
    EXPECT_NE(run({"-df", log}).out.find("\nf\\x1b[2J\\xe9\t0\t1\t0%\t0\n"), std::string::npos);
}

TEST_F(ZemReportTest, MessagesShowNamesVisibly)
{
    EXPECT_NE(run({_dir.path("no\nlog")}).err.find("/no\\x0alog: fopen failed"), std::string::npos);
    EXPECT_NE(run({"-q\x1b", _log}).err.find("unknown option -q\\x1b ignored"), std::string::npos);
}

TEST_F(ZemReportTest, AMapThatIsNotThereIsNamedWithTheLog)
{
    const std::string map = _dir.path("gone.map");
    const std::string log = logFile({{"a.c", map, {1}}}).write(_dir.path("lost.log"));
    const ProgramResult result = run({log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, " *** RptArea::report: Error processing " + log + ": map file " + map +
                              ": fopen failed: No such file or directory; the log counts the "
                              "blocks of this map: put it back, or import the same build again, "
                              "which makes the same map\n");
}

TEST_F(ZemReportTest, DamageIsNamedWithItsRecordAndPlace)
{
    RecFileBuilder builder = logFile({{"a.c", "m", {1}}, {"b.c", "m", {1, 2}}});
    const std::string place = "(record 2 at byte " + std::to_string(builder.offsetOf(1)) + ")";
    const std::string cut = builder.cutAt(builder.size() - 1).write(_dir.path("cut.log"));
    EXPECT_EQ(run({cut}).err, " *** RptArea::report: Error processing " + cut + ": file corrupt " +
                                  place + "; write the file again\n");
    // The code of a header that is cut short is that of a file that could not be opened.
    const std::string head = builder.cutAt(builder.offsetOf(1) + 8).write(_dir.path("head.log"));
    EXPECT_EQ(run({head}).err, " *** RptArea::report: Error processing " + head +
                                   ": file corrupt " + place + "; write the file again\n");
    // So is that of a first record that lies nowhere.
    const std::string past =
        logFile({{"a.c", "m", {1}}}).startAt(5000).write(_dir.path("past.log"));
    EXPECT_EQ(run({past}).err, " *** RptArea::report: Error processing " + past +
                                   ": file corrupt (record 1 at byte 5000); write the file "
                                   "again\n");
}

TEST_F(ZemReportTest, APipeIsNoRegularFile)
{
    const std::string pipe = _dir.path("pipe.log");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_NE(run({pipe}).err.find(pipe + ": fopen failed: no regular file; "), std::string::npos);
}

// The shadow memory of a sanitizer does not fit into any limit.
#if defined(__has_feature)
#define ZEM_UNDER_SANITIZER __has_feature(address_sanitizer)
#else
#define ZEM_UNDER_SANITIZER 0
#endif
#if !ZEM_UNDER_SANITIZER
// Each limit of memory gives the whole report or none and a message.
TEST_F(ZemReportTest, WithLittleMemoryThereIsAWholeReportOrNone)
{
    std::vector<MapSource> sources;
    std::vector<LogSource> counts;
    const std::string map = _dir.path("large.map");
    for (int i = 0; i < 40; ++i) {
        const std::string path = "src" + std::to_string(i) + "/file.cpp";
        MapSource source = {path, {}};
        for (int k = 0; k < 500; ++k) {
            source.funcs.push_back(
                {"Class" + std::to_string(i * 500 + k) + "::member", 1, 2, {{1, 2}}});
        }
        sources.push_back(source);
        counts.push_back({path, map, std::vector<uint32_t>(500, 1)});
    }
    mapFile(sources).write(map);
    const std::string log = logFile(counts).write(_dir.path("large.log"));
    for (const char* type : {"-dd", "-dF", "-df", "-do"}) {
        const std::string whole = run({type, "-sdFf", log}).out;
        int nWhole = 0;
        int nNone = 0;
        for (int limit = 8000; limit <= 24000 && nWhole < 2; limit += 250) {
            const ProgramResult result = runProgram(
                {"sh", "-c", "ulimit -v " + std::to_string(limit) + "; exec \"$0\" \"$@\"",
                 builtProgram("zem-report"), type, "-sdFf", log});
            if (result.status == 0) {
                EXPECT_EQ(result.out, whole) << type << limit;
                ++nWhole;
            } else {
                // No row, and no summary of a log of which nothing was merged either.
                EXPECT_LT(result.status, 128) << type << limit;
                EXPECT_NE(result.err, "") << type << limit;
                EXPECT_EQ(result.out.find("src"), std::string::npos) << type << limit;
                EXPECT_EQ(result.out.find("Class"), std::string::npos) << type << limit;
                ++nNone;
            }
        }
        EXPECT_GT(nWhole, 0) << type;
        EXPECT_GT(nNone, 0) << type;
    }
}
#endif

} // namespace
