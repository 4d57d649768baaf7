#include "tests/support/gtest_x.h"

#include "tests/program/ViewerRun.h"
#include "tests/support/DataFiles.h"
#include "tests/support/Golden.h"
#include "tests/support/Program.h"
#include "tests/support/XInput.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string usageText()
{
    return TempDir::read(std::string(ZEM_SOURCE_DIR) + "/tests/golden/zem/usage.txt");
}

class ZemCommandLineTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(_run.started()) << _run.server().problem();
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
        // A word that cannot be told from an option.
        _dir.write("-x", "");
    }

    // What the window shows with these words, once a report is drawn.
    std::string picture(const std::vector<std::string>& words)
    {
        _run.start(words);
        const Window window = _run.mainWindow();
        return window == 0 ? "" : _run.picture(window, _run.color("LightSkyBlue3"));
    }

    // The two command lines show the same, and it is something.
    void expectSame(const std::vector<std::string>& words, const std::vector<std::string>& others)
    {
        const std::string shown = picture(words);
        EXPECT_NE(shown, "");
        EXPECT_TRUE(shown == picture(others));
    }

    // A word that draws a message and the usage text; the rest shows like `others`.
    void expectComplaint(const std::vector<std::string>& words, const std::string& message,
                         const std::vector<std::string>& others)
    {
        const std::string shown = picture(words);
        EXPECT_EQ(_run.err(), message + usageText());
        EXPECT_NE(shown, "");
        EXPECT_TRUE(shown == picture(others));
    }

    ViewerRun _run;
    TempDir _dir;
    std::string _log;
};

TEST(ZemUsageTest, ALoneTerminatorPrintsTheUsageWithoutADisplay)
{
    unsetenv("DISPLAY");
    for (const char* word : {"--", "-"}) {
        const ProgramResult result = runProgram({builtProgram("zem"), word});
        EXPECT_EQ(result.status, 255) << word;
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(matchesGolden("zem/usage.txt", result.err));
    }
}

TEST(ZemUsageTest, WithoutADisplayItSaysSo)
{
    unsetenv("DISPLAY");
    const ProgramResult result = runProgram({builtProgram("zem")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("Can't open display"), std::string::npos);
}

TEST_F(ZemCommandLineTest, EachReportTypeShowsItsRows)
{
    const std::string byFile = picture({_log});
    EXPECT_NE(byFile, "");
    EXPECT_TRUE(byFile == picture({"-dF", _log}));
    std::vector<std::string> shown = {byFile};
    for (const char* word : {"-dd", "-df", "-do"}) {
        shown.push_back(picture({word, _log}));
        EXPECT_NE(shown.back(), "") << word;
        for (size_t i = 0; i + 1 < shown.size(); ++i) {
            EXPECT_FALSE(shown[i] == shown.back()) << word;
        }
        EXPECT_EQ(_run.err(), "");
    }
}

TEST_F(ZemCommandLineTest, EachManglingLevelShowsItsNames)
{
    const std::string simple = picture({"-df", _log});
    EXPECT_TRUE(simple == picture({"-df", "-ns", _log}));
    const std::string extended = picture({"-df", "-ne", _log});
    EXPECT_FALSE(extended == simple);
    const std::string modifiers = picture({"-df", "-nm", _log});
    EXPECT_FALSE(modifiers == simple);
    EXPECT_FALSE(modifiers == extended);
    expectSame({"-nm", "-ns", "-df", _log}, {"-df", _log});
}

TEST_F(ZemCommandLineTest, SortKeysMayBeGluedOrApart)
{
    const std::string shown = picture({"-sF%", _log});
    EXPECT_TRUE(shown == picture({"-s", "F%", _log}));
    EXPECT_FALSE(shown == picture({_log}));
    expectSame({"-sdFf", _log}, {"-s", "dFf", _log});
}

TEST_F(ZemCommandLineTest, AFilterLeavesItsNameOnly)
{
    const std::string shown = picture({"-df", "-ff", "main", _log});
    EXPECT_NE(shown, "");
    EXPECT_FALSE(shown == picture({"-df", _log}));
    expectSame({"-dF", "-fF", "lib/a.cpp", _log}, {"-fF", "lib/a.cpp", _log});
    EXPECT_FALSE(picture({"-dd", "-fd", "lib", _log}) == picture({"-dd", _log}));
    EXPECT_FALSE(picture({"-do", "-fo", "A", _log}) == picture({"-do", _log}));
}

TEST_F(ZemCommandLineTest, UnknownLettersComplainAndGoOn)
{
    expectComplaint({"-dz", _log}, "Unknown report type option: -dz\n", {_log});
    expectComplaint({"-df", "-nz", _log}, "Unknown mangling level option: -nz\n", {"-df", _log});
    expectComplaint({"-fz", "x", _log}, "Unknown report type option: -fz\n", {_log});
}

TEST_F(ZemCommandLineTest, AMissingWordAtTheEndReadsNothingPastIt)
{
    expectComplaint({_log, "-d"}, "Unknown report type option: -d\n", {_log});
    expectComplaint({_log, "-f"}, "Unknown report type option: -f\n", {_log});
    expectComplaint({_log, "-n"}, "Unknown mangling level option: -n\n", {_log});
    expectComplaint({_log, "-ff"}, "", {_log});
    expectSame({_log, "-s"}, {_log});
    EXPECT_EQ(_run.err(), "");
}

TEST_F(ZemCommandLineTest, UnknownOptionsAreSilentAndNoFiles)
{
    expectSame({"-q", _log}, {_log});
    expectSame({"--help", "-h", _log}, {_log});
    EXPECT_EQ(_run.err(), "");
}

TEST_F(ZemCommandLineTest, WordsWithoutArgumentsMayBeCombined)
{
    for (const char* word : {"-cte", "-ctX", "-ecteX", "-c", "-cx", "-e", "-X", "-ct"}) {
        expectSame({word, _log}, {_log});
        EXPECT_EQ(_run.err(), "") << word;
    }
}

TEST_F(ZemCommandLineTest, TheFirstTerminatorIsEatenBeforeTheOptionsAreRead)
{
    expectSame({"--", "-df", _log}, {"-df", _log});
    expectSame({"--", "--", "-df", _log}, {_log});
    expectSame({"-", "-df", _log}, {"-df", _log});
}

TEST_F(ZemCommandLineTest, ALoneTerminatorBehindTheFirstEndsTheProgram)
{
    _run.start({"--", "--"});
    EXPECT_EQ(_run.end(), 255);
    EXPECT_EQ(_run.err(), usageText());
}

TEST_F(ZemCommandLineTest, AFailedLogIsNamedAndTheOthersAreShown)
{
    const std::string none = _dir.path("none.log");
    const std::string shown = picture({none, _log, _dir.path()});
    EXPECT_EQ(_run.err(), " *** RptArea::report: Error processing " + none +
                              ": fopen failed\n *** RptArea::report: Error processing " +
                              _dir.path() + ": file corrupt\n");
    EXPECT_TRUE(shown == picture({_log}));
}

TEST_F(ZemCommandLineTest, AnEmptyWordIsAFileThatCannotBeOpened)
{
    picture({"", _log});
    EXPECT_EQ(_run.err(), " *** RptArea::report: Error processing : fopen failed\n");
}

TEST_F(ZemCommandLineTest, SeveralLogsMakeOneReport)
{
    const std::string one = picture({_log});
    const std::string two = picture({_log, _log});
    EXPECT_NE(two, "");
    EXPECT_FALSE(one == two);
}

TEST_F(ZemCommandLineTest, WithoutALogTheWindowOpensEmpty)
{
    _run.start({});
    const Window window = _run.mainWindow();
    ASSERT_NE(window, 0u);
    EXPECT_NE(_run.picture(window), "");
    EXPECT_EQ(_run.err(), "");
    EXPECT_EQ(_run.out(), "");
    EXPECT_TRUE(_run.running());
}

} // namespace
