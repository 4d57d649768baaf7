// SPDX-License-Identifier: MIT
#include "tools/compare/GcovFacts.h"

#include <gtest/gtest.h>

namespace {

std::string document(const std::string& file, const std::string& functions,
                     const std::string& lines)
{
    return R"({"current_working_directory":"/build","files":[{"file":")" + file +
           R"(","functions":[)" + functions + R"(],"lines":[)" + lines + "]}]}\n";
}

// The same function twice, entered three times.
const char twice[] =
    R"j({"name":"f","demangled_name":"f()","start_line":1,"end_line":3,"execution_count":2},)j"
    R"j({"name":"f","demangled_name":"f()","start_line":1,"end_line":3,"execution_count":1})j";

TEST(GcovFactsTest, UnitsAndInstancesAreAddedUp)
{
    const std::string unit = document("a.cc", twice,
                                      R"({"line_number":2,"count":1},{"line_number":2,"count":4},)"
                                      R"({"line_number":3,"count":0})");
    BuildFacts facts;
    ASSERT_TRUE(addGcovFacts(unit + unit, SourceFilter(), facts));
    const FileFacts& file = facts._files.at("/build/a.cc");
    EXPECT_EQ(file._lines.at(2)._count, 10);
    EXPECT_EQ(file._lines.at(3)._count, 0);
    EXPECT_TRUE(file._lines.at(3)._isListed);
    ASSERT_EQ(file._functions.size(), 1u);
    EXPECT_EQ(file._functions.begin()->second._entries, 6);
    EXPECT_EQ(file._functions.begin()->second._readable, "f()");
}

TEST(GcovFactsTest, FilesThatTheImportLeavesOutAreLeftOut)
{
    BuildFacts facts;
    ASSERT_TRUE(addGcovFacts(document("/usr/include/a.h", twice, R"({"line_number":2,"count":1})"),
                             SourceFilter(), facts));
    EXPECT_TRUE(facts._files.empty());
    EXPECT_EQ(facts._leftOut, std::set<std::string>{"f()"});
}

TEST(GcovFactsTest, CountPastTheNumbersIsARun)
{
    BuildFacts facts;
    ASSERT_TRUE(
        addGcovFacts(document("a.cc", "", R"({"line_number":2,"count":18446744073709551615})"),
                     SourceFilter(), facts));
    EXPECT_GT(facts._files.at("/build/a.cc")._lines.at(2)._count, 0);
}

TEST(GcovFactsTest, OtherTextIsRefused)
{
    for (const char* json : {"", "\n", "{}", "not json\n", R"({"files":[{}]})"}) {
        BuildFacts facts;
        EXPECT_FALSE(addGcovFacts(json, SourceFilter(), facts)) << json;
    }
}

} // namespace
