// SPDX-License-Identifier: MIT
#include "tools/import/ModelBuilder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

// Numbers of the files in the tests.
enum : uint32_t { A, B, H };

// The lines of one block and its count.
struct Block
{
    std::vector<uint32_t> lines;
    int64_t hits;
    uint32_t file = UINT32_MAX; // the function's own
};

class ModelBuilderTest : public ::testing::Test
{
protected:
    FunctionCopy& add(uint32_t file, const char* symbol, uint32_t start, uint32_t end,
                      const std::vector<Block>& blocks)
    {
        FunctionCopy copy;
        copy._symbol = symbol;
        copy._file = file;
        copy._startLine = start;
        copy._startColumn = 5;
        copy._endLine = end;
        copy._endColumn = 1;
        copy._firstCount = static_cast<uint32_t>(_counts.size());
        for (const Block& block : blocks) {
            for (const uint32_t line : block.lines) {
                copy._lines.push_back({static_cast<uint32_t>(_counts.size()) - copy._firstCount,
                                       block.file == UINT32_MAX ? file : block.file, line});
            }
            _counts.push_back(block.hits);
        }
        _copies.push_back(copy);
        return _copies.back();
    }

    // Each function as "path symbols start-end: lines=hits ..." with a comma between the lines of
    // a block, sorted. The form that copies have their lines in makes no difference.
    std::string build(bool keepsInstances = false)
    {
        const std::string all = rowsOf(buildFrom(_copies, keepsInstances, 2));
        const ImportLosses losses = _losses;
        EXPECT_EQ(rowsOf(buildFrom(withOwnLines(_copies), keepsInstances, 2)), all);
        _losses = losses;
        return all;
    }

    // The same copies, with their lines where they take less memory, as far as they can.
    static std::vector<FunctionCopy> withOwnLines(std::vector<FunctionCopy> copies)
    {
        for (FunctionCopy& copy : copies) {
            const bool isOwn =
                std::all_of(copy._lines.begin(), copy._lines.end(),
                            [&copy](const CopyLine& line) { return line._file == copy._file; });
            for (const CopyLine& line : copy._lines) {
                if (isOwn) {
                    copy._ownLines.push_back({line._block, line._line});
                }
            }
            copy._lines.resize(isOwn ? 0 : copy._lines.size());
        }
        return copies;
    }

    std::string rowsOf(const CoverageModel& model) const
    {
        std::vector<std::string> rows;
        for (const CovFile& file : model._files) {
            for (const CovFunction& function : file._functions) {
                rows.push_back(file._path + text(function) + "\n");
            }
        }
        std::sort(rows.begin(), rows.end());
        std::string all;
        for (const std::string& row : rows) {
            all += row;
        }
        return all;
    }

    CoverageModel buildFrom(const std::vector<FunctionCopy>& copies, bool keepsInstances,
                            unsigned int nThreads)
    {
        const SourceFilter filter;
        ImportedBuild build(filter);
        for (const std::string& path : _sources) {
            (void)build._sources.find(path);
        }
        build._copies = copies;
        build._nCounts = static_cast<uint32_t>(_counts.size());
        CoverageModel model;
        buildModel(build, keepsInstances, nThreads, model, _losses);
        return model;
    }

    // What the counts of a run make of each basic block, before they are bounded.
    std::vector<int64_t> hits(const CovFunction& function) const
    {
        std::vector<int64_t> result;
        for (uint32_t i = 0; i < function._nBasicBlocks && function._sums.empty(); ++i) {
            result.push_back(_counts[function._firstCount + i]);
        }
        int64_t sum = 0;
        int64_t greatest = INT64_MIN;
        for (const CovTerm& term : function._sums) {
            greatest = std::max(greatest, _counts[term._count]);
            if (term._endsMaximum != 0) {
                sum += greatest;
                greatest = INT64_MIN;
            }
            if (term._endsSum != 0) {
                result.push_back(sum);
                sum = 0;
            }
        }
        EXPECT_EQ(result.size(), function._nBasicBlocks);
        return result;
    }

    std::string text(const CovFunction& function) const
    {
        const std::vector<int64_t> hits = this->hits(function);
        std::string result;
        for (const std::string& symbol : function._symbols) {
            result += " " + symbol;
        }
        result += " " + std::to_string(function._startLine) + "-" +
                  std::to_string(function._endLine) + ":";
        for (size_t i = 0; i < function._lines.size(); ++i) {
            const CovLine& line = function._lines[i];
            const bool isFirst = i == 0 || function._lines[i - 1]._block != line._block;
            const bool isLast =
                i + 1 == function._lines.size() || function._lines[i + 1]._block != line._block;
            result += (isFirst ? " " : ",") + std::to_string(line._line);
            result += isLast ? "=" + std::to_string(hits[line._block]) : "";
        }
        return result;
    }

    std::vector<std::string> _sources{"/a.cc", "/b.cc", "/h.h"};
    std::vector<FunctionCopy> _copies;
    std::vector<int64_t> _counts; // of a run
    ImportLosses _losses;
};

TEST_F(ModelBuilderTest, BlocksWithoutLinesAreLeftOut)
{
    add(A, "f", 1, 9, {{{}, 5}, {{1, 2}, 3}, {{4}, 7}, {{}, 6}});
    add(A, "g", 11, 19, {{{11}, 5}, {{}, 3}, {{14, 15}, 7}});
    EXPECT_EQ(build(), "/a.cc f 1-9: 1,2=3 4=7\n/a.cc g 11-19: 11=5 14,15=7\n");
    const CoverageModel model = buildFrom(_copies, false, 1);
    for (const CovFunction& function : model._files[0]._functions) {
        EXPECT_EQ(function._nBasicBlocks, 2u);
    }
}

TEST_F(ModelBuilderTest, EqualCopiesAreAddedUpBlockForBlock)
{
    add(H, "f", 1, 9, {{{1, 2}, 3}, {{4}, 0}});
    add(H, "f", 1, 9, {{{1, 2}, 0}, {{4}, 0}});
    add(H, "f", 1, 9, {{{1, 2}, 4}, {{4}, 1}});
    EXPECT_EQ(build(), "/h.h f 1-9: 1,2=7 4=1\n");
}

TEST_F(ModelBuilderTest, CopiesThatDifferHaveABlockForEachLine)
{
    add(H, "f", 1, 9, {{{1, 2}, 3}, {{2, 4}, 5}});
    add(H, "f", 1, 9, {{{1, 3}, 1}});
    EXPECT_EQ(build(), "/h.h f 1-9: 1=4 2=5 3=1 4=5\n");
}

TEST_F(ModelBuilderTest, CopyThatNeverRanHidesNothing)
{
    add(H, "f", 1, 9, {{{1}, 0}, {{2}, 0}});
    add(H, "f", 1, 9, {{{1, 2}, 6}});
    EXPECT_EQ(build(), "/h.h f 1-9: 1=6 2=6\n");
}

TEST_F(ModelBuilderTest, InstancesOfATemplateAreOneFunction)
{
    add(H, "_Z1fIiEvT_", 1, 9, {{{1}, 3}});
    add(H, "_Z1fIlEvT_", 1, 9, {{{1}, 4}});
    EXPECT_EQ(build(), "/h.h _Z1fIiEvT_ _Z1fIlEvT_ 1-9: 1=7\n");
}

// The members of a class template that a macro makes: their symbols stand between each other.
TEST_F(ModelBuilderTest, InstancesOfTemplatesOnOneLineStayApart)
{
    add(A, "_ZN1AIiE1fEv", 2, 2, {{{2}, 1}});
    add(A, "_ZN1AIiE1gEv", 2, 2, {{{2}, 10}});
    add(A, "_ZN1AIlE1fEv", 2, 2, {{{2}, 100}});
    add(A, "_ZN1AIlE1gEv", 2, 2, {{{2}, 1000}});
    EXPECT_EQ(build(), "/a.cc _ZN1AIiE1fEv _ZN1AIlE1fEv 2-2: 2=101\n"
                       "/a.cc _ZN1AIiE1gEv _ZN1AIlE1gEv 2-2: 2=1010\n");
}

TEST_F(ModelBuilderTest, InstancesAreKeptWhenAskedFor)
{
    add(H, "_Z1fIiEvT_", 1, 9, {{{1}, 3}});
    add(H, "_Z1fIlEvT_", 1, 9, {{{1}, 4}});
    add(H, "_Z1fIlEvT_", 1, 9, {{{1}, 1}});
    EXPECT_EQ(build(true), "/h.h _Z1fIiEvT_ 1-9: 1=3\n/h.h _Z1fIlEvT_ 1-9: 1=5\n");
}

TEST_F(ModelBuilderTest, VariantsOfAConstructorAreOneFunction)
{
    add(A, "_ZN1AC1Ev", 1, 9, {{{1}, 3}});
    add(A, "_ZN1AC2Ev", 1, 9, {{{1}, 4}});
    EXPECT_EQ(build(), "/a.cc _ZN1AC1Ev _ZN1AC2Ev 1-9: 1=7\n");
}

TEST_F(ModelBuilderTest, WhatSymbolsOfOnePlaceSayIsKept)
{
    for (const char* symbol : {"_Z1fIiEvT_", "_Z1fIlEvT_", "_Z1gIiEvT_", "_Z1fIcEvT_"}) {
        add(A, symbol, 1, 9, {{{1}, 3}});
        add(A, symbol, 1, 9, {{{1}, 1}});
    }
    const CoverageModel model = buildFrom(_copies, false, 1);
    ASSERT_EQ(model._files[0]._functions.size(), 2u);
    for (const CovFunction& function : model._files[0]._functions) {
        ASSERT_EQ(function._texts.size(), function._symbols.size());
        for (size_t i = 0; i < function._texts.size(); ++i) {
            EXPECT_EQ(function._texts[i]._name, readFunctionText(function._symbols[i])._name);
        }
    }
}

TEST_F(ModelBuilderTest, FunctionsOfOneMacroStayApart)
{
    add(A, "_Z3getv", 3, 3, {{{3}, 1}});
    add(A, "_Z3setv", 3, 3, {{{3}, 2}});
    EXPECT_EQ(build(), "/a.cc _Z3getv 3-3: 3=1\n/a.cc _Z3setv 3-3: 3=2\n");
}

TEST_F(ModelBuilderTest, PlaceIsFileAndRangeWithColumns)
{
    add(A, "f", 1, 9, {{{1}, 1}});
    add(B, "f", 1, 9, {{{1}, 1}});
    add(A, "f", 1, 8, {{{1}, 1}});
    add(A, "f", 1, 9, {{{1}, 1}})._startColumn = 6;
    add(A, "f", 1, 9, {{{1}, 1}})._endColumn = 6;
    const std::string all = build();
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 5);
}

TEST_F(ModelBuilderTest, LineInAnotherFunctionsRangeCountsThere)
{
    add(A, "f", 19, 26, {{{5, 19}, 4}, {{20}, 1}});
    add(A, "g", 1, 9, {{{5, 6}, 0}});
    EXPECT_EQ(build(), "/a.cc f 19-26: 19=4 20=1\n/a.cc g 1-9: 5=4 6=0\n");
}

TEST_F(ModelBuilderTest, LineOfAHeadersFunctionCountsThere)
{
    add(A, "f", 19, 26, {{{19}, 4}, {{5}, 3, H}, {{5, 6}, 2, H}});
    add(B, "k", 1, 2, {{{1}, 9}, {{6}, 9, H}});
    add(H, "g", 1, 9, {{{5, 6}, 0}});
    EXPECT_EQ(build(), "/a.cc f 19-26: 19=4\n/b.cc k 1-2: 1=9\n/h.h g 1-9: 5=3 6=11\n");
}

TEST_F(ModelBuilderTest, InnermostFunctionHoldsALine)
{
    add(A, "f", 20, 26, {{{20}, 1}, {{5}, 7}});
    add(A, "outer", 1, 9, {{{1}, 1}});
    add(A, "inner", 4, 6, {{{4}, 1}});
    EXPECT_EQ(build(), "/a.cc f 20-26: 20=1\n/a.cc inner 4-6: 4=1 5=7\n/a.cc outer 1-9: 1=1\n");
}

TEST_F(ModelBuilderTest, LineInTheOwnRangeStaysWhoeverIsInside)
{
    add(A, "outer", 1, 9, {{{1, 5}, 1}});
    add(A, "inner", 4, 6, {{{4}, 1}});
    EXPECT_EQ(build(), "/a.cc inner 4-6: 4=1\n/a.cc outer 1-9: 1,5=1\n");
}

TEST_F(ModelBuilderTest, LineThatNoFunctionHoldsStaysInTheOwnFile)
{
    add(A, "constructor", 19, 26, {{{5, 19}, 4}});
    EXPECT_EQ(build(), "/a.cc constructor 19-26: 5,19=4\n");
}

TEST_F(ModelBuilderTest, LinesOfIncludedTextMakeAnEntryInThatFile)
{
    add(A, "f", 1, 9, {{{1}, 1}, {{70, 71}, 2, B}, {{2}, 3}, {{60}, 4, B}});
    EXPECT_EQ(build(), "/a.cc f 1-9: 1=1 2=3\n/b.cc f 60-71: 70,71=2 60=4\n");
}

TEST_F(ModelBuilderTest, FunctionMadeByTheCompilerGivesOnlyWhatItHoldsOfOthers)
{
    add(A, "_ZN1BD2Ev", 3, 5, {{{4}, 1}, {{40}, 1}, {{13}, 7}, {{50}, 1, H}})._isHidden = true;
    add(A, "_ZN1AD2Ev", 12, 14, {{{12, 13}, 0}});
    add(A, "user", 3, 5, {{{3}, 2}});
    EXPECT_EQ(build(), "/a.cc _ZN1AD2Ev 12-14: 12=0 13=7\n/a.cc user 3-5: 3=2\n");
}

TEST_F(ModelBuilderTest, FunctionMadeByTheCompilerOwnsNoLines)
{
    add(A, "_ZN1BD2Ev", 3, 5, {{{13}, 7}})._isHidden = true;
    add(A, "_ZN1AD2Ev", 12, 14, {{{12}, 1}, {{4}, 2}});
    EXPECT_EQ(build(), "/a.cc _ZN1AD2Ev 12-14: 4=2 12=1 13=7\n");
}

TEST_F(ModelBuilderTest, InstancesOfOnePlaceAreFoundAmongOtherPlaces)
{
    add(H, "_Z1fIiEvT_", 1, 9, {{{1}, 3}});
    add(H, "_Z1fIlEvT_", 1, 8, {{{1}, 1}});
    add(H, "_Z1fIlEvT_", 1, 9, {{{1}, 4}});
    EXPECT_EQ(build(), "/h.h _Z1fIiEvT_ _Z1fIlEvT_ 1-9: 1=7\n/h.h _Z1fIlEvT_ 1-8: 1=1\n");
}

TEST_F(ModelBuilderTest, EntriesOfOneNameAreOne)
{
    add(A, "f", 1, 9, {{{1}, 1}, {{70, 71}, 2, H}});
    add(B, "f", 3, 9, {{{3}, 1}, {{71, 72}, 0, H}});
    add(B, "g", 20, 29, {{{20}, 1}, {{70}, 5, H}});
    EXPECT_EQ(build(), "/a.cc f 1-9: 1=1\n/b.cc f 3-9: 3=1\n/b.cc g 20-29: 20=1\n"
                       "/h.h f 70-72: 70=2 71=2 72=0\n/h.h g 70-70: 70=5\n");
}

TEST_F(ModelBuilderTest, RangeWithItsEndsInTwoFilesKeepsItsLines)
{
    add(A, "parse", 90, 20, {{{90, 5}, 1}, {{7}, 2, B}});
    add(A, "g", 4, 6, {{{4}, 1}});
    std::sort(_copies[0]._lines.begin(), _copies[0]._lines.end());
    EXPECT_EQ(build(), "/a.cc g 4-6: 4=1\n/a.cc parse 90-20: 5,90=1\n/b.cc parse 7-7: 7=2\n");
}

TEST_F(ModelBuilderTest, BodyBelongsToTheFunctionThatStartsThere)
{
    add(A, "_Z5counti", 3, 9, {{{3, 9}, 1}});
    FunctionCopy& body = add(A, "_Z5counti", 3, 3, {{{3}, 1}, {{5, 6}, 4}});
    body._isBody = true;
    body._endColumn = 5;
    EXPECT_EQ(build(), "/a.cc _Z5counti 3-9: 3=2 5=4 6=4 9=1\n");
}

TEST_F(ModelBuilderTest, BodyMayComeBeforeItsFunction)
{
    FunctionCopy& body = add(A, "_Z5counti", 3, 3, {{{3}, 1}, {{5, 6}, 4}});
    body._isBody = true;
    body._endColumn = 5;
    add(A, "_Z5counti", 3, 9, {{{3, 9}, 1}});
    EXPECT_EQ(build(), "/a.cc _Z5counti 3-9: 3=2 5=4 6=4 9=1\n");
}

TEST_F(ModelBuilderTest, BodyWithoutItsFunctionEndsAtItsLastLine)
{
    add(A, "f", 3, 9, {{{3}, 1}});
    add(A, "_Z5counti", 3, 3, {{{3}, 1}, {{5, 6}, 4}})._isBody = true;
    EXPECT_EQ(build(), "/a.cc _Z5counti 3-6: 3=1 5,6=4\n/a.cc f 3-9: 3=1\n");
}

TEST_F(ModelBuilderTest, CopiesMayShareCounts)
{
    add(H, "f", 1, 9, {{{1, 2}, 3}, {{4}, 5}});
    add(A, "g", 1, 9, {{{1}, 100}})._firstCount = 1;
    EXPECT_EQ(build(), "/a.cc g 1-9: 1=5\n/h.h f 1-9: 1,2=3 4=5\n");
}

TEST_F(ModelBuilderTest, SourceCompiledInTwoWaysIsToldOnce)
{
    add(A, "f", 1, 9, {{{1}, 1}});
    add(A, "f", 1, 9, {{{2}, 1}});
    add(A, "g", 10, 19, {{{11}, 1}});
    add(A, "g", 10, 19, {{{12}, 1}});
    (void)build();
    EXPECT_EQ(_losses._sourcesOfTwoBuilds, 1u);
}

TEST_F(ModelBuilderTest, SourcesOfEveryEndingAreTold)
{
    for (const char* ending :
         {".c", ".cc", ".cpp", ".cxx", ".c++", ".C", ".cp", ".m", ".mm", ".h", ".inc", ""}) {
        _sources[A] = "/folder.d/a" + std::string(ending);
        _losses = ImportLosses();
        _copies.clear();
        add(A, "f", 1, 9, {{{1}, 1}});
        add(A, "f", 1, 9, {{{2}, 1}});
        (void)build();
        const bool isSource =
            ending[0] != 0 && std::string(".h.inc").find(ending) == std::string::npos;
        EXPECT_EQ(_losses._sourcesOfTwoBuilds, isSource ? 1u : 0u) << ending;
    }
}

TEST_F(ModelBuilderTest, HeadersAndInstancesMayDiffer)
{
    add(H, "f", 1, 9, {{{1}, 1}});
    add(H, "f", 1, 9, {{{2}, 1}});
    add(A, "_Z1gIiEvT_", 1, 9, {{{1}, 3}});
    add(A, "_Z1gIlEvT_", 1, 9, {{{2}, 4}});
    add(B, "_Z1hv", 1, 9, {{{1}, 3}});
    add(B, "_Z1hv", 1, 1, {{{2}, 3}})._isBody = true;
    (void)build();
    EXPECT_EQ(_losses._sourcesOfTwoBuilds, 0u);
}

TEST_F(ModelBuilderTest, OrderOfCopiesDoesNotMatter)
{
    add(A, "f", 19, 26, {{{19}, 4}, {{5}, 3, H}, {{30}, 2, H}});
    add(H, "_Z1gIiEvT_", 1, 9, {{{5, 6}, 0}});
    add(H, "_Z1gIlEvT_", 1, 9, {{{5, 7}, 1}});
    add(B, "f", 1, 2, {{{1}, 9}, {{31}, 9, H}});
    const std::string expected = build();
    std::reverse(_copies.begin(), _copies.end());
    EXPECT_EQ(build(), expected);
}

TEST_F(ModelBuilderTest, WhatHasNoLinesIsNotThere)
{
    add(A, "f", 1, 9, {});
    EXPECT_EQ(build(), "");
}

} // namespace
