// SPDX-License-Identifier: MIT
#include "tools/import/excludeMarked.h"

#include "tests/support/TempDir.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

namespace {

class ExcludeMarkedTest : public ::testing::Test
{
protected:
    // Adds a file whose functions have these lines of each block.
    void add(const std::string& path,
             const std::vector<std::vector<std::vector<uint32_t>>>& functions)
    {
        _model._files.emplace_back();
        _model._files.back()._path = path;
        for (const auto& blocks : functions) {
            CovFunction function;
            for (const auto& lines : blocks) {
                for (const uint32_t line : lines) {
                    function._lines.push_back({function._nBasicBlocks, line});
                }
                function._sums.push_back(CovTerm::alone(function._nBasicBlocks++));
            }
            _model._files.back()._functions.push_back(function);
        }
    }

    // What is left of a file: "block:line ..." of each function, "|" in between.
    std::string exclude(size_t file = 0)
    {
        excludeMarked(_model, _losses, _err, 2);
        std::string text;
        for (const CovFunction& function : _model._files[file]._functions) {
            text += text.empty() ? "" : "|";
            for (const CovLine& line : function._lines) {
                text += " " + std::to_string(line._block) + ":" + std::to_string(line._line);
            }
        }
        return text;
    }

    const TempDir _dir;
    CoverageModel _model;
    ImportLosses _losses;
    std::ostringstream _err;
};

TEST_F(ExcludeMarkedTest, MarkedLinesAndWhatHasNoOthersGo)
{
    const std::string path =
        _dir.write("a.cc", "1\n2 LCOV_EXCL_LINE\n3\n4 LCOV_EXCL_START\n5\n6 LCOV_EXCL_STOP\n");
    add(path, {{{1}, {2}, {2, 3}, {6}}, {{4}, {5}}, {}});
    EXPECT_EQ(exclude(), " 0:1 2:3 3:6||");
    EXPECT_EQ(_losses._markedBlocks, 3u);
    EXPECT_EQ(_losses._markedFunctions, 1u);
    EXPECT_EQ(_losses._sourcesNotSearched, 0u);
    EXPECT_EQ(_err.str(), "");
}

TEST_F(ExcludeMarkedTest, SourceThatIsNotThereLosesNothing)
{
    add(_dir.path("gone.cc"), {{{1}}});
    EXPECT_EQ(exclude(), " 0:1");
    EXPECT_EQ(_losses._sourcesNotSearched, 0u);
}

TEST_F(ExcludeMarkedTest, WhatIsNoFileOrTooLargeIsNotReadAndCounted)
{
    const std::string pipe = _dir.path("pipe.cc");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string large = _dir.write("large.cc", "LCOV_EXCL_LINE\n");
    std::filesystem::resize_file(large, (64u << 20) + 1);
    add(pipe, {{{1}}});
    add(large, {{{1}}});
    add(_dir.path(), {{{1}}});
    EXPECT_EQ(exclude(1), " 0:1");
    EXPECT_EQ(_losses._sourcesNotSearched, 3u);
}

TEST_F(ExcludeMarkedTest, MarkerWithoutItsEndIsToldWithFileAndLine)
{
    const std::string path = _dir.write("a.cc", "1\n2 LCOV_EXCL_START\n");
    add(path, {{{1}, {9}}});
    EXPECT_EQ(exclude(), " 0:1");
    EXPECT_EQ(_err.str(),
              "zem-import: " + path + ":2: an excluded region begins that does not end\n");
}

TEST_F(ExcludeMarkedTest, MessagesAreInTheOrderOfTheirText)
{
    const std::string last = _dir.write("b.cc", "LCOV_EXCL_START\n");
    const std::string first = _dir.write("a.cc", "LCOV_EXCL_START\n");
    add(last, {{{1}}});
    add(first, {{{1}}});
    exclude();
    EXPECT_EQ(_err.str(), "zem-import: " + first +
                              ":1: an excluded region begins that does not end\nzem-import: " +
                              last + ":1: an excluded region begins that does not end\n");
}

TEST_F(ExcludeMarkedTest, OfVeryManyMessagesTheFirstAreShown)
{
    std::string text;
    for (int i = 0; i < 30; ++i) {
        text += "LCOV_EXCL_STOP\n";
    }
    add(_dir.write("a.cc", text), {{{1}}});
    (void)exclude();
    const std::string told = _err.str();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 21);
    EXPECT_NE(told.find("zem-import: and 10 more like these\n"), std::string::npos) << told;
}

} // namespace
