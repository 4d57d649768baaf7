// SPDX-License-Identifier: MIT
//
// What tests of a coverage model start from: an empty model and the counts of a run of it.
#pragma once

#include "tests/support/TempDir.h"
#include "tests/unit/tools/common/CovSample.h"

#include <gtest/gtest.h>

class CovSampleTest : public ::testing::Test
{
protected:
    CovFunction function(const char* symbol, uint32_t start, uint32_t end,
                         const std::vector<CovSampleRange>& blocks)
    {
        return covFunction(_counts, symbol, start, end, blocks);
    }

    void addFile(const std::string& path, const std::vector<CovFunction>& functions)
    {
        _model._files.emplace_back();
        _model._files.back()._path = path;
        _model._files.back()._functions = functions;
    }

    const TempDir _dir;
    CoverageModel _model;
    std::vector<int64_t> _counts; // of a run
    ImportLosses _losses;
};
