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
    EXPECT_EQ(result.err, "zem-dump: " + odd + ": bad magic number\nzem-dump: " + none +
                              ": fopen failed\nzem-dump: " + _dir.path() + ": file corrupt\n");
    EXPECT_NE(result.out.find("ZEMLogHeader"), std::string::npos);
}

TEST_F(ZemDumpTest, PrintsWhatStandsBeforeTheDamage)
{
    RecFileBuilder builder = mapFile({{"src/a.c"}, {"src/b.c"}});
    const std::string path = builder.cutAt(builder.size() - 3).write(_dir.path("cut.map"));
    const ProgramResult result = run({path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "zem-dump: " + path + ": file corrupt\n");
    EXPECT_NE(result.out.find("filename : src/a.c"), std::string::npos);
    EXPECT_EQ(result.out.find("filename : src/b.c"), std::string::npos);
}

TEST_F(ZemDumpTest, TellsVersionAndUsage)
{
    EXPECT_EQ(run({"--version"}).out.find("zem-dump 3.1"), 0u);
    EXPECT_EQ(run({"--help"}).out.find("Usage: zem-dump"), 0u);
    EXPECT_EQ(run({"--help"}).status, 0);
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
    EXPECT_EQ(run({"--", "-x"}).err, "zem-dump: -x: fopen failed\n");
}

TEST_F(ZemDumpTest, TextThatCannotBeWrittenIsAnError)
{
    for (const char* word : {"--version", "--help"}) {
        const std::string line = builtProgram("zem-dump") + " " + word;
        const std::string quiet = " 2>" + _dir.path("err");
        EXPECT_NE(std::system((line + " >/dev/full" + quiet).c_str()), 0) << word;
        EXPECT_NE(std::system((line + " >&-" + quiet).c_str()), 0) << word;
        EXPECT_EQ(std::system((line + " >/dev/null" + quiet).c_str()), 0) << word;
    }
}

} // namespace
