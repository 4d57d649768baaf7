// SPDX-License-Identifier: MIT
//
// Any bytes as symbols, one on each line: the instances of one function. What is stored is never
// empty, fits into a record, and shows the same name at every level. No symbol's text is longer
// than it was measured to be.
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "tools/common/FunctionName.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/ShortLabels.h"
#include "tools/common/SymbolScan.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr uint64_t LongestText = 1000000;

std::string shown(const std::string& stored, int mode)
{
    char* text = demangle_name(stored.c_str(), mode);
    std::string result = text != nullptr ? text : "";
    std::free(text);
    return result;
}

void checkLength(const std::string& symbol)
{
    const SymbolScan scan = scanSymbol(symbol);
    if (!scan._isKnown || scan._length > LongestText) {
        return;
    }
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
    qipAssert(text == nullptr || std::strlen(text) <= scan._length);
    std::free(text);
}

// A label has a short form, and so has what belongs to the same class.
void checkLabels(const std::string& label)
{
    ShortLabels labels;
    labels.add(label);
    labels.finish();
    qipAssert(!labels.of(label).empty() && labels.of(label).size() <= label.size());
    qipAssert(labels.isEmpty() == (label.size() <= ShortLabels::Widest));
    qipAssert(!labels.of(label + "::f").empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<std::string> symbols;
    for (std::string line; std::getline(in, line);) {
        line.erase(std::remove(line.begin(), line.end(), '\0'), line.end());
        if (!line.empty()) {
            symbols.push_back(line);
            checkLength(line);
        }
    }
    if (symbols.empty()) {
        return 0;
    }
    std::sort(symbols.begin(), symbols.end());
    symbols.erase(std::unique(symbols.begin(), symbols.end()), symbols.end());
    ImportLosses losses;
    const std::string stored = storedFunctionName(symbols, NameStyle(), losses);
    qipAssert(!stored.empty() && stored.size() <= RecordPayload::LongestText);
    const std::string name = shown(stored, -1);
    const std::string full = shown(stored, 0);
    qipAssert(name.empty() == full.empty() && full.compare(0, name.size(), name) == 0);
    qipAssert(!templateName(symbols.front()).empty());
    checkLabels(name.empty() ? stored : name);
    return 0;
}
