// The formats as files and on the standard output, and what other readers find in them.
#include "tests/support/Golden.h"
#include "tests/unit/tools/report/ReportProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

class ReportFormatsTest : public ReportProgram
{
protected:
    // What a format prints.
    std::string printed(const std::string& format, std::vector<std::string> words = {}) const
    {
        words.insert(words.end(), {"--format", format, _log});
        const ProgramResult result = run(words);
        EXPECT_EQ(result.status, 0) << format;
        EXPECT_EQ(result.err, "") << format;
        return scrubbed(result.out);
    }

    // Runs a Python program on what a format prints; `text` is that.
    static std::string python(const std::string& text, const std::string& program)
    {
        const TempDir dir;
        const ProgramResult result = runProgram(
            {"python3", "-c", "import sys\ntext = open(sys.argv[1], newline='').read()\n" + program,
             dir.write("text", text)});
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }

    // A log of one file and one function with these names.
    std::string logOf(const std::string& path, const std::string& function) const
    {
        const std::string map =
            mapFile({{path, {{function, 1, 2, {{1, 2}}}}}}).write(_dir.path("named.map"));
        return logFile({{path, map, {1}}}).write(_dir.path("named.log"));
    }
};

TEST_F(ReportFormatsTest, Csv)
{
    EXPECT_TRUE(matchesGolden("zem-report/format-csv.txt", printed("csv")));
    EXPECT_TRUE(matchesGolden("zem-report/format-csv-function.txt",
                              printed("csv", {"-df", "-nm", "-sf%"})));
}

TEST_F(ReportFormatsTest, Json)
{
    EXPECT_TRUE(matchesGolden("zem-report/format-json.txt", printed("json")));
    EXPECT_TRUE(matchesGolden(
        "zem-report/format-json-function.txt",
        printed("json", {"-df", "-ne", "-s%", "-ff", "List::remove(int)", "-fF", "src/list.cpp"})));
}

TEST_F(ReportFormatsTest, Tracefile)
{
    EXPECT_TRUE(matchesGolden("zem-report/format-lcov.txt", printed("lcov")));
    EXPECT_TRUE(matchesGolden("zem-report/format-lcov2.txt", printed("lcov2")));
    // At the level asked for, two functions have one name.
    EXPECT_NE(printed("lcov", {"-ns"}).find("FN:41,List::remove@41\n"), std::string::npos);
    EXPECT_NE(printed("lcov", {"-n0"}).find("FN:41,List::remove__Fi\n"), std::string::npos);
}

TEST_F(ReportFormatsTest, Cobertura)
{
    EXPECT_TRUE(matchesGolden("zem-report/format-cobertura.txt", printed("cobertura")));
}

TEST_F(ReportFormatsTest, AnImportedTracefileIsWrittenAgainAsItWas)
{
    const std::string text = "TN:\nSF:" + _dir.path("src/a.c") +
                             "\nFN:1,3,main\nFN:5,9,helper\nFN:12,13,Foo::bar(int)\n"
                             "FNDA:4,main\nFNDA:0,helper\nFNDA:7,Foo::bar(int)\nFNF:3\nFNH:2\n"
                             "DA:1,4\nDA:2,900\nDA:3,4\nDA:5,0\nDA:9,0\nDA:12,7\nDA:13,0\n"
                             "LF:7\nLH:4\nend_of_record\n"
                             "TN:\nSF:" +
                             _dir.path("src/b.c") +
                             "\nFN:3,4,tiny\nFNDA:2147483647,tiny\nFNF:1\nFNH:1\n"
                             "DA:3,2147483647\nDA:4,1\nLF:2\nLH:2\nend_of_record\n";
    _dir.write("a.info", text);
    ASSERT_EQ(runProgram({builtProgram("zem-import"), "lcov", "-o", _dir.path("again"),
                          _dir.path("a.info")})
                  .status,
              0);
    EXPECT_EQ(run({"--format", "lcov2", _dir.path("again/coverage.log")}).out, text);
    // And so it is by way of the other format of lines.
    EXPECT_EQ(
        run({"--format", "cobertura", "-o", _dir.path("a.xml"), _dir.path("again/coverage.log")})
            .status,
        0);
    ASSERT_EQ(runProgram({builtProgram("zem-import"), "cobertura", "-o", _dir.path("third"),
                          _dir.path("a.xml")})
                  .status,
              0);
    const std::string third = run({"--format", "lcov", _dir.path("third/coverage.log")}).out;
    const auto lines = [](const std::string& tracefile) {
        std::string result;
        std::istringstream stream(tracefile);
        for (std::string line; std::getline(stream, line);) {
            result += line.rfind("DA:", 0) == 0 || line.rfind("SF:", 0) == 0 ? line + "\n" : "";
        }
        return result;
    };
    EXPECT_EQ(lines(third), lines(text));
}

TEST_F(ReportFormatsTest, CoberturaNamesFilesFromTheirCommonFolder)
{
    const std::string map =
        mapFile({{"/home/me/src/a/x.c", {{"f", 1, 1, {{1, 1}}}}}, {"/home/me/src/ab.c", {}}})
            .write(_dir.path("absolute.map"));
    const std::string log = logFile({{"/home/me/src/a/x.c", map, {1}}}).write(_dir.path("ab.log"));
    const std::string xml = run({"--format", "cobertura", log}).out;
    EXPECT_NE(xml.find("<source>/home/me/src</source>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("filename=\"a/x.c\""), std::string::npos) << xml;
    EXPECT_NE(xml.find("filename=\"ab.c\""), std::string::npos) << xml;
    // That of one file is its own.
    const std::string alone =
        mapFile({{"/home/me/x.c", {{"f", 1, 1, {{1, 1}}}}}}).write(_dir.path("alone.map"));
    const std::string one = run({"--format", "cobertura",
                                 logFile({{"/home/me/x.c", alone, {1}}}).write(_dir.path("o.log"))})
                                .out;
    EXPECT_NE(one.find("<source>/home/me</source>"), std::string::npos) << one;
    EXPECT_NE(one.find("filename=\"x.c\""), std::string::npos) << one;
}

TEST_F(ReportFormatsTest, FiltersCountInEachFormat)
{
    const std::string lcov = printed("lcov", {"-fF", "src/list.cpp", "-ff", "List::append"});
    EXPECT_EQ(lcov.find("main"), std::string::npos);
    EXPECT_EQ(lcov.find("remove"), std::string::npos);
    EXPECT_NE(lcov.find("LF:8\nLH:7\n"), std::string::npos) << lcov;
    const std::string xml = printed("cobertura", {"-dd", "-fd", "lib"});
    EXPECT_EQ(xml.find("list.cpp"), std::string::npos);
    EXPECT_NE(xml.find("lines-covered=\"0\" lines-valid=\"5\""), std::string::npos) << xml;
}

// Each block once in the first sum, once for each log in the second.
TEST_F(ReportFormatsTest, BothSumsAreThereWithTheirNames)
{
    const std::string other =
        logFile({{"src/main.cpp", _map, {0, 0}}}).write(_dir.path("other.log"));
    const ProgramResult text = run({"--summary", _log, other});
    EXPECT_TRUE(matchesGolden("zem-report/summary.txt", text.out));
    const std::string csv = run({"--format", "csv", _log, other}).out;
    EXPECT_NE(csv.find("sum,merged blocks,,,5,3,62.50,11\r\nsum,log records,,,5,5,50.00,\r\n"),
              std::string::npos)
        << csv;
    const std::string json = run({"--format", "json", _log, other}).out;
    EXPECT_EQ(python(json, "import json\nt = json.loads(text)['totals']\n"
                           "print(t['merged'], t['logRecords'])"),
              "{'covered': 5, 'uncovered': 3, 'percent': 62.5, 'hits': 11} "
              "{'covered': 5, 'uncovered': 5, 'percent': 50.0}\n");
}

TEST_F(ReportFormatsTest, SeveralFilesInOneRun)
{
    const ProgramResult result =
        run({"--format", "lcov", "-o", _dir.path("a.info"), "--format=json", "-o",
             _dir.path("b.json"), "--format", "text", _log});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, run({_log}).out);
    EXPECT_EQ(TempDir::read(_dir.path("a.info")), run({"--format", "lcov", _log}).out);
    EXPECT_EQ(TempDir::read(_dir.path("b.json")), run({"--format", "json", _log}).out);
}

TEST_F(ReportFormatsTest, WithFilesAloneNothingIsPrinted)
{
    const ProgramResult result = run({"-o", _dir.path("a.txt"), _log});
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(TempDir::read(_dir.path("a.txt")), run({_log}).out);
}

TEST_F(ReportFormatsTest, AFileThatCannotBeWrittenIsAFailureAndTheOthersAreThere)
{
    const ProgramResult result = run({"--format", "lcov", "-o", _dir.path("no/a.info"), "--format",
                                      "csv", "-o", _dir.path("a.csv"), _log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "zem-report: cannot write " + _dir.path("no/a.info") +
                              ": No such file or directory\n");
    EXPECT_NE(TempDir::read(_dir.path("a.csv")), "");
    const ProgramResult full = run({"--format", "json", "-o", "/dev/full", _log});
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "zem-report: cannot write /dev/full: No space left on device\n");
}

// Who reads it does not see that a log is missing.
TEST_F(ReportFormatsTest, WithoutOneOfTheLogsThereIsNoNewFile)
{
    const std::string file = _dir.write("a.info", "old");
    const ProgramResult result =
        run({"--format", "lcov", "-o", file, "--format", "text", _log, _dir.path("none.log")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, run({_log}).out);
    EXPECT_NE(
        result.err.find("zem-report: " + file + " is not written: not every log was merged\n"),
        std::string::npos)
        << result.err;
    EXPECT_EQ(TempDir::read(file), "old");
}

// An empty table or document would pass for the report of a program without code.
TEST_F(ReportFormatsTest, WithoutAnyLogNothingIsPrinted)
{
    for (const char* format : {"text", "csv", "json", "lcov", "lcov2", "cobertura"}) {
        const ProgramResult result = run({"--format", format, _dir.path("none.log")});
        EXPECT_EQ(result.status, 1) << format;
        EXPECT_EQ(result.out, "") << format;
        EXPECT_EQ(result.err.find("\nzem-report: nothing is printed: no log was merged\n") ==
                      std::string::npos,
                  std::string(format) == "text")
            << result.err;
    }
}

TEST_F(ReportFormatsTest, ALogIsNotWrittenOver)
{
    const std::string before = TempDir::read(_log);
    const ProgramResult result = run({"-o", _log, _log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(TempDir::read(_log), before);
}

TEST_F(ReportFormatsTest, NothingAtAllIsWellFormedToo)
{
    const std::string empty = logFile({}).startAt(0).write(_dir.path("empty.log"));
    EXPECT_EQ(run({"--format", "lcov", empty}).out, "");
    EXPECT_EQ(python(run({"--format", "json", empty}).out,
                     "import json\nd = json.loads(text)\nprint(d['rows'], d['files'])"),
              "[] []\n");
    EXPECT_EQ(python(run({"--format", "cobertura", empty}).out,
                     "import xml.etree.ElementTree as e\nprint(e.fromstring(text).tag)"),
              "coverage\n");
}

// A few hundred bytes of a map can claim that each function has all lines that there are.
TEST_F(ReportFormatsTest, LinesThatAMapClaimsAreBounded)
{
    std::vector<MapFunc> functions;
    for (int i = 0; i < 18; ++i) {
        functions.push_back({"f" + std::to_string(i), 1, 65535, {{1, 65535}}});
    }
    const std::string map = mapFile({{"a.c", functions}}).write(_dir.path("wide.map"));
    const std::string log =
        logFile({{"a.c", map, std::vector<uint32_t>(18, 1)}}).write(_dir.path("wide.log"));
    const std::string lcov = run({"--format", "lcov", log}).out;
    EXPECT_EQ(std::count(lcov.begin(), lcov.end(), '\n'), 65535 + 2 * 18 + 7);
    const std::string xml = run({"--format", "cobertura", log}).out;
    EXPECT_EQ(python(xml, "print(text.count('<line '), text.count('<method '))"),
              std::to_string(17 * 65535) + " 18\n");
}

// Every byte that a name can have, in an order that makes pairs of some.
std::string hostileName()
{
    std::string name =
        "a,\"b\"<&'>\\x0a\\\n\r\t\v\x7f\xef\xbf\xbe\xef\xbf\xbf\xc3\xa9]]>--\xe2\x80\xae";
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') {
            name += static_cast<char>(byte);
        }
    }
    return name;
}

TEST_F(ReportFormatsTest, HostileNamesAreReadBackByOthers)
{
    const std::string log = logOf("src/" + hostileName(), hostileName());
    // What the text shows is what the others say.
    const std::string text = run({"-df", log}).out;
    const size_t start = text.find('\n') + 1;
    const std::string shown = text.substr(start, text.find('\t', start) - start);
    ASSERT_GT(shown.size(), 250u);
    EXPECT_EQ(python(run({"-df", "--format", "csv", log}).out,
                     "import csv\nrows = list(csv.reader(text.split('\\r\\n')))\n"
                     "print(len(text.split('\\n')), len(rows[1]))\nprint(rows[1][1])"),
              "5 8\n" + shown + "\n");
    EXPECT_EQ(python(run({"-df", "--format", "json", log}).out,
                     "import json\nd = json.loads(text)\n"
                     "print(d['files'][0]['path'] == 'src/' + d['rows'][0]['name'])\n"
                     "print(d['rows'][0]['name'])"),
              "True\n" + shown + "\n");
    // Of the two characters that XML does not have the bytes are shown.
    EXPECT_EQ(python(run({"--format", "cobertura", log}).out,
                     "import xml.etree.ElementTree as e\n"
                     "c = e.fromstring(text.encode()).find('.//class')\n"
                     "print(c.get('name').replace('\\\\xef\\\\xbf\\\\xbe', '\\ufffe')"
                     ".replace('\\\\xef\\\\xbf\\\\xbf', '\\uffff'))"),
              shown + "\n");
}

TEST_F(ReportFormatsTest, AHostileNameStaysOnItsLineOfATracefile)
{
    const std::string name = hostileName();
    const std::string lcov = run({"--format", "lcov", logOf("src/" + name, name)}).out;
    EXPECT_EQ(std::count(lcov.begin(), lcov.end(), '\n'), 11) << lcov;
    for (const char control : {'\r', '\t', '\x01', '\x7f'}) {
        EXPECT_EQ(lcov.find(control), std::string::npos);
    }
    EXPECT_NE(lcov.find("\xc3\xa9"), std::string::npos);
}

// What the program prints on a terminal of its own.
std::string onTerminal(const std::string& terminal, const std::string& words)
{
    const ProgramResult result =
        runProgram({"env", "-u", "NO_COLOR", "TERM=" + terminal, "script", "-qec",
                    builtProgram("zem-report") + " " + words, "/dev/null"});
    std::string text = result.out;
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

TEST_F(ReportFormatsTest, OnATerminalThereAreBarsAndColoursAndBothSums)
{
    EXPECT_TRUE(matchesGolden("zem-report/terminal.txt", onTerminal("xterm", _log)));
    EXPECT_TRUE(matchesGolden("zem-report/terminal-plain.txt", onTerminal("dumb", _log)));
    EXPECT_EQ(onTerminal("xterm", "--color=never " + _log), onTerminal("dumb", _log));
    // What is under the limit is red, all else green.
    const std::string limited = onTerminal("xterm", "--fail-under-each=61 " + _log);
    EXPECT_NE(limited.find("\033[31m60%\033[0m"), std::string::npos) << limited;
    EXPECT_NE(limited.find("\033[32m100%\033[0m"), std::string::npos) << limited;
}

// A file has the names as they are, a terminal what is visible of them.
TEST_F(ReportFormatsTest, OnATerminalNoFormatHasNamesThatSteerIt)
{
    const std::string name = "\xc2\x9b"
                             "2J\xe2\x80\xae";
    const std::string log = logOf("src/" + name, name);
    EXPECT_NE(run({"--format", "lcov", log}).out.find("\nSF:src/" + name + "\n"),
              std::string::npos);
    const char* const words[] = {"csv", "json", "lcov", "lcov2", "cobertura", "lcov -o /dev/tty"};
    for (const char* format : words) {
        const std::string text = onTerminal("dumb", "--format " + (format + (" -df " + log)));
        EXPECT_NE(text.find("2J"), std::string::npos) << text;
        EXPECT_EQ(text.find("\xc2\x9b"), std::string::npos) << text;
        EXPECT_EQ(text.find("\xe2\x80\xae"), std::string::npos) << text;
    }
}

TEST_F(ReportFormatsTest, ColoursThatAreAskedForComeWithoutATerminal)
{
    const std::string text = run({"--color=always", _log}).out;
    EXPECT_NE(text.find("src/list.cpp\t3\t2\t\033[33m60%\033[0m\t9\n"), std::string::npos);
    EXPECT_EQ(run({"--color=always", "-o", _dir.path("a.txt"), _log}).status, 0);
    EXPECT_EQ(TempDir::read(_dir.path("a.txt")), run({_log}).out);
}

TEST_F(ReportFormatsTest, NoFileOfTheRunIsLeftBehind)
{
    run({"--format", "json", "-o", _dir.path("a.json"), _log});
    EXPECT_EQ(std::distance(fs::directory_iterator(_dir.path()), {}), 3);
}

} // namespace
