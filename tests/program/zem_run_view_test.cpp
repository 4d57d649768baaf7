#include "tests/support/gtest_x.h"

#include "tests/program/ViewerRun.h"
#include "tests/support/Pixels.h"
#include "tests/support/Program.h"
#include "tests/support/XInput.h"

#include <string>

namespace {

// From a program's sources to the rows in the window, by zem-run alone.
class ZemRunViewTest : public ::testing::Test
{
protected:
    static constexpr int Sources = 40; // the window is to show 30 of them

    void SetUp() override
    {
        ASSERT_TRUE(_run.started()) << _run.server().problem();
        std::string text;
        std::string calls;
        for (int i = 0; i < Sources; ++i) {
            const std::string number = std::to_string(10 + i);
            text += "#line 1 \"part" + number + ".cc\"\nint part" + number +
                    "()\n{\n    return 1;\n}\n";
            calls += i % 2 == 0 ? " + part" + number + "()" : "";
        }
        _dir.write("all.cc",
                   text + "#line 1 \"part99.cc\"\nint main()\n{\n    return 0" + calls + ";\n}\n");
        const ProgramResult built =
            runProgram({"sh", "-c", "cd '" + _dir.path() + "' && g++ --coverage -o all all.cc"});
        ASSERT_EQ(built.status, 0) << built.err;
    }

    // In how many rows of the report there is a bar with this colour, from the top.
    int rows(Window window, unsigned long color)
    {
        const Pixels picture(_run.display(), window);
        int found = 0;
        bool isInside = false;
        for (int y = 0; y < picture.height(); ++y) {
            const bool isBar = picture.count(250, y, 350, 1, color) > 0; // no icons here
            found += isBar && !isInside ? 1 : 0;
            isInside = isBar;
        }
        return found;
    }

    ViewerRun _run;
    TempDir _dir;
};

TEST_F(ZemRunViewTest, OneCommandLeadsToTheRowsOnTheScreen)
{
    ASSERT_TRUE(_run.server().startWindowManager());
    const unsigned long red = _run.color("OrangeRed2");
    _run.startProgram("zem-run", {"--build", _dir.path(), "-o", _dir.path("coverage"), "--name",
                                  "all", "--view", "--", _dir.path("all")});
    const Window window = _run.mainWindow();
    ASSERT_NE(window, 0u) << _run.err();
    ASSERT_NE(_run.picture(window, red), "") << _run.err();
    saveScreenshot(_run.display(), window, "zem-run");
    EXPECT_EQ(_run.width(window), 900);
    // Every other source has a function that never ran.
    EXPECT_GE(rows(window, red), 15);
    EXPECT_GE(rows(window, _run.color("SeaGreen4")), 15);
    XInput::closeWindow(_run.display(), window);
    EXPECT_EQ(_run.end(), Sources / 2) << "the command's status, however the viewer ends";
    EXPECT_NE(_run.err().find("wrote " + _dir.path("coverage/all.log")), std::string::npos)
        << _run.err();
}

} // namespace
