// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcovLines.h"

#include <gtest/gtest.h>

namespace {

std::string document(const std::string& functions, const std::string& lines)
{
    return R"({"current_working_directory":"/build","files":[{"file":"a.cc","functions":[)" +
           functions + R"(],"lines":[)" + lines + "]}]}\n";
}

std::string text(GcovLines& lines)
{
    std::string result;
    for (const GcovLineFunction& entry : lines.functions()) {
        result += entry._folder + "/" + entry._file + " " + entry._copy._symbol + " " +
                  std::to_string(entry._copy._startLine) + "-" +
                  std::to_string(entry._copy._endLine) + ":";
        for (const CopyLine& line : entry._copy._lines) {
            result +=
                " " + std::to_string(line._line) + "=" + std::to_string(entry._counts[line._block]);
        }
        result += "\n";
    }
    return result;
}

const char outer[] = R"({"name":"outer","start_line":1,"end_line":9})";
const char inner[] = R"({"name":"inner","start_line":3,"end_line":5})";

TEST(GcovLinesTest, EachLineIsABlockOfItsFunction)
{
    GcovLines lines;
    ASSERT_TRUE(lines.parse(document(
        outer, R"({"line_number":1,"count":4,"function_name":"outer"},)"
               R"({"line_number":2,"count":0,"function_name":"outer","unexecuted_block":true})")));
    EXPECT_EQ(text(lines), "/build/a.cc outer 1-9: 1=4 2=0\n");
}

TEST(GcovLinesTest, LineWithoutNameGoesToTheInnermostFunction)
{
    GcovLines lines;
    ASSERT_TRUE(
        lines.parse(document(std::string(outer) + "," + inner,
                             R"({"line_number":4,"count":1},{"line_number":6,"count":2},)"
                             R"({"line_number":90,"count":3},{"line_number":0,"count":3})")));
    EXPECT_EQ(text(lines), "/build/a.cc outer 1-9: 6=2\n/build/a.cc inner 3-5: 4=1\n");
    EXPECT_EQ(lines.strayLines(), 2u);
}

TEST(GcovLinesTest, ColumnsAreRead)
{
    GcovLines lines;
    ASSERT_TRUE(lines.parse(
        document(R"({"name":"f","start_line":1,"start_column":5,"end_line":9,"end_column":2})",
                 R"({"line_number":1,"count":4,"function_name":"f"})")));
    ASSERT_EQ(lines.functions().size(), 1u);
    EXPECT_EQ(lines.functions()[0]._copy._startColumn, 5u);
    EXPECT_EQ(lines.functions()[0]._copy._endColumn, 2u);
}

TEST(GcovLinesTest, SecondDocumentHasItsOwnFunctions)
{
    GcovLines lines;
    const std::string one =
        document(outer, R"({"line_number":1,"count":4,"function_name":"outer"})");
    ASSERT_TRUE(lines.parse(one + one));
    EXPECT_EQ(text(lines), "/build/a.cc outer 1-9: 1=4\n/build/a.cc outer 1-9: 1=4\n");
}

TEST(GcovLinesTest, CountsOutsideTheirRangeAreKeptOrSaturate)
{
    GcovLines lines;
    ASSERT_TRUE(lines.parse(document(
        outer, R"({"line_number":1,"count":-3,"function_name":"outer"},)"
               R"({"line_number":2,"count":18446744073709551615,"function_name":"outer"})")));
    EXPECT_EQ(text(lines), "/build/a.cc outer 1-9: 1=-3 2=9223372036854775807\n");
}

TEST(GcovLinesTest, OtherTextIsRefused)
{
    for (const char* json : {"", "\n\n", "not json\n", "[]", "{}", R"({"files":3})",
                             R"({"files":[{}]})", R"({"files":[3]})"}) {
        GcovLines lines;
        EXPECT_FALSE(lines.parse(json)) << json;
    }
}

TEST(GcovLinesTest, EveryCutIsTolerated)
{
    const std::string one =
        document(outer, R"({"line_number":1,"count":4,"function_name":"outer"})");
    for (size_t size = 0; size + 1 < one.size(); ++size) {
        GcovLines lines;
        EXPECT_FALSE(lines.parse(one.substr(0, size))) << size;
    }
}

} // namespace
