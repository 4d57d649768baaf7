#include "zem/Options/RptOptions.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

// Keeps what the options did as words.
class Recorder : public RptOptions
{
public:
    void reportType(RptType type) override { _done += "type " + std::to_string(type) + ";"; }
    void manglingLevel(int level) override { _done += "level " + std::to_string(level) + ";"; }
    void addFilter(int kind, const char* name) override
    {
        _done += std::string("filter ") + static_cast<char>(kind) + " " + name + ";";
    }
    void sortBy(const char*) override {}
    void showHitCounts() override {}
    void usageHelp() override { _done += "usage;"; }

    std::string _done;
};

class RptOptionsTest : public ::testing::Test
{
protected:
    // Calls a handler with `words` and the null that ends every command line. Returns what was
    // printed on the standard error stream.
    std::string call(void (RptOptions::*handler)(char**), std::vector<std::string> words)
    {
        std::vector<char*> args;
        for (std::string& word : words) {
            args.push_back(word.data());
        }
        args.push_back(nullptr);
        ::testing::internal::CaptureStderr();
        (_options.*handler)(args.data());
        return ::testing::internal::GetCapturedStderr();
    }

    Recorder _options;
};

TEST_F(RptOptionsTest, ReportTypeLetters)
{
    for (const char* letter : {"d", "F", "f", "o"}) {
        EXPECT_EQ(call(&RptOptions::setReportType, {letter}), "");
    }
    EXPECT_EQ(_options._done, "type 0;type 1;type 2;type 3;");
}

TEST_F(RptOptionsTest, OnlyTheFirstLetterOfAReportTypeCounts)
{
    call(&RptOptions::setReportType, {"fxyz"});
    EXPECT_EQ(_options._done, "type 2;");
}

TEST_F(RptOptionsTest, UnknownReportTypeIsByFileWithAMessage)
{
    EXPECT_EQ(call(&RptOptions::setReportType, {"z"}), "Unknown report type option: -dz\n");
    EXPECT_EQ(_options._done, "usage;type 1;");
}

TEST_F(RptOptionsTest, MissingReportTypeIsByFileWithAMessage)
{
    EXPECT_EQ(call(&RptOptions::setReportType, {}), "Unknown report type option: -d\n");
    EXPECT_EQ(call(&RptOptions::setReportType, {""}), "Unknown report type option: -d\n");
    EXPECT_EQ(_options._done, "usage;type 1;usage;type 1;");
}

TEST_F(RptOptionsTest, ManglingLevelLetters)
{
    for (const char* letter : {"s", "e", "m"}) {
        EXPECT_EQ(call(&RptOptions::setManglingLevel, {letter}), "");
    }
    EXPECT_EQ(_options._done, "level 1;level 2;level 3;");
}

TEST_F(RptOptionsTest, UnknownManglingLevelIsOneWithAMessage)
{
    EXPECT_EQ(call(&RptOptions::setManglingLevel, {"z"}), "Unknown mangling level option: -nz\n");
    EXPECT_EQ(call(&RptOptions::setManglingLevel, {}), "Unknown mangling level option: -n\n");
    EXPECT_EQ(_options._done, "usage;level 1;usage;level 1;");
}

TEST_F(RptOptionsTest, FilterLettersAreTheKind)
{
    for (const char* letter : {"F", "d", "f", "o"}) {
        EXPECT_EQ(call(&RptOptions::setFilter, {letter, "main"}), "");
    }
    EXPECT_EQ(_options._done, "filter F main;filter d main;filter f main;filter o main;");
}

TEST_F(RptOptionsTest, UnknownFilterLetterAddsNothing)
{
    EXPECT_EQ(call(&RptOptions::setFilter, {"z", "main"}), "Unknown report type option: -fz\n");
    EXPECT_EQ(call(&RptOptions::setFilter, {}), "Unknown report type option: -f\n");
    EXPECT_EQ(_options._done, "usage;usage;");
}

TEST_F(RptOptionsTest, FilterWithoutANameAddsNothing)
{
    EXPECT_EQ(call(&RptOptions::setFilter, {"f"}), "");
    EXPECT_EQ(_options._done, "usage;");
}

TEST_F(RptOptionsTest, OptionLines)
{
    std::ostringstream out;
    RptOptions::writeOptionLines(out);
    EXPECT_EQ(out.str(),
              "\n"
              "Options:\n"
              "        -df           Display by function\n"
              "        -do           Display by object/class\n"
              "        -dF           Display by file\n"
              "        -dd           Display by directory\n"
              "\n"
              "        -ns           Simple function names\n"
              "        -ne           Extended function names - include argument types\n"
              "        -nm           Include modifiers const/volatile in function arguments\n"
              "\n"
              "        -ff name      Only show things related to function \"name\"\n"
              "        -fo name      Only show things related to object \"name\"\n"
              "        -fF name      Only show things related to File \"name\"\n"
              "        -fd name      Only show things related to directory \"name\"\n"
              "\n"
              "        -s[keys]      Sort output by keys (dFf%#b)\n"
              "        -ct           Show hit counts source browser\n"
              "\n");
}

} // namespace
