// SPDX-License-Identifier: MIT
#include "tools/common/shortenLabels.h"

#include "tools/common/parallel.h"
#include "zem/Demangle/demangle.h"

#include <cstdlib>
#include <vector>

namespace {

// What the simple report shows of a stored name.
std::string labelOf(const std::string& stored)
{
    const size_t mark = stored.find("__");
    if (mark == std::string::npos) {
        return stored;
    }
    if (mark > 0 && stored[mark - 1] != ':' && stored.compare(mark, 3, "__F") == 0) {
        return stored.substr(0, mark);
    }
    char* text = demangle_name(stored.c_str(), -1);
    std::string label = text != nullptr ? text : stored;
    std::free(text);
    return label;
}

class RenameJob : public ParallelJob
{
public:
    RenameJob(CoverageModel& model, const NameStyle& style) : _model(model), _style(style) {}

    void run(size_t item) override
    {
        for (CovFunction& function : _model._files[item]._functions) {
            if (!function._texts.empty()) {
                rename(function);
                std::vector<FunctionText>().swap(function._texts);
            }
        }
    }

private:
    void rename(CovFunction& function) const
    {
        const std::string label = labelOf(function._storedName);
        if (_style._shortLabels->of(label) != label) {
            ImportLosses counted; // the function had a name already
            function._storedName = storedNameOf(function._texts.front(), _style, counted);
        }
    }

    CoverageModel& _model;
    const NameStyle& _style;
};

} // namespace

bool mayNeedShortLabel(const std::string& stored, const NameStyle& style)
{
    const size_t least = ShortLabels::WidestScope;
    if (style._isFull || stored.size() <= least) {
        return false;
    }
    const size_t mark = stored.find("__");
    return mark > least || stored.compare(mark, 4, "__op") == 0;
}

void shortenLabels(CoverageModel& model, const NameStyle& style, unsigned int nThreads)
{
    ShortLabels labels;
    for (const CovFile& file : model._files) {
        for (const CovFunction& function : file._functions) {
            if (!function._texts.empty()) {
                labels.add(labelOf(function._storedName));
            }
        }
    }
    labels.finish();
    NameStyle shortStyle = style;
    shortStyle._shortLabels = &labels;
    RenameJob job(model, shortStyle);
    runParallel(job, model._files.size(), nThreads);
}
