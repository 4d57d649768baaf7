// What docs/formats and docs/ci.md say of zem-report: their samples are what it writes, their
// commands run.
#include "tests/support/DataFiles.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string document(const std::string& name)
{
    return TempDir::read(std::string(ZEM_SOURCE_DIR) + "/docs/" + name);
}

// The last block between fences.
std::string sampleOf(const std::string& page)
{
    const std::string text = document("formats/" + page);
    const size_t end = text.rfind("\n```");
    const size_t fence = text.rfind("\n```", end - 1);
    const size_t start = text.find('\n', fence + 1);
    return text.substr(start + 1, end - start);
}

// Runs a shell command in `folder` with the programs of this build first.
ProgramResult runIn(const std::string& folder, const std::string& command)
{
    const std::string program = builtProgram("zem-report");
    return runProgram({"sh", "-c",
                       "cd '" + folder + "' && PATH=" + program.substr(0, program.rfind('/')) +
                           ":$PATH && export PATH && " + command});
}

class ReportDocumentsTest : public ::testing::Test
{
protected:
    // As docs/formats/map.md and log.md have them.
    ReportDocumentsTest()
    {
        mapFile(
            {{"src/a.c", {{"main__Fv", 3, 9, {{3, 5}, {6, 9}}}, {"f__Fi", 11, 13, {{11, 13}}}}}})
            .write(_dir.path("p.map"));
        logFile({{"src/a.c", "p.map", {1, 0, 500}}}).write(_dir.path("p.log"));
    }

    std::string written(const std::string& options) const
    {
        const ProgramResult result =
            runIn(_dir.path(), "SOURCE_DATE_EPOCH=0 zem-report " + options + " p.log");
        EXPECT_EQ(result.status, 0) << result.err;
        std::string text = result.out;
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }

    TempDir _dir;
};

TEST_F(ReportDocumentsTest, TheSamplesAreWhatIsWritten)
{
    EXPECT_EQ(sampleOf("report-csv.md"), written("--format csv -df"));
    EXPECT_EQ(sampleOf("report-json.md"), written("--format json"));
    EXPECT_EQ(sampleOf("lcov.md"), written("--format lcov2"));
    EXPECT_EQ(sampleOf("cobertura.md"), written("--format cobertura"));
}

// The commands of the page: the lines of its shell blocks, and what begins with a program of ours
// in the others.
std::vector<std::string> commandsOf(const std::string& page)
{
    std::vector<std::string> commands;
    std::istringstream text(document(page));
    bool isInside = false;
    bool isShell = false;
    for (std::string line; std::getline(text, line);) {
        if (line.rfind("```", 0) == 0) {
            isInside = !isInside;
            isShell = line == "```sh";
            continue;
        }
        const size_t program = line.find("zem-");
        if (!isInside || (!isShell && program == std::string::npos)) {
            continue;
        }
        const std::string before = line.substr(0, program);
        if (isShell) {
            commands.push_back(line);
        } else if (before.find_first_not_of(" -") == std::string::npos) {
            commands.push_back(line.substr(program));
        } else if (before == "sh '") {
            commands.push_back(line.substr(program, line.rfind('\'') - program));
        }
    }
    return commands;
}

TEST_F(ReportDocumentsTest, TheCommandsForContinuousIntegrationRun)
{
    _dir.write("src/main.cc", "static int twice(int n)\n{\n    return n > 100 ? 0 : 2 * n;\n}\n"
                              "int main(int n, char**)\n{\n    return twice(n) - 2;\n}\n");
    _dir.write("build/folder", "");
    ASSERT_EQ(runIn(_dir.path("build"), "g++ --coverage -O0 ../src/main.cc -o program && ./program")
                  .status,
              0);
    const std::vector<std::string> commands = commandsOf("ci.md");
    EXPECT_EQ(commands.size(), 13u);
    for (const std::string& command : commands) {
        const ProgramResult result = runIn(_dir.path(), command);
        EXPECT_EQ(result.status, 0) << command << "\n" << result.out << result.err;
        EXPECT_EQ(result.err, "") << command;
    }
    for (const char* name : {"coverage.xml", "coverage.info", "coverage.json", "coverage.csv"}) {
        EXPECT_NE(TempDir::read(_dir.path(name)), "") << name;
    }
}

} // namespace
