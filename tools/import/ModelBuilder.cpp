// SPDX-License-Identifier: MIT
#include "tools/import/ModelBuilder.h"

#include <utility>

namespace {

void appendWord(std::string& key, uint32_t value)
{
    key.append(reinterpret_cast<const char*>(&value), sizeof(value));
}

// Everything of a function but its counts.
std::string identity(const CovFunction& function)
{
    std::string key = function._symbol;
    key += '\0';
    appendWord(key, function._startLine);
    appendWord(key, function._endLine);
    for (const CovBlock& block : function._blocks) {
        appendWord(key, block._startLine);
        appendWord(key, block._stopLine);
    }
    return key;
}

void addCounts(CovFunction& sum, const CovFunction& other)
{
    for (size_t i = 0; i < sum._blocks.size(); ++i) {
        int64_t& hits = sum._blocks[i]._hits;
        const int64_t more = other._blocks[i]._hits;
        if (__builtin_add_overflow(hits, more, &hits)) {
            hits = more > 0 ? INT64_MAX : INT64_MIN;
        }
    }
}

} // namespace

ModelBuilder::ModelBuilder(CoverageModel& model) : _model(model) {}

void ModelBuilder::add(const std::string& path, CovFunction& function)
{
    const auto file = _files.emplace(path, _model._files.size());
    if (file.second) {
        _model._files.emplace_back();
        _model._files.back()._path = path;
        _functions.emplace_back();
    }
    const size_t index = file.first->second;
    std::vector<CovFunction>& functions = _model._files[index]._functions;
    const auto place = _functions[index].emplace(identity(function), functions.size());
    if (place.second) {
        functions.push_back(std::move(function));
    } else {
        addCounts(functions[place.first->second], function);
    }
}
