// SPDX-License-Identifier: MIT
//
// Collects functions into a coverage model. One function may come several times: a header's from
// each unit that includes it, and a linked program runs only one of the copies. Copies with the
// same symbol and the same blocks become one function with the counts added up; copies that differ
// stay functions of their own.
#pragma once

#include "tools/common/CoverageModel.h"

#include <unordered_map>

class ModelBuilder
{
public:
    // Adds to `model`, which outlives the builder and had no files before.
    explicit ModelBuilder(CoverageModel& model);

    // Adds a function of the file `path`; takes its contents.
    void add(const std::string& path, CovFunction& function);

private:
    CoverageModel& _model;
    std::unordered_map<std::string, size_t> _files; // path > index in the model
    // For each file: symbol and lines > index in the file.
    std::vector<std::unordered_map<std::string, size_t>> _functions;
};
