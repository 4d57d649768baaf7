// SPDX-License-Identifier: MIT
//
// The whole way from documents of other tools to the report, with the built programs. What those
// tools say themselves is asked of them when they are installed.
#include "tests/support/TempDir.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>

namespace {

const char samples[] = ZEM_SOURCE_DIR "/tests/data/formats/";
const char program[] = ZEM_BINARY_DIR "/bin/zem-";

class ZemImportDocumentsTest : public ::testing::Test
{
protected:
    // Runs a shell command in the test's folder; its output goes into the file "out".
    int run(const std::string& command)
    {
        const std::string line = "cd '" + _dir.path() + "' && { " + command + "; } > out 2>&1";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string output() const { return TempDir::read(_dir.path("out")); }

    // The last line of the report of one log.
    std::string totals(const std::string& log)
    {
        EXPECT_EQ(run(std::string(program) + "report " + log + " | tail -1"), 0);
        return output();
    }

    // "59 of 69" of the line that begins with `word`.
    std::string summaryOf(const std::string& word) const
    {
        const std::string text = output();
        const size_t at = text.find(word);
        const size_t open = text.find('(', at);
        return at == std::string::npos
                   ? text
                   : text.substr(open + 1, text.find(" lines", open) - open - 1);
    }

    const TempDir _dir;
};

TEST_F(ZemImportDocumentsTest, EachKindGivesTheTotalsOfItsTool)
{
    const std::string in = samples;
    const std::pair<const char*, std::string> kinds[] = {
        {"lcov", in + "lcov-1.16.info"}, {"cobertura", in + "gcovr-5.2.xml"}, {"gcov", in}};
    for (const auto& kind : kinds) {
        const std::string name = kind.first;
        ASSERT_EQ(run(std::string(program) + "import " + name + " --name " + name + " '" +
                      kind.second + "'"),
                  0)
            << output();
        EXPECT_NE(totals(name + ".log").find("59 tested, 10 untested"), std::string::npos)
            << name << output();
    }
}

// The indented block of docs/importing.md that has a line beginning with `command`.
std::string blockWith(const std::string& command)
{
    std::istringstream lines(TempDir::read(ZEM_SOURCE_DIR "/docs/importing.md"));
    std::string block;
    bool isWanted = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 4, "    ") == 0) {
            isWanted = isWanted || line.compare(4, command.size(), command) == 0;
            block += line.substr(4) + "\n";
        } else if (isWanted) {
            break;
        } else {
            block.clear();
        }
    }
    return isWanted ? block : std::string();
}

// The window is none of this test's: the report has the same numbers.
TEST_F(ZemImportDocumentsTest, CommandsOfTheDocumentWork)
{
    _dir.write("main.cc", "int half(int n)\n{\n    return n / 2;\n}\n\nint main(int argc, char**)\n"
                          "{\n    return argc > 1 ? half(argc) : 0;\n}\n");
    _dir.write("bin/zem", std::string("#!/bin/sh\nexec ") + program + "report \"$@\"\n");
    ASSERT_EQ(run("chmod +x bin/zem && g++ --coverage -c main.cc && g++ --coverage main.o -o p && "
                  "./p"),
              0)
        << output();
    const std::pair<const char*, const char*> rows[] = {{"lcov", "zem-import lcov"},
                                                        {"gcovr", "zem-import cobertura"},
                                                        {"gcov", "zem-import gcov"},
                                                        {"clang++", "clang++ --coverage"}};
    for (const auto& row : rows) {
        // Another compiler does not add to what the first one left.
        const std::string head = row.first == std::string("clang++") ? "rm main.gc*\n" : "";
        const std::string block = head + blockWith(row.second);
        ASSERT_NE(block, head) << row.second;
        if (run(std::string("command -v ") + row.first) != 0) {
            continue;
        }
        EXPECT_EQ(
            run("export PATH=\"$PWD/bin:" ZEM_BINARY_DIR "/bin:$PATH\"\nset -e\n" + block + "true"),
            0)
            << block << output();
        EXPECT_NE(output().find("tested, "), std::string::npos) << block << output();
    }
}

TEST_F(ZemImportDocumentsTest, EachLineOfATracefileComesOutAgain)
{
    _dir.write("lines.awk", "/^SF/ { file = $0 } /^DA/ { split($0, part, /[:,]/)\n"
                            "sum[file \":\" part[2]] += part[3] }\n"
                            "END { for (line in sum) print line, sum[line] }\n");
    for (const char* name : {"lcov-1.16.info", "lcov-1.16-branches.info", "llvm-cov-14.info"}) {
        const std::string sample = std::string("'") + samples + name + "'";
        ASSERT_EQ(run("cp " + sample + " in.info && " + program + "import lcov --name t in.info"),
                  0)
            << output();
        EXPECT_EQ(run(std::string(program) +
                      "report --format lcov t.log > out.info && "
                      "awk -f lines.awk in.info | sed 's,/clang/[.][.]/,/,' | sort > in.txt && "
                      "awk -f lines.awk out.info | sort > out.txt && "
                      "test -s in.txt && diff in.txt out.txt"),
                  0)
            << name << output();
    }
}

TEST_F(ZemImportDocumentsTest, EachTestOfATracefileIsALog)
{
    _dir.write("t.info", "TN:one\nSF:/a.c\nFN:1,f\nDA:1,1\nDA:2,0\nend_of_record\n"
                         "TN:two\nSF:/a.c\nFN:1,f\nDA:1,0\nDA:2,1\nend_of_record\n");
    ASSERT_EQ(run(std::string(program) + "import lcov t.info"), 0) << output();
    EXPECT_NE(totals("one.log").find("1 tested, 1 untested"), std::string::npos) << output();
    EXPECT_NE(totals("two.log").find("1 tested, 1 untested"), std::string::npos) << output();
    EXPECT_EQ(run("ls *.map | wc -l"), 0);
    EXPECT_EQ(std::atoi(output().c_str()), 1) << output();
}

TEST_F(ZemImportDocumentsTest, DamageLeavesNoFileAndStatusOne)
{
    _dir.write("t.info", "TN:\nSF:/a.c\nDA:1,1\n");
    EXPECT_EQ(run(std::string(program) + "import lcov -o to t.info"), 1);
    EXPECT_EQ(output(), "zem-import: t.info:3: the file ends within a section: it is cut short\n");
    EXPECT_NE(run("ls to"), 0);
}

TEST_F(ZemImportDocumentsTest, InstalledToolsSayTheSame)
{
    if (run("lcov --version") != 0) {
        GTEST_SKIP() << "no lcov";
    }
    for (const char* name : {"lcov-1.16.info", "lcov-1.16-branches.info", "llvm-cov-14.info"}) {
        ASSERT_EQ(run(std::string("lcov --summary '") + samples + name + "'"), 0) << output();
        const std::string said = summaryOf("lines...");
        ASSERT_EQ(run(std::string(program) + "import lcov --name t '" + samples + name + "'"), 0);
        const std::string report = totals("t.log");
        const int tested = std::atoi(said.c_str());
        const int all = std::atoi(said.c_str() + said.find(" of ") + 4);
        EXPECT_NE(report.find(" " + std::to_string(tested) + " tested, " +
                              std::to_string(all - tested) + " untested"),
                  std::string::npos)
            << name << ": " << said << ": " << report;
    }
}

} // namespace
