// SPDX-License-Identifier: MIT
#include "tools/common/finishCoverage.h"

#include "tests/unit/tools/common/CovSampleTest.h"
#include "tools/common/CoverageWriter.h"
#include "tools/common/countRun.h"

#include <gtest/gtest.h>

namespace {

class FinishCoverageTest : public CovSampleTest
{};

TEST_F(FinishCoverageTest, FilesAndFunctionsAreInOrder)
{
    addFile("/s/b.cc", {function("two", 9, 12, {{9, 9, 0}}), function("one", 1, 4, {{1, 1, 0}})});
    addFile("/s/a.cc", {function("zz", 1, 4, {{1, 1, 0}}), function("aa", 1, 4, {{1, 1, 0}})});
    finishCoverage(_model, NameStyle(), _losses, 2);
    ASSERT_EQ(_model._files.size(), 2u);
    EXPECT_EQ(_model._files[0]._path, "/s/a.cc");
    EXPECT_EQ(_model._files[0]._functions[0]._storedName, "aa");
    EXPECT_EQ(_model._files[1]._functions[0]._storedName, "one");
    EXPECT_EQ(_losses._sourcesNotFound, 2u);
}

TEST_F(FinishCoverageTest, OrderDoesNotDependOnTheOrderGivenOrOnCounts)
{
    const CovFunction variants[] = {
        function("f", 1, 9, {{1, 1, 5}, {2, 2, 5}}), function("f", 1, 9, {{1, 1, 7}, {3, 3, 0}}),
        function("f", 1, 9, {{1, 1, 0}}), function("f", 1, 9, {{1, 2, 9}})};
    addFile("/s/a.cc", {variants[0], variants[1], variants[2], variants[3]});
    finishCoverage(_model, NameStyle(), _losses, 1);
    CoverageModel other;
    other._files.emplace_back();
    other._files[0]._path = "/s/a.cc";
    other._files[0]._functions = {variants[3], variants[2], variants[1], variants[0]};
    finishCoverage(other, NameStyle(), _losses, 2);
    const CoverageOutput output = {_dir.path(), "run", false};
    CoverageWriter one(_model, output);
    CoverageWriter two(other, output);
    ASSERT_TRUE(one.open());
    ASSERT_TRUE(two.open());
    EXPECT_EQ(one.map(), two.map()); // named after their content
}

// A class with a name of 62 letters, one of its functions too wide for the report with it.
constexpr char WideClass[] = "aVeryLongNameOfAClassWhoseFunctionsAreTooWideForTheReportOfAll";
const std::string wideFunction = "_ZN62" + std::string(WideClass) + "17aFunctionOfItOwnsEi";
const std::string otherFunction = "_ZN62" + std::string(WideClass) + "1fEi";

TEST_F(FinishCoverageTest, NamesTooWideForTheReportAreShortened)
{
    addFile("/s/a.cc", {function(wideFunction.c_str(), 1, 1, {{1, 1, 0}}),
                        function("_ZN2ns1fEi", 2, 2, {{2, 2, 0}})});
    addFile("/s/b.cc", {function(otherFunction.c_str(), 1, 1, {{1, 1, 0}})});
    finishCoverage(_model, NameStyle(), _losses, 2);
    const std::string code = "__FFi_Q262" + std::string(WideClass);
    EXPECT_EQ(_model._files[0]._functions[0]._storedName,
              "aVeryLongNameOfAClass...ideForTheReportOfAll::aFunctionOfItOwns" + code +
                  "17aFunctionOfItOwns");
    EXPECT_EQ(_model._files[0]._functions[1]._storedName, "ns::f__Fi");
    EXPECT_EQ(_model._files[1]._functions[0]._storedName,
              "aVeryLongNameOfAClass...ideForTheReportOfAll::f" + code + "1f");
    EXPECT_EQ(_losses._renamedFunctions, 0u);
}

TEST_F(FinishCoverageTest, FullNamesStayWhole)
{
    addFile("/s/a.cc", {function(wideFunction.c_str(), 1, 1, {{1, 1, 0}})});
    NameStyle style;
    style._isFull = true;
    finishCoverage(_model, style, _losses, 1);
    EXPECT_EQ(_model._files[0]._functions[0]._storedName,
              std::string(WideClass) + "::aFunctionOfItOwns__Fi");
}

TEST_F(FinishCoverageTest, WhatHasNoBlocksIsTakenOut)
{
    addFile("/s/a.cc", {function("f", 1, 4, {}), function("g", 1, 4, {})});
    addFile("/s/b.cc", {function("h", 1, 4, {{1, 1, 1}}), function("f", 1, 4, {})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    ASSERT_EQ(_model._files.size(), 1u);
    EXPECT_EQ(_model._files[0]._functions.size(), 1u);
}

TEST_F(FinishCoverageTest, BlocksOfAFileAreMadeTogether)
{
    addFile("/s/a.cc", {function("g", 3, 3, {{3, 3, 0}}), function("f", 1, 4, {{1, 4, 2}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    const std::vector<CovFunction>& functions = _model._files[0]._functions;
    EXPECT_EQ(functions[0]._blocks.size(), 2u); // interrupted by the other
    EXPECT_EQ(functions[1]._blocks.size(), 1u);
}

TEST_F(FinishCoverageTest, FullNamesAreKeptWhenAskedFor)
{
    // f<A<A<... more than 60 characters when it is decoded
    const char* symbol =
        "_Z1fI1AIS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_IS0_"
        "I9SomeThingEEEEEEEEEEEEEEEEEEEvv";
    addFile("/s/a.cc", {function(symbol, 1, 4, {{1, 1, 1}})});
    NameStyle full;
    full._isFull = true;
    finishCoverage(_model, full, _losses, 1);
    const std::vector<std::string> symbols = {symbol};
    EXPECT_EQ(_model._files[0]._functions[0]._storedName,
              storedFunctionName(symbols, full, _losses));
    EXPECT_NE(_model._files[0]._functions[0]._storedName,
              storedFunctionName(symbols, NameStyle(), _losses));
}

TEST_F(FinishCoverageTest, SymbolsThatWereReadAreNotReadAgain)
{
    CovFunction one = function("_Z1fIiEvT_", 1, 4, {{1, 1, 1}});
    one._symbols.emplace_back("_Z1fIlEvT_");
    FunctionText text;
    text._name = "known<int>";
    text._types = "int";
    text._hasTypes = true;
    one._texts = {text, text};
    one._texts[1]._name = "known<long>";
    CovFunction other = one;
    other._texts = {text};
    other._startLine = 2;
    addFile("/s/a.cc", {one, other});
    finishCoverage(_model, NameStyle(), _losses, 1);
    const std::vector<CovFunction>& functions = _model._files[0]._functions;
    EXPECT_EQ(functions[0]._storedName, "known<...>__Fi");
    EXPECT_EQ(functions[1]._storedName, "known<...>__F4auto"); // the second is f<long>(long)
    EXPECT_TRUE(functions[0]._texts.empty());
}

TEST_F(FinishCoverageTest, SymbolTooLargeToUnfoldIsCountedWhoeverReadIt)
{
    CovFunction known = function("_Z1fv", 1, 4, {{1, 1, 1}});
    known._texts = {FunctionText()};
    known._texts[0]._isTooLarge = true;
    addFile("/s/a.cc", {known});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_EQ(_losses._namesNotUnfolded, 1u);
}

TEST_F(FinishCoverageTest, PathTooLongForARecordIsRefused)
{
    addFile("/" + std::string(65534, 'p'), {function("f", 1, 4, {{1, 1, 1}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    EXPECT_TRUE(_model._files.empty());
    EXPECT_EQ(_losses._refusedFiles, 1u);
}

} // namespace
