#include "tools/report/ReportCommandLine.h"

#include "tests/support/StdErr.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

// The words of a command line, without the program.
class Words
{
public:
    Words(std::initializer_list<const char*> words)
    {
        _texts.emplace_back("zem-report");
        _texts.insert(_texts.end(), words.begin(), words.end());
        for (std::string& text : _texts) {
            _argv.push_back(&text[0]);
        }
        _argv.push_back(nullptr);
        _argc = static_cast<int>(_texts.size());
    }

    bool takenBy(ReportCommandLine& options) { return options.take(&_argc, _argv.data()); }

    // What is left, the program included.
    std::vector<std::string> left() const
    {
        EXPECT_EQ(_argv[static_cast<size_t>(_argc)], nullptr);
        return std::vector<std::string>(_argv.begin(), _argv.begin() + _argc);
    }

private:
    std::vector<std::string> _texts;
    std::vector<char*> _argv;
    int _argc = 0;
};

std::string outputs(const ReportCommandLine& options)
{
    std::string text;
    for (const ReportCommandLine::Output& output : options.outputs()) {
        text += std::string(output._format) + ">" + (output._file == nullptr ? "-" : output._file) +
                " ";
    }
    return text;
}

std::string outputsOf(std::initializer_list<const char*> words)
{
    ReportCommandLine options;
    Words line(words); // lives as long as the options, which borrow from it
    EXPECT_TRUE(line.takenBy(options));
    return outputs(options);
}

// The message of a command line that makes no sense.
std::string refusal(std::initializer_list<const char*> words)
{
    StdErr messages;
    ReportCommandLine options;
    EXPECT_FALSE(Words(words).takenBy(options));
    return messages.text();
}

using Strings = std::vector<std::string>;

TEST(ReportCommandLineTest, OtherWordsStayInTheirOrder)
{
    ReportCommandLine options;
    Words words = {"-df", "--format", "csv", "a.log", "-s", "%", "-o", "x.csv", "b.log"};
    ASSERT_TRUE(words.takenBy(options));
    EXPECT_EQ(words.left(), (Strings{"zem-report", "-df", "a.log", "-s", "%", "b.log"}));
}

TEST(ReportCommandLineTest, AFileBelongsToTheFormatBeforeIt)
{
    EXPECT_EQ(outputsOf({}), "text>- ");
    EXPECT_EQ(outputsOf({"--format", "json"}), "json>- ");
    EXPECT_EQ(outputsOf({"-o", "a.txt"}), "text>a.txt ");
    EXPECT_EQ(outputsOf({"--format=lcov", "-o", "a", "--format", "json", "-o", "b"}),
              "lcov>a json>b ");
    EXPECT_EQ(outputsOf({"--format", "lcov", "-o", "a", "-o", "b"}), "lcov>a text>b ");
    EXPECT_EQ(outputsOf({"--format", "lcov", "-o", "a", "--format", "text"}), "lcov>a text>- ");
}

TEST(ReportCommandLineTest, AFileMayHaveANameLikeAnOption)
{
    EXPECT_EQ(outputsOf({"-o", "-df"}), "text>-df ");
}

// It would end the options otherwise, and the log behind it would be the file.
TEST(ReportCommandLineTest, AFileCanBeTheStandardOutput)
{
    ReportCommandLine options;
    Words words = {"--format", "csv", "-o", "-", "a.log"};
    ASSERT_TRUE(words.takenBy(options));
    EXPECT_EQ(words.left(), (Strings{"zem-report", "a.log"}));
    ASSERT_EQ(options.outputs().size(), 1u);
    EXPECT_EQ(options.outputs()[0]._file, nullptr);
}

TEST(ReportCommandLineTest, ATerminatorEndsTheOptions)
{
    ReportCommandLine options;
    Words words = {"--summary", "--", "--format", "nothing"};
    ASSERT_TRUE(words.takenBy(options));
    EXPECT_EQ(words.left(), (Strings{"zem-report", "--", "--format", "nothing"}));
    EXPECT_TRUE(options.namesTotals());
}

TEST(ReportCommandLineTest, LimitsAreThereWhenTheyAreGiven)
{
    ReportCommandLine none;
    ASSERT_TRUE(Words({}).takenBy(none));
    EXPECT_EQ(none.wholeLimit(), nullptr);
    EXPECT_EQ(none.rowLimit(), nullptr);
    EXPECT_FALSE(none.namesTotals());
    ReportCommandLine options;
    ASSERT_TRUE(Words({"--fail-under", "80", "--fail-under-each=12.5"}).takenBy(options));
    ASSERT_NE(options.wholeLimit(), nullptr);
    EXPECT_EQ(options.wholeLimit()->text(), "80");
    ASSERT_NE(options.rowLimit(), nullptr);
    EXPECT_EQ(options.rowLimit()->text(), "12.5");
}

TEST(ReportCommandLineTest, SaysWhatMakesNoSense)
{
    EXPECT_EQ(refusal({"--format", "xml"}), "zem-report: --format xml: not a format; there are "
                                            "text, csv, json, lcov, lcov2, cobertura\n");
    EXPECT_EQ(refusal({"a.log", "--format"}), "zem-report: --format : a value must follow\n");
    EXPECT_EQ(refusal({"-o"}), "zem-report: -o : a value must follow\n");
    EXPECT_EQ(refusal({"-o", ""}), "zem-report: -o : a file without a name\n");
    EXPECT_EQ(refusal({"-o", "a", "-o", "a"}), "zem-report: -o a: given twice\n");
    EXPECT_EQ(refusal({"--fail-under=80x"}), "zem-report: --fail-under 80x: not a number from 0 to "
                                             "100 with at most four decimals\n");
    EXPECT_EQ(refusal({"--fail-under-each", "\x1b"}),
              "zem-report: --fail-under-each \\x1b: not a number from 0 to 100 with at most four "
              "decimals\n");
    EXPECT_EQ(refusal({"--color=blue"}), "zem-report: --color blue: not auto, always or never\n");
    EXPECT_EQ(refusal({"--format", "csv", "--format", "json"}),
              "zem-report: more than one format for the standard output; give -o FILE behind all "
              "but one\n");
}

TEST(ReportCommandLineTest, LongerNamesAreOtherOptions)
{
    ReportCommandLine options;
    Words words = {"--formats", "--fail-under-all=3", "-output", "--summary-only"};
    ASSERT_TRUE(words.takenBy(options));
    EXPECT_EQ(words.left(), (Strings{"zem-report", "--formats", "--fail-under-all=3", "-output",
                                     "--summary-only"}));
}

bool hasColours(const char* when, bool isTerminal)
{
    ReportCommandLine options;
    EXPECT_TRUE(when == nullptr ? Words({}).takenBy(options)
                                : Words({"--color", when}).takenBy(options));
    return options.hasColours(isTerminal);
}

TEST(ReportCommandLineTest, ColoursAreWhereTheyShow)
{
    setenv("TERM", "xterm", 1);
    unsetenv("NO_COLOR");
    EXPECT_TRUE(hasColours(nullptr, true));
    EXPECT_TRUE(hasColours("auto", true));
    EXPECT_FALSE(hasColours("auto", false));
    EXPECT_TRUE(hasColours("always", false));
    EXPECT_FALSE(hasColours("never", true));
    setenv("TERM", "x", 1);
    EXPECT_TRUE(hasColours("auto", true));
    setenv("TERM", "", 1);
    EXPECT_FALSE(hasColours("auto", true));
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(hasColours("auto", true));
    unsetenv("TERM");
    EXPECT_FALSE(hasColours("auto", true));
}

TEST(ReportCommandLineTest, ColoursCanBeTurnedOffByTheEnvironment)
{
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    EXPECT_FALSE(hasColours("auto", true));
    EXPECT_TRUE(hasColours("always", true)); // who says so on the command line means it
    setenv("NO_COLOR", "", 1);
    EXPECT_TRUE(hasColours("auto", true));
}

} // namespace
