// SPDX-License-Identifier: MIT
#include "tools/common/FunctionName.h"

#include "tools/common/NameText.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/StandardNames.h"
#include "tools/common/SymbolScan.h"
#include "tools/common/TypeCode.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <new>

namespace {

constexpr size_t LongestLabel = 60;          // of a function in the simple report, in characters
constexpr uint64_t LongestUnfolded = 262144; // text that is made of a symbol, in characters

// A symbol as the compiler's decoder shows it. A name that is no C++ name has no types.
struct Function
{
    std::string _name;
    std::string _types;
    bool _hasTypes = false;
};

bool takeEnd(std::string& text, const char* end)
{
    const size_t length = std::strlen(end);
    if (text.size() < length || text.compare(text.size() - length, length, end) != 0) {
        return false;
    }
    text.resize(text.size() - length);
    return true;
}

void dropQualifiers(std::string& text)
{
    while (takeEnd(text, " const") || takeEnd(text, " volatile") || takeEnd(text, " &&") ||
           takeEnd(text, " &") || takeEnd(text, " noexcept") ||
           takeEnd(text, " transaction_safe")) {
    }
}

// The text of a symbol; empty when it is no C++ name. The decoder's own status for a lack of memory
// must not look like that.
std::string decoded(const std::string& symbol)
{
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    if (text == nullptr && status == -1) {
        throw std::bad_alloc();
    }
    std::string result = text != nullptr ? text : "";
    std::free(text);
    return result;
}

// The bracket that opens the parameter list, whose closing one is the text's last.
size_t parametersAtEnd(const std::string& text)
{
    const NameText brackets(text);
    if (text.empty() || text.back() != ')') {
        return std::string::npos;
    }
    const size_t bracket = brackets.partner(text.size() - 1);
    return bracket == NameText::None ? std::string::npos : bracket;
}

// Finds the parameters of the function whose whole text and whose name's text these are: the result
// may be an array or a function, whose marks stand behind the parameters.
size_t parametersOf(const std::string& text, const std::string& name)
{
    const size_t at = text.find(name + "(");
    return at == std::string::npos ? std::string::npos : at + name.size();
}

Function readFunction(const std::string& symbol, ImportLosses& losses)
{
    Function function;
    function._name = symbol;
    if (symbol.compare(0, 2, "_Z") != 0) {
        return function;
    }
    const SymbolScan scan = scanSymbol(symbol);
    if (scan._length > LongestUnfolded) {
        ++losses._namesNotUnfolded;
        return function;
    }
    std::string text = decoded(symbol);
    if (text.empty()) {
        return function;
    }
    text.resize(std::min(text.find(" [clone "), text.size()));
    size_t start = 0;
    size_t bracket = std::string::npos;
    if (scan._isKnown && scan._hasResult) {
        std::string name = decoded(symbol.substr(0, scan._nameEnd));
        dropQualifiers(name);
        bracket = name.empty() ? bracket : parametersOf(text, name);
        start = bracket == std::string::npos ? 0 : bracket - name.size();
    }
    if (bracket == std::string::npos) {
        dropQualifiers(text);
        bracket = parametersAtEnd(text);
    }
    if (bracket == std::string::npos || bracket == 0) {
        function._name = withStandardNames(text);
        return function;
    }
    const size_t end = NameText(text).partner(bracket);
    function._name = withStandardNames(text.substr(start, bracket - start));
    function._types = withStandardNames(text.substr(bracket + 1, end - bracket - 1));
    function._hasTypes = true;
    return function;
}

bool looksEncoded(const std::string& name)
{
    if (name.find("__") == std::string::npos) {
        return false;
    }
    char* text = demangle_name(name.c_str(), -1);
    std::free(text);
    return text != nullptr;
}

// A name without types must be shown as it is, so it must not look encoded.
std::string plainName(std::string name, bool& isRenamed)
{
    if (!looksEncoded(name)) {
        return name;
    }
    for (size_t at = name.find("__"); at != std::string::npos; at = name.find("__", at + 3)) {
        name.replace(at, 2, "_ _");
    }
    isRenamed = true;
    return name;
}

// Whether the decoder finds its mark where "__F" is appended. The first "__" counts.
bool canHaveTypes(const std::string& name)
{
    return !name.empty() && name.back() != '_' && name.back() != ':' &&
           name.find("__") == std::string::npos;
}

// The last part of a name without what the class report would be cut at.
std::string withPlainLastPart(const NameText& name)
{
    return name.text().substr(0, name.lastPart()) +
           withoutQualifiers(name.text().substr(name.lastPart()));
}

// "S::operator ns::T" keeps its type where that has a code: S::__opQ22ns1T.
std::string conversionName(const NameText& name)
{
    const size_t at = name.conversionType();
    if (at == NameText::None || name.text().find(':', at) == std::string::npos ||
        name.lastPart() == 0) {
        return "";
    }
    std::string code;
    size_t nChanged = 0;
    const std::string front = name.text().substr(0, name.lastPart());
    const bool isEncoded = appendNameCode(name.text().substr(at), code, nChanged);
    return isEncoded && nChanged == 0 && (front + code).find("__") == std::string::npos &&
                   code.back() != '_'
               ? front + "__op" + code
               : "";
}

// The name `shown` with its types. Where it is a shortened one, the only parameter is the whole
// function. Empty when that has no code, or one that no record can hold.
std::string encodedName(const Function& function, const std::string& shown, bool isShort,
                        size_t& nChanged)
{
    if (!canHaveTypes(shown)) {
        return "";
    }
    std::string stored = isShort ? "" : conversionName(NameText(function._name));
    stored = (stored.empty() ? shown : stored) + "__F";
    const bool isEncoded =
        isShort ? appendFunctionCode(function._name, function._types, stored, nChanged)
                : appendTypeCodes(function._types, stored, nChanged);
    return isEncoded && stored.size() <= RecordPayload::LongestText ? stored : "";
}

std::string storedForm(const Function& function, const NameStyle& style, ImportLosses& losses)
{
    bool isRenamed = false;
    std::string stored;
    if (function._hasTypes) {
        const std::string whole = withPlainLastPart(NameText(function._name));
        const std::string shown = style._isFull ? whole : NameText(whole).shortened(LongestLabel);
        size_t nChanged = 0;
        stored = encodedName(function, shown, shown != whole, nChanged);
        losses._namesWithoutTypes += stored.empty() ? 1 : 0;
        stored = stored.empty() ? plainName(shown, isRenamed) : stored;
        isRenamed = isRenamed || whole != function._name || nChanged > 0;
    } else {
        stored = plainName(function._name, isRenamed);
    }
    if (stored.size() > RecordPayload::LongestText) {
        stored.resize(RecordPayload::LongestText);
        isRenamed = true;
    }
    losses._renamedFunctions += isRenamed ? 1 : 0;
    return stored;
}

bool takeSharedEnd(std::vector<std::string>& texts, const char* end)
{
    for (const std::string& text : texts) {
        if (text.size() < std::strlen(end) ||
            text.compare(text.size() - std::strlen(end), std::string::npos, end) != 0) {
            return false;
        }
    }
    for (std::string& text : texts) {
        (void)takeEnd(text, end);
    }
    return true;
}

bool allSame(const std::vector<std::string>& texts)
{
    return std::all_of(texts.begin(), texts.end(),
                       [&texts](const std::string& text) { return text == texts.front(); });
}

// One type for what is the same parameter in each instance: itself, the same with `<...>`, or
// "auto" with the marks that all have.
std::string sharedType(std::vector<std::string> types)
{
    if (allSame(types)) {
        return types.front();
    }
    std::vector<std::string> templates;
    for (const std::string& type : types) {
        templates.push_back(NameText(type).withoutArguments());
    }
    if (allSame(templates)) {
        return templates.front();
    }
    std::string marks;
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (const char* mark : {"&&", "&", "*", " const", " volatile"}) {
            if (takeSharedEnd(types, mark)) {
                marks.insert(0, mark);
                isFound = true;
                break;
            }
        }
    }
    return "auto" + marks;
}

// The parameters of all instances; "..." for those that only some have.
std::string sharedTypes(const std::vector<Function>& instances)
{
    std::vector<std::vector<std::string>> lists;
    size_t shortest = static_cast<size_t>(-1);
    size_t longest = 0;
    for (const Function& instance : instances) {
        lists.push_back(splitList(instance._types));
        shortest = std::min(shortest, lists.back().size());
        longest = std::max(longest, lists.back().size());
    }
    std::string result;
    for (size_t i = 0; i < longest; ++i) {
        result += i > 0 ? ", " : "";
        if (i == shortest) {
            return result + "...";
        }
        std::vector<std::string> types;
        for (const std::vector<std::string>& list : lists) {
            types.push_back(list[i]);
        }
        result += sharedType(types);
    }
    return result;
}

// What is left of a name that tells its instances from each other: nothing. A conversion to a
// parameter's type is one to "auto".
std::string withoutInstance(const std::string& name)
{
    const NameText text(name);
    if (!text.hasArguments()) {
        return name;
    }
    return text.conversionType() == NameText::None
               ? text.withoutDetails()
               : NameText(name.substr(0, text.conversionType())).withoutDetails() + "auto";
}

std::string sharedName(const std::vector<Function>& instances)
{
    std::vector<std::string> names;
    std::vector<std::string> templates;
    std::vector<std::string> keys;
    for (const Function& instance : instances) {
        names.push_back(instance._name);
        templates.push_back(NameText(instance._name).withoutArguments());
        keys.push_back(withoutInstance(instance._name));
    }
    return allSame(names) ? names.front() : allSame(templates) ? templates.front() : keys.front();
}

} // namespace

std::string storedFunctionName(const std::vector<std::string>& symbols, const NameStyle& style,
                               ImportLosses& losses)
{
    std::vector<Function> instances;
    for (const std::string& symbol : symbols) {
        instances.push_back(readFunction(symbol, losses));
    }
    Function function = instances.front();
    if (instances.size() > 1) {
        function._name = sharedName(instances);
        function._types = sharedTypes(instances);
        function._hasTypes = std::all_of(instances.begin(), instances.end(),
                                         [](const Function& one) { return one._hasTypes; });
    }
    return storedForm(function, style, losses);
}

std::string storedFunctionName(const std::string& symbol, ImportLosses& losses)
{
    return storedForm(readFunction(symbol, losses), NameStyle(), losses);
}

std::string templateName(const std::string& symbol)
{
    ImportLosses losses;
    return withoutInstance(readFunction(symbol, losses)._name);
}
