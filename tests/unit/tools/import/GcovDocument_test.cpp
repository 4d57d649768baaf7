// SPDX-License-Identifier: MIT
#include "tools/import/gcov/GcovDocument.h"

#include "tests/support/FailingNew.h"

#include <gtest/gtest.h>

#include <new>

namespace {

std::string document(const std::string& functions, const std::string& lines,
                     const std::string& version = "1")
{
    return R"({"format_version":")" + version +
           R"(","current_working_directory":"/build","files":[{"file":"a.cc","functions":[)" +
           functions + R"(],"lines":[)" + lines + "]}]}";
}

std::string text(const std::vector<GcovLine>& lines)
{
    std::string result;
    for (const GcovLine& line : lines) {
        result += " " + std::to_string(line._line) + "=" + std::to_string(line._count);
    }
    return result + "\n";
}

std::string text(const std::string& json)
{
    GcovDocument read;
    if (!read.parse(json)) {
        return read.problem();
    }
    std::string result;
    for (const GcovSource& source : read.sources()) {
        const std::string head = read.folder() + "/" + source._path;
        for (const GcovFunction& function : source._functions) {
            result += head + " " + function._symbol + " " + std::to_string(function._startLine) +
                      "-" + std::to_string(function._endLine) + ":" + text(function._lines);
        }
        result += source._strayLines.empty() ? "" : head + ":" + text(source._strayLines);
    }
    return result;
}

const char outer[] =
    R"({"name":"outer","start_line":1,"start_column":5,"end_line":9,"end_column":2})";
const char inner[] = R"({"name":"inner","start_line":3,"end_line":5})";

TEST(GcovDocumentTest, LinesBelongToTheirFunctions)
{
    EXPECT_EQ(
        text(document(
            outer,
            R"({"line_number":1,"count":4,"function_name":"outer","branches":[]},)"
            R"({"line_number":2,"count":0,"function_name":"outer","unexecuted_block":true})")),
        "/build/a.cc outer 1-9: 1=4 2=0\n");
}

TEST(GcovDocumentTest, SecondVersionIsRead)
{
    EXPECT_EQ(
        text(document(outer,
                      R"({"line_number":2,"count":3,"block_ids":[2,4],"calls":[{"returned":3,)"
                      R"("source_block_id":2,"destination_block_id":4}],"conditions":[],)"
                      R"("branches":[{"count":3,"fallthrough":true,"throw":false,)"
                      R"("source_block_id":2,"destination_block_id":4}],)"
                      R"("unexecuted_block":false,"function_name":"outer"})",
                      "2")),
        "/build/a.cc outer 1-9: 2=3\n");
    EXPECT_EQ(text(document(outer, "", "3")), "its format_version is not known: only 1 and 2 are");
}

TEST(GcovDocumentTest, LineWithoutNameGoesToTheInnermostFunction)
{
    GcovDocument read;
    ASSERT_TRUE(
        read.parse(document(std::string(outer) + "," + inner,
                            R"({"line_number":4,"count":1},{"line_number":6,"count":2},)"
                            R"({"line_number":90,"count":3},{"line_number":0,"count":3})")));
    ASSERT_EQ(read.sources().size(), 1u);
    const GcovSource& source = read.sources()[0];
    EXPECT_EQ(text(source._functions[0]._lines), " 6=2\n");
    EXPECT_EQ(text(source._functions[1]._lines), " 4=1\n");
    EXPECT_EQ(text(source._strayLines), " 90=3\n");
    EXPECT_EQ(read.linesWithoutNumber(), 1u);
    EXPECT_EQ(source._functions[0]._startColumn, 5u);
    EXPECT_EQ(source._functions[0]._endColumn, 2u);
}

TEST(GcovDocumentTest, RepeatedLinesOfOneFunctionAddUp)
{
    EXPECT_EQ(text(document(outer, R"({"line_number":3,"count":1,"function_name":"outer"},)"
                                   R"({"line_number":2,"count":5,"function_name":"outer"},)"
                                   R"({"line_number":3,"count":7,"function_name":"outer"})")),
              "/build/a.cc outer 1-9: 2=5 3=8\n");
}

TEST(GcovDocumentTest, CountsOutsideTheirRangeAreKeptOrSaturate)
{
    EXPECT_EQ(
        text(document(outer, R"({"line_number":1,"count":-3,"function_name":"outer"},)"
                             R"({"line_number":2,"count":18446744073709551615},)"
                             R"({"line_number":3,"count":1e30},{"line_number":4,"count":2.0e3})")),
        "/build/a.cc outer 1-9: 1=-3 2=9223372036854775807 3=9223372036854775807 4=2000\n");
}

TEST(GcovDocumentTest, NothingIsLeftOfTheDocumentBefore)
{
    GcovDocument read;
    ASSERT_TRUE(read.parse(document(outer, R"({"line_number":0,"count":1})")));
    ASSERT_TRUE(read.parse(R"({"format_version":"1","files":[]})"));
    EXPECT_TRUE(read.sources().empty());
    EXPECT_EQ(read.folder(), "");
    EXPECT_EQ(read.linesWithoutNumber(), 0u);
}

TEST(GcovDocumentTest, WrongTypesAreProblems)
{
    const std::string noList = "a file has no list of lines";
    const std::string line = "the number, the count or the function of a line has the wrong type";
    const struct
    {
        std::string json;
        std::string problem;
    } rows[] = {
        {"[]", "it is none of gcov's JSON documents: it has no format_version"},
        {"{}", "it is none of gcov's JSON documents: it has no format_version"},
        {R"({"format_version":1})",
         "it is none of gcov's JSON documents: it has no format_version"},
        {R"({"gcovr/format_version":"0.5","files":[]})",
         "it is gcovr's own JSON: give what gcov wrote, or what gcovr --cobertura writes to "
         "zem-import cobertura"},
        {R"({"format_version":"1"})", "it has no list of files"},
        {R"({"format_version":"1","files":3})", "it has no list of files"},
        {R"({"format_version":"1","files":[3]})", "a file has no name"},
        {R"({"format_version":"1","files":[{"file":""}]})", "a file has no name"},
        {R"({"format_version":"1","files":[{"file":"a"}]})", "a file has no list of functions"},
        {R"({"format_version":"1","files":[{"file":"a","functions":[]}]})", noList},
        {document("3", ""), "a function is no object"},
        {document("{}", ""), "a function has no name"},
        {document(R"({"name":3})", ""), "the name or the place of a function has the wrong type"},
        {document(R"({"name":"f","start_line":"3"})", ""),
         "the name or the place of a function has the wrong type"},
        {document(outer, "3"), "a line is no object"},
        {document(outer, "{}"), "a line has no number or no count"},
        {document(outer, R"({"line_number":1})"), "a line has no number or no count"},
        {document(outer, R"({"line_number":"1","count":1})"), line},
        {document(outer, R"({"line_number":1,"count":"many"})"), line},
        {document(outer, R"({"line_number":1,"count":null})"), line},
        {document(outer, R"({"line_number":1,"count":1,"function_name":7})"), line}};
    for (const auto& row : rows) {
        EXPECT_EQ(text(row.json), row.problem) << row.json;
    }
}

TEST(GcovDocumentTest, EveryCutIsAProblem)
{
    const std::string json = document(outer, R"({"line_number":1,"count":4})");
    for (size_t size = 0; size < json.size(); ++size) {
        EXPECT_FALSE(GcovDocument().parse(json.substr(0, size))) << size;
    }
}

TEST(GcovDocumentTest, DeepDocumentsAreRefused)
{
    EXPECT_EQ(text(std::string(100000, '[') + std::string(100000, ']')).substr(0, 14),
              "it is no JSON:");
}

// A good document is never told as a bad one.
void parseWithoutMemory(const std::string& json)
{
    try {
        GcovDocument read;
        EXPECT_TRUE(read.parse(json)) << read.problem();
    } catch (const std::bad_alloc&) {
        return;
    }
}

TEST(GcovDocumentTest, WithoutMemoryItSaysNothingOfTheDocument)
{
    const std::string json =
        document(R"({"name":"f","start_line":1,"end_line":9})", R"({"line_number":2,"count":3})");
    for (long n = 1; FailingNew::run(n, FailingNew::Once, [&] { parseWithoutMemory(json); }); ++n) {
    }
    EXPECT_GT(FailingNew::count([&] { parseWithoutMemory(json); }), 10);
}

} // namespace
