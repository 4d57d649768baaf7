// SPDX-License-Identifier: MIT
//
// Starts the viewer with a log while one allocation of its own code after the other fails, and
// judges what is on the screen then: the right rows, or none and a message in the status bar; or
// the program has ended with a message and a status other than 0. A window that lacks an icon or
// the text of a label for want of memory is right all the same.
#include "tests/support/gtest_x.h"

#include "tests/faults/FaultRun.h"
#include "tests/program/ViewerRun.h"
#include "tests/support/DataFiles.h"
#include "tests/support/Pixels.h"
#include "tests/support/XInput.h"

#include <X11/Xutil.h>

#include <csignal>
#include <regex>
#include <string>
#include <vector>

namespace {

// In pixels.
constexpr int Left = 12; // of the rows, behind the frame
constexpr int RowsWidth = 560;
constexpr int RowsHeight = 5 * 26;
constexpr int StatusHeight = 34; // with the frames around it
constexpr size_t Sample = 12;

class ViewerFaultsTest : public ::testing::Test
{
protected:
    struct Screen
    {
        std::string rows;      // their pixels, from the top of the selected one; empty without one
        int messagePixels = 0; // of text in the status bar's left half
    };

    void SetUp() override
    {
        ASSERT_TRUE(_run.started()) << _run.server().problem();
        std::vector<MapSource> sources;
        std::vector<LogSource> counts;
        const std::string map = _dir.path("p.map");
        for (int i = 0; i < 5; ++i) {
            const std::string path = "src/file" + std::to_string(i) + ".cpp";
            const std::string name = "Part" + std::to_string(i) + "::run__FPCci";
            sources.push_back({path, {{name, 1, 9, {{1, 4}, {5, 9}}}}});
            counts.push_back({path, map, {3, static_cast<uint32_t>(i % 2)}});
        }
        mapFile(sources).write(map);
        _log = logFile(counts).write(_dir.path("p.log"));
        _selected = _run.color("LightSkyBlue3");
        _text = _run.color("Black");
    }

    void start(const Fault& fault)
    {
        const FaultEnvironment environment(fault, _dir.path("counts"));
        _run.start({"-df", "-ne", "-sfb", _log});
    }

    Screen look(Window window)
    {
        Screen screen;
        const Pixels picture(_run.display(), window);
        const int bottom = picture.height() - StatusHeight;
        screen.messagePixels =
            picture.count(0, bottom, picture.width() / 2 - 20, StatusHeight, _text);
        int top = 0;
        while (top < bottom && picture.find(0, top, _selected) < 0) {
            ++top;
        }
        if (top + RowsHeight > bottom) {
            return screen;
        }
        XImage* image =
            XGetImage(_run.display(), window, Left, top, RowsWidth, RowsHeight, AllPlanes, ZPixmap);
        if (image != nullptr) {
            screen.rows.assign(image->data, static_cast<size_t>(image->bytes_per_line) *
                                                static_cast<size_t>(image->height));
            XDestroyImage(image);
        }
        return screen;
    }

    // Waits for what the program comes to, and looks at it; nothing to look at when it has ended.
    Screen outcome()
    {
        Screen screen;
        const Window window = _run.mainWindow();
        _run.waitFor([&] {
            if (!_run.waitUntilIdle() || !_run.running()) {
                return true;
            }
            screen = look(window);
            return screen.rows.empty() ? screen.messagePixels > 0 : screen.rows == _whole.rows;
        });
        return screen;
    }

    // Empty when all is well.
    std::string judge(const Screen& screen)
    {
        if (!_run.running()) {
            const int status = _run.end();
            // While the window is built, a part of it that cannot be made is an assertion.
            static const std::regex assertion(".*: Assertion `\\w+ != 0' failed\\.\n");
            // 255 is what the command line ends with.
            const bool isTold =
                (((status > 0 && status < 128) || status == 255) && !_run.err().empty()) ||
                (status == 128 + SIGABRT && std::regex_match(_run.err(), assertion));
            return isTold ? "" : "ended with " + std::to_string(status) + ": " + _run.err();
        }
        if (!screen.rows.empty()) {
            return screen.rows == _whole.rows ? "" : "other rows";
        }
        return screen.messagePixels > 0 ? "" : "no report and no message";
    }

    ViewerRun _run;
    TempDir _dir;
    std::string _log;
    Screen _whole;
    unsigned long _selected = 0;
    unsigned long _text = 0;
};

TEST_F(ViewerFaultsTest, WithoutMemoryItIsRightOrSaysSo)
{
    Fault fault = {"malloc", 0, "fail", ENOMEM, true};
    start(fault);
    const Window window = _run.mainWindow();
    ASSERT_NE(window, 0u);
    ASSERT_NE(_run.picture(window, _selected), "");
    _whole = look(window);
    ASSERT_FALSE(_whole.rows.empty());
    XInput::closeWindow(_run.display(), window);
    ASSERT_EQ(_run.end(), 0);
    const long total = FaultEnvironment::counts(_dir.path("counts"))["malloc"];
    EXPECT_GT(total, 100);

    for (const char* how : {"fail", "last"}) {
        fault.how = how;
        for (const long at : chosenCalls(total, Sample)) {
            fault.at = at;
            start(fault);
            const Screen screen = outcome();
            const std::string problem = judge(screen);
            EXPECT_EQ(problem, "") << fault.text() << " of " << total << ": " << _run.err();
        }
    }
    tellFaults("zem");
}

} // namespace
