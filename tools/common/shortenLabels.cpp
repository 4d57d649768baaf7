// SPDX-License-Identifier: MIT
#include "tools/common/shortenLabels.h"

#include "zem/Demangle/demangle.h"

#include <cstdlib>
#include <cstring>

namespace {

// What the simple report shows of a stored name that is wider than `width`; empty for others.
std::string labelWiderThan(size_t width, const std::string& stored)
{
    const size_t mark = stored.find("__");
    if (stored.size() <= width ||
        (mark != std::string::npos && mark <= width && stored.compare(mark, 4, "__op") != 0)) {
        return "";
    }
    char* text = demangle_name(stored.c_str(), -1);
    std::string label = text != nullptr ? text : stored;
    std::free(text);
    return label.size() > width ? label : "";
}

void rename(CovFunction& function, const NameStyle& style)
{
    const std::string label = labelWiderThan(ShortLabels::WidestScope, function._storedName);
    if (!label.empty() && style._shortLabels->of(label) != label) {
        ImportLosses counted; // the function had a name already
        function._storedName = storedFunctionName(function._symbols, style, counted);
    }
}

} // namespace

void shortenLabels(CoverageModel& model, const NameStyle& style)
{
    if (style._isFull) {
        return;
    }
    ShortLabels labels;
    for (const CovFile& file : model._files) {
        for (const CovFunction& function : file._functions) {
            labels.add(labelWiderThan(ShortLabels::Widest, function._storedName));
        }
    }
    labels.finish();
    if (labels.isEmpty()) {
        return;
    }
    NameStyle shortStyle = style;
    shortStyle._shortLabels = &labels;
    for (CovFile& file : model._files) {
        for (CovFunction& function : file._functions) {
            rename(function, shortStyle);
        }
    }
}
