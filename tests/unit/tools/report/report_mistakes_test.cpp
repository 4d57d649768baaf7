// What people type by mistake: names that are not there, files of the wrong kind, maps that have
// gone.
#include "tests/unit/tools/report/ReportProgram.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

class ReportMistakesTest : public ReportProgram
{
protected:
    static std::string loadError(const std::string& log)
    {
        return " *** RptArea::report: Error processing " + log + ": ";
    }
};

TEST_F(ReportMistakesTest, AFilterThatMatchesNothingSaysWhatComesNear)
{
    const ProgramResult result = run({"-fF", "list.cpp", "-ff", "apend", "-df", _log});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "zem-report: -fF list.cpp: no file has this name; near it: src/list.cpp\n"
              "zem-report: -ff apend: no function has this name; near it: List::append\n");
    EXPECT_EQ(result.out, "function\tcovered\tuncovered\tper cent\thits\n"
                          " Blocks: 5 tested, 3 untested, 62% coverage\n");
    const ProgramResult groups = run({"-dd", "-fd", "source", "-fo", "list", _log});
    EXPECT_EQ(groups.status, 2);
    EXPECT_EQ(groups.err, "zem-report: -fo list: no class has this name; near it: List\n"
                          "zem-report: -fd source: no directory has this name; zem-report -dd "
                          "lists them\n");
}

TEST_F(ReportMistakesTest, OneOfTwoNamesIsEnoughForRows)
{
    const ProgramResult result = run({"-fF", "src/list.cpp", "-fF", "src/lists.cpp", _log});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "zem-report: -fF src/lists.cpp: no file has this name; near it: src/list.cpp\n");
    EXPECT_NE(result.out.find("src/list.cpp\t3\t2"), std::string::npos);
}

TEST_F(ReportMistakesTest, AFunctionFilterTakesTheNameThatAReportShows)
{
    const std::string rows = run({"-df", "-nm", "-ff", "List::remove", _log}).out;
    EXPECT_NE(rows.find("List::remove(const Foo *)\t0\t1"), std::string::npos) << rows;
    EXPECT_NE(rows.find("List::remove(int)\t1\t0"), std::string::npos) << rows;
    EXPECT_EQ(rows.find("append"), std::string::npos) << rows;
    for (const char* name :
         {"List::remove(const Foo *)", "List::remove(Foo *)", "List::remove__FPC3Foo"}) {
        const ProgramResult one = run({"-df", "-ff", name, _log});
        EXPECT_EQ(one.status, 0) << one.err;
        EXPECT_EQ(one.out, "function\tcovered\tuncovered\tper cent\thits\n"
                           "List::remove\t0\t1\t0%\t0\n"
                           " Blocks: 5 tested, 3 untested, 62% coverage\n")
            << name;
    }
}

// Scripts give stored names: such a filter means what it always meant.
TEST_F(ReportMistakesTest, AStoredNameIsTakenBeforeAReadableOne)
{
    const std::string map = mapFile({{"a.c", {{"f__Fi", 1, 1, {{1, 1}}}, {"f", 2, 2, {{2, 2}}}}}})
                                .write(_dir.path("twice.map"));
    const std::string log = logFile({{"a.c", map, {1, 0}}}).write(_dir.path("twice.log"));
    EXPECT_EQ(run({"-df", "-ff", "f", log}).out, "function\tcovered\tuncovered\tper cent\thits\n"
                                                 "f\t0\t1\t0%\t0\n"
                                                 " Blocks: 1 tested, 1 untested, 50% coverage\n");
}

TEST_F(ReportMistakesTest, StoredNamesCanBePrinted)
{
    EXPECT_NE(run({"-df", "-n0", _log}).out.find("\nList::append__FP3Foo\t2\t1"),
              std::string::npos);
    EXPECT_EQ(run({"-df", "-n", "0", _log}).out, run({"-df", "-n0", _log}).out);
    // Another letter still means nothing.
    EXPECT_EQ(run({"-nx", _log}).err.rfind("Unknown mangling level option: -nx\nUsage:", 0), 0u);
}

TEST_F(ReportMistakesTest, AMapGivenAsALogIsRecognised)
{
    const ProgramResult result = run({_map});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, loadError(_map) + "bad magic number; this is a map; give the log\n");
}

TEST_F(ReportMistakesTest, AnyOtherFileGivenAsALogIsNone)
{
    const std::string file = _dir.write("a.info", std::string(300, '\n'));
    const ProgramResult result = run({file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, loadError(file) + "bad magic number; this is no log; zem-import makes "
                                            "logs of what compilers write\n");
}

TEST_F(ReportMistakesTest, ALogInThePlaceOfAMapIsRecognised)
{
    const std::string log = logFile({{"a.c", _log, {1}}}).write(_dir.path("wrong.log"));
    EXPECT_EQ(run({log}).err, loadError(log) + "map file " + _log +
                                  ": bad magic number; this is a log; import the build and its "
                                  "run again\n");
}

TEST_F(ReportMistakesTest, AMapThatMovedWithItsLogIsFound)
{
    _dir.write("there/p.log", TempDir::read(_log));
    _dir.write("there/p.map", TempDir::read(_map));
    std::remove(_map.c_str());
    const ProgramResult result = run({_dir.path("there/p.log")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              loadError(_dir.path("there/p.log")) + "map file " + _map +
                  ": fopen failed: No such file or directory; the log counts the blocks of this "
                  "map: put it back, or import the same build again, which makes the same map; a "
                  "map of that name lies at " +
                  _dir.path("there/p.map") + "\n");
}

TEST_F(ReportMistakesTest, ARelativePathCountsFromTheCurrentFolder)
{
    const std::string log = logFile({{"a.c", "no/p.map", {1}}}).write(_dir.path("relative.log"));
    EXPECT_NE(run({log}).err.find("which makes the same map; the path counts from the folder where "
                                  "zem-report is started; a map of that name lies at "),
              std::string::npos);
}

} // namespace
