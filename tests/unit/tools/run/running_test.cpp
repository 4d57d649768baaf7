// SPDX-License-Identifier: MIT
//
// Types the commands of docs/running.md, each section in a project of its own
// (tests/data/run-projects). A section whose tools are not installed is passed over.
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Section
{
    const char* heading;
    std::vector<const char*> tools;
    const char* log; // of all tests
    std::set<std::string> each;
};

void PrintTo(const Section& section, std::ostream* out)
{
    *out << section.heading;
}

// The commands below a heading: its indented lines.
std::vector<std::string> commandsBelow(const std::string& heading)
{
    std::vector<std::string> commands;
    std::ifstream page(ZEM_SOURCE_DIR "/docs/running.md");
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("## ", 0) == 0) {
            isInside = line.substr(3) == heading;
        } else if (isInside && line.rfind("    ", 0) == 0) {
            commands.push_back(line.substr(4));
        }
    }
    return commands;
}

class RunningTest : public ::testing::TestWithParam<Section>
{
protected:
    // Nobody is there to look at a window.
    static std::string withoutView(std::string command)
    {
        const size_t view = command.find("--view ");
        return view == std::string::npos ? command : command.erase(view, 7);
    }

    ProgramResult shell(const std::string& command) const
    {
        return runProgram({"sh", "-c", "cd '" + _dir.path("project") + "' && " + command});
    }

    // Every function of the library ran, in the tests that call it.
    bool isCovered(const std::string& logs, const std::string& function) const
    {
        const std::string report = shell("zem-report -df " + logs).out;
        const size_t row = report.find("\n" + function + "\t");
        return row != std::string::npos &&
               report.substr(row, report.find('\n', row + 1) - row).find("\t0\t100%") !=
                   std::string::npos;
    }

    TempDir _dir;
};

TEST_P(RunningTest, TheCommandsOfThePageDoWhatItSays)
{
    const Section& section = GetParam();
    setenv("PATH", (ZEM_BINARY_DIR "/bin:" + std::string(getenv("PATH"))).c_str(), 1);
    for (const char* tool : section.tools) {
        if (runProgram({"sh", "-c", std::string("command -v ") + tool}).status != 0) {
            GTEST_SKIP() << tool << " is not installed";
        }
    }
    fs::copy(ZEM_SOURCE_DIR "/tests/data/run-projects", _dir.path("project"));
    const std::vector<std::string> commands = commandsBelow(section.heading);
    ASSERT_GE(commands.size(), 4u);
    for (const std::string& command : commands) {
        const ProgramResult result = shell(withoutView(command));
        ASSERT_EQ(result.status, 0) << command << "\n" << result.out << result.err;
    }
    EXPECT_TRUE(isCovered(std::string("coverage/") + section.log + ".log", "half"));
    EXPECT_TRUE(isCovered(std::string("coverage/") + section.log + ".log", "third"));
    std::set<std::string> each;
    for (const auto& entry : fs::directory_iterator(_dir.path("project/each"))) {
        if (entry.path().extension() == ".log") {
            each.insert(entry.path().stem());
        }
    }
    EXPECT_EQ(each, section.each);
    for (const std::string& name : section.each) {
        const bool isHalf = name.find("half") != std::string::npos;
        EXPECT_EQ(isCovered("each/" + name + ".log", "half"), isHalf) << name;
        EXPECT_EQ(isCovered("each/" + name + ".log", "third"), !isHalf) << name;
    }
    EXPECT_TRUE(isCovered("each/*.log", "half"));
}

INSTANTIATE_TEST_SUITE_P(
    Page, RunningTest,
    ::testing::Values(
        Section{"CMake", {"ctest"}, "ctest", {"half", "third"}},
        Section{"CMake with Clang", {"ctest", "clang++"}, "ctest", {"half", "third"}},
        Section{"Meson", {"meson", "ninja"}, "meson", {"half", "third"}},
        Section{"Automake", {"autoreconf", "automake"}, "make", {"test_half", "test_third"}},
        Section{"Makefiles and scripts", {"make"}, "runtests.sh", {"test_half", "test_third"}}));

} // namespace
