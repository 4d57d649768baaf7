#include "tests/support/DataFiles.h"
#include "tests/support/Golden.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

class ZemDumpTest : public testing::Test
{
protected:
    ZemDumpTest()
    {
        const std::vector<MapSource> sources = {
            {"src/a.c", {{"main__Fv", 1, 9, {{1, 4}, {5, 9}}}}},
            {"src/b.c"},
        };
        _map = mapFile(sources).write(_dir.path("p.map"));
        _log = logFile({{"src/a.c", "p.map", {3, 0}}}).write(_dir.path("p.log"));
    }

    ProgramResult run(std::vector<std::string> words) const
    {
        words.insert(words.begin(), builtProgram("zem-dump"));
        return runProgram(words);
    }

    TempDir _dir;
    std::string _map;
    std::string _log;
};

TEST_F(ZemDumpTest, PrintsAMapFile)
{
    const ProgramResult result = run({_map});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(matchesGolden("zem-dump/map.txt", result.out));
}

TEST_F(ZemDumpTest, PrintsALogFile)
{
    const ProgramResult result = run({_log});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(matchesGolden("zem-dump/log.txt", result.out));
}

TEST_F(ZemDumpTest, NamesEachOfSeveralFiles)
{
    const ProgramResult result = run({_map, _log});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.find("==> " + _map + " <==\n"), 0u);
    EXPECT_NE(result.out.find("\n==> " + _log + " <==\n"), std::string::npos);
}

TEST_F(ZemDumpTest, NamesAFileThatItCannotReadAndGoesOn)
{
    const std::string odd = _dir.write("odd", std::string(200, 'x'));
    const std::string none = _dir.path("none");
    const ProgramResult result = run({odd, none, _dir.path(), _log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "zem-dump: " + odd +
                  ": bad magic number; give the file of coverage that belongs here\n"
                  "zem-dump: " +
                  none +
                  ": fopen failed: No such file or directory; check that the file is there and "
                  "that you may read it\n"
                  "zem-dump: " +
                  _dir.path() +
                  ": fread failed: Is a directory; check that it is a file and that its disk is "
                  "well\n");
    EXPECT_NE(result.out.find("ZEMLogHeader"), std::string::npos);
}

TEST_F(ZemDumpTest, PrintsWhatStandsBeforeTheDamage)
{
    RecFileBuilder builder = mapFile({{"src/a.c"}, {"src/b.c"}});
    const std::string path = builder.cutAt(builder.size() - 3).write(_dir.path("cut.map"));
    const ProgramResult result = run({path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.rfind("zem-dump: " + path + ": file corrupt (record ", 0), 0u)
        << result.err;
    EXPECT_NE(result.err.find("; write the file again\n"), std::string::npos) << result.err;
    EXPECT_NE(result.out.find("filename : src/a.c"), std::string::npos);
    EXPECT_EQ(result.out.find("filename : src/b.c"), std::string::npos);
}

TEST_F(ZemDumpTest, TellsVersionAndUsage)
{
    EXPECT_EQ(run({"--version"}).out.find("zem-dump 3.1"), 0u);
    EXPECT_TRUE(matchesGolden("zem-dump/usage.txt", run({"--help"}).out));
    EXPECT_EQ(run({"--help"}).status, 0);
    // Wherever they stand, but behind the end of the options.
    EXPECT_EQ(run({_log, "--help"}).out, run({"--help"}).out);
    EXPECT_EQ(run({"--version", _log}).out, run({"--version"}).out);
    EXPECT_EQ(run({"--", "--help"}).status, 1);
}

TEST_F(ZemDumpTest, RefusesWhatItDoesNotKnow)
{
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({}).err.find("zem-dump: no file given\n"), 0u);
    EXPECT_EQ(run({"-x"}).status, 2);
    EXPECT_EQ(run({"-x"}).err.find("zem-dump: unknown option -x\n"), 0u);
}

TEST_F(ZemDumpTest, TwoDashesEndTheOptions)
{
    EXPECT_EQ(run({"--", _log}).status, 0);
    EXPECT_EQ(run({"--", "-x"}).err, "zem-dump: -x: fopen failed: No such file or directory; "
                                     "check that the file is there and that you may read it\n");
}

TEST_F(ZemDumpTest, OutputThatCannotBeWrittenIsAFailure)
{
    for (const std::string& word : {std::string("--help"), std::string("--version"), _map}) {
        for (const char* output : {">/dev/full", ">&-"}) {
            const ProgramResult result =
                runProgramWithOutput(output, {builtProgram("zem-dump"), word});
            EXPECT_EQ(result.status, 1) << word << output;
            EXPECT_EQ(result.err.rfind("zem-dump: cannot write to the standard output: ", 0), 0u)
                << result.err;
        }
    }
    const ProgramResult full = runProgramWithOutput(">/dev/full", {builtProgram("zem-dump"), _map});
    EXPECT_NE(full.err.find("No space left on device"), std::string::npos) << full.err;
}

TEST_F(ZemDumpTest, NamesAreShownVisibly)
{
    const std::string map =
        mapFile({{"src/a\nb.c", {{"f\x1b[2J", 1, 2, {{1, 2}}}}}}).write(_dir.path("odd\n.map"));
    const std::string log = logFile({{"a\tb", "m\x7f", {1}}}).write(_dir.path("odd.log"));
    const ProgramResult result = run({map, log, _dir.path("none\r")});
    EXPECT_NE(result.out.find("/odd\\x0a.map <=="), std::string::npos);
    EXPECT_NE(result.out.find("filename : src/a\\x0ab.c\n"), std::string::npos);
    EXPECT_NE(result.out.find("function : f\\x1b[2J\n"), std::string::npos);
    EXPECT_NE(result.out.find("filename : a\\x09b\n         mapfile : m\\x7f\n"),
              std::string::npos);
    EXPECT_NE(result.err.find("/none\\x0d: fopen failed"), std::string::npos);
}

} // namespace
