// What somebody sees who opens real coverage for the first time: in each report, the name and the
// bar of every row of the first canvas.
#include "tests/support/gtest_x.h"

#include "tests/program/ViewerRun.h"
#include "tests/support/Pixels.h"
#include "tests/support/Program.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int RowsOfTheFirstCanvas = 7;
constexpr int RowHeight = 26;  // pixels, two lines of the font
constexpr int ColumnWidth = 6; // pixels
constexpr int LeastBar = 20;   // columns that the longest name leaves for bars

class ZemFirstLookTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(_run.started()) << _run.server().problem();
        _selected = _run.color("LightSkyBlue3");
        _black = _run.color("Black");
    }

    // Runs the lines in a shell, in a folder of the test's own.
    void shell(const std::string& lines)
    {
        const ProgramResult result =
            runProgram({"sh", "-ec", "cd '" + _dir.path() + "'\n" + lines});
        ASSERT_EQ(result.status, 0) << result.out << result.err;
    }

    // The labels of a report in the order in which it shows them.
    std::vector<std::string> labels(const std::string& type, const std::string& log)
    {
        std::istringstream lines(runProgram({builtProgram("zem-report"), type, "-sdFf%", log}).out);
        std::vector<std::string> found;
        std::string line;
        std::getline(lines, line); // the names of the columns
        while (std::getline(lines, line) && line[0] != ' ') {
            found.push_back(line.substr(0, line.find('\t')));
        }
        return found;
    }

    // The first x of a line of pixels at which a bar's frame stands: no background, no text.
    int barOf(const Pixels& picture, int y)
    {
        const unsigned long background = picture.at(_left, y);
        for (int x = _left; x < _right; ++x) {
            const unsigned long pixel = picture.at(x, y);
            if (pixel != background && pixel != _black) {
                return x;
            }
        }
        return _right;
    }

    int firstText(const Pixels& picture, int top)
    {
        for (int x = _left; x < _right; ++x) {
            if (picture.count(x, top, 1, RowHeight, _black) > 0) {
                return x;
            }
        }
        return _right;
    }

    void expectRowsToBeSeen(const Pixels& picture, const std::vector<std::string>& names)
    {
        int top = 0;
        while (top < picture.height() && picture.find(0, top, _selected) < 0) {
            ++top;
        }
        _left = picture.find(0, top, _selected);
        ASSERT_GE(_left, 0) << "no row is selected";
        _right = _left + picture.runRight(_left, top, _selected);
        const size_t nRows = std::min<size_t>(names.size(), RowsOfTheFirstCanvas);
        for (size_t i = 0; i < nRows; ++i) {
            const int y = top + static_cast<int>(i) * RowHeight;
            const int bar = barOf(picture, y + RowHeight / 2);
            EXPECT_LE(bar, _right - LeastBar * ColumnWidth) << names[i];
            // A letter does not fill its column.
            EXPECT_GE(bar - firstText(picture, y),
                      ColumnWidth * static_cast<int>(names[i].size()) - ColumnWidth / 2)
                << names[i];
        }
    }

    void expectFirstLooks(const std::string& name)
    {
        const std::string log = _dir.path("cov/" + name + ".log");
        for (const std::string type : {"-dd", "-dF", "-df", "-do"}) {
            SCOPED_TRACE(name + " " + type);
            _run.start({type, "-sdFf%", log});
            const Window window = _run.mainWindow();
            ASSERT_NE(window, 0u);
            ASSERT_NE(_run.picture(window, _selected), "");
            expectRowsToBeSeen(Pixels(_run.display(), window), labels(type, log));
            saveScreenshot(_run.display(), window, "first-look-" + name + type);
        }
        EXPECT_EQ(_run.err(), "");
    }

    TempDir _dir;
    ViewerRun _run;
    unsigned long _selected = 0;
    unsigned long _black = 0;
    int _left = 0; // of the canvas, pixels in the window
    int _right = 0;
};

TEST_F(ZemFirstLookTest, RowsOfASampleProgramAreSeenWhole)
{
    shell("cp '" ZEM_SOURCE_DIR "'/tests/data/gcc-coverage/* .\n"
          "g++ --coverage -O0 *.cc -o sample\n"
          "./sample\n" +
          builtProgram("zem-import") + " gcc -o cov --name sample .");
    expectFirstLooks("sample");
}

// Lambdas, templates and paths of a project of some size.
TEST_F(ZemFirstLookTest, RowsOfThisProjectAreSeenWhole)
{
    const std::string tree = ZEM_SOURCE_DIR;
    shell("for unit in tools/import/gcc/GccTree zem/Lines/LineIndex zem/Rows/RowGroups; do\n"
          "    g++ -std=c++17 -O0 --coverage -c '-I" +
          tree + "' '" + tree +
          "'/\"$unit.cpp\"\n"
          "done\n" +
          builtProgram("zem-import") + " gcc -o cov --name project .");
    expectFirstLooks("project");
}

} // namespace
