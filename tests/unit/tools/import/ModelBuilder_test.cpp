// SPDX-License-Identifier: MIT
#include "tools/import/ModelBuilder.h"

#include <gtest/gtest.h>

namespace {

class ModelBuilderTest : public ::testing::Test
{
protected:
    void add(const char* path, const char* symbol, const std::vector<CovBlock>& blocks)
    {
        CovFunction function;
        function._symbol = symbol;
        function._startLine = 1;
        function._endLine = 9;
        function._blocks = blocks;
        _builder.add(path, function);
    }

    CoverageModel _model;
    ModelBuilder _builder{_model};
};

TEST_F(ModelBuilderTest, CopiesOfAFunctionAreAddedUp)
{
    add("/h.h", "f", {{1, 2, 3}, {4, 4, 0}});
    add("/h.h", "f", {{1, 2, 0}, {4, 4, 0}});
    add("/h.h", "f", {{1, 2, 4}, {4, 4, 1}});
    ASSERT_EQ(_model._files.size(), 1u);
    ASSERT_EQ(_model._files[0]._functions.size(), 1u);
    EXPECT_EQ(_model._files[0]._functions[0]._blocks[0]._hits, 7);
    EXPECT_EQ(_model._files[0]._functions[0]._blocks[1]._hits, 1);
}

TEST_F(ModelBuilderTest, CopiesThatDifferStayApart)
{
    add("/h.h", "f", {{1, 2, 3}});
    add("/h.h", "f", {{1, 3, 3}});
    add("/h.h", "f", {{1, 2, 3}, {4, 4, 0}});
    add("/h.h", "g", {{1, 2, 3}});
    ASSERT_EQ(_model._files.size(), 1u);
    EXPECT_EQ(_model._files[0]._functions.size(), 4u);
}

TEST_F(ModelBuilderTest, SameFunctionInTwoFilesStaysApart)
{
    add("/a.cc", "f", {{1, 2, 3}});
    add("/b.cc", "f", {{1, 2, 3}});
    EXPECT_EQ(_model._files.size(), 2u);
}

TEST_F(ModelBuilderTest, SumsDoNotOverflow)
{
    add("/a.cc", "f", {{1, 2, INT64_MAX}, {3, 3, INT64_MIN}});
    add("/a.cc", "f", {{1, 2, 1}, {3, 3, -1}});
    EXPECT_EQ(_model._files[0]._functions[0]._blocks[0]._hits, INT64_MAX);
    EXPECT_EQ(_model._files[0]._functions[0]._blocks[1]._hits, INT64_MIN);
}

} // namespace
