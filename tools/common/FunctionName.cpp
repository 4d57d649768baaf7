// SPDX-License-Identifier: MIT
#include "tools/common/FunctionName.h"

#include "tools/common/NameText.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/TypeCode.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

constexpr size_t LongestLabel = 60; // of a function in the simple report, in characters

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

// Whether the class report finds the last part of a name, which it cuts off behind the last colon:
// no brackets stand before that one, and it is none of the type that a conversion makes.
bool hasPlainLastPart(const std::string& name)
{
    const size_t colon = name.rfind(':');
    const size_t end = colon == std::string::npos ? 0 : colon;
    return std::none_of(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(end),
                        [](char c) { return c == ' ' || c == '<' || c == '(' || c == '{'; });
}

// The last part of a name without what the class report would be cut at.
std::string withPlainLastPart(const std::string& name)
{
    if (hasPlainLastPart(name)) {
        return name;
    }
    const size_t part = NameText(name).lastPart();
    return name.find(':', part) == std::string::npos
               ? name
               : name.substr(0, part) + withoutQualifiers(name.substr(part));
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
std::string encodedName(const FunctionText& function, const std::string& shown, bool isShort,
                        size_t& nChanged)
{
    if (!canHaveTypes(shown)) {
        return "";
    }
    std::string stored;
    if (!isShort && function._name.find("operator ") != std::string::npos) {
        stored = conversionName(NameText(function._name));
    }
    stored = (stored.empty() ? shown : stored) + "__F";
    const bool isEncoded =
        isShort ? appendFunctionCode(function._name, function._types, stored, nChanged)
                : appendTypeCodes(function._types, stored, nChanged);
    return isEncoded && stored.size() <= RecordPayload::LongestText ? stored : "";
}

// Whether the name is one of "S::operator ns::T" and too long with its namespaces.
bool isLongConversion(const std::string& name)
{
    return name.size() > LongestLabel && name.find("operator ") != std::string::npos &&
           !conversionName(NameText(name)).empty();
}

// A name with "__" has no form with types, so argument lists with it are left out of short names,
// too.
std::string withoutLists(const std::string& whole)
{
    if (isPlainName(whole)) {
        return whole;
    }
    std::string shown =
        whole.size() > LongestLabel ? NameText(whole).shortened(LongestLabel) : whole;
    if (shown.find("__") == std::string::npos) {
        return shown;
    }
    std::string plain = NameText(shown).withoutDoubleUnderscores();
    return plain.find("__") == std::string::npos ? plain : shown;
}

// What the simple report shows of a name.
std::string shownLabel(const std::string& whole, const NameStyle& style)
{
    if (style._isFull) {
        return whole;
    }
    std::string shown = withoutLists(whole);
    return style._shortLabels == nullptr ? shown : style._shortLabels->of(shown);
}

// The stored form of a function of which nothing has to be changed or left out, which is most of
// them. Empty for others.
std::string unchangedForm(const FunctionText& function, const NameStyle& style)
{
    const std::string& name = function._name;
    if (!function._hasTypes || function._isSymbol || name.size() > LongestLabel ||
        (style._shortLabels != nullptr && !style._isFull) || !canHaveTypes(name) ||
        !hasPlainLastPart(name) || name.find("operator") != std::string::npos) {
        return "";
    }
    std::string stored;
    stored.reserve(name.size() + function._types.size() + 4);
    stored.append(name).append("__F");
    size_t nChanged = 0;
    const bool isEncoded = appendTypeCodes(function._types, stored, nChanged);
    return isEncoded && nChanged == 0 && stored.size() <= RecordPayload::LongestText ? stored : "";
}

std::string storedForm(const FunctionText& function, const NameStyle& style, ImportLosses& losses)
{
    std::string unchanged = unchangedForm(function, style);
    if (!unchanged.empty()) {
        return unchanged;
    }
    bool isRenamed = false;
    std::string stored;
    if (function._isSymbol) {
        stored = plainName(function._name, isRenamed);
    } else {
        const std::string whole = withPlainLastPart(function._name);
        const std::string shown = shownLabel(whole, style);
        const bool isShort = shown != whole || (!style._isFull && isLongConversion(function._name));
        size_t nChanged = 0;
        if (function._hasTypes) {
            stored = encodedName(function, shown, isShort, nChanged);
        }
        if (stored.empty()) {
            stored = plainName(shown, isRenamed);
            ++losses._namesWithoutTypes;
        }
        isRenamed = isRenamed || whole != function._name || nChanged > 0;
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
        text.resize(text.size() - std::strlen(end));
    }
    return true;
}

bool allSame(const std::vector<std::string>& texts)
{
    return std::all_of(texts.begin(), texts.end(),
                       [&texts](const std::string& text) { return text == texts.front(); });
}

// Whether the types are one but for their argument lists; `shared` is that one then.
bool haveOneTemplate(const std::vector<std::string>& types, std::string& shared)
{
    shared = withoutArguments(types.front());
    return std::all_of(types.begin() + 1, types.end(), [&shared](const std::string& type) {
        return withoutArguments(type) == shared;
    });
}

// One type for what is the same parameter in each instance: itself, the same with `<...>`, or
// "auto" with the marks that all have.
std::string sharedType(std::vector<std::string> types)
{
    if (allSame(types)) {
        return types.front();
    }
    std::string shared;
    if (haveOneTemplate(types, shared)) {
        return shared;
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
std::string sharedTypes(const std::vector<FunctionText>& instances)
{
    std::vector<std::vector<std::string>> lists;
    size_t shortest = static_cast<size_t>(-1);
    size_t longest = 0;
    const std::string* before = nullptr;
    for (const FunctionText& instance : instances) {
        if (before != nullptr && *before == instance._types) {
            continue; // says nothing new
        }
        before = &instance._types;
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
        types.reserve(lists.size());
        for (std::vector<std::string>& list : lists) {
            types.push_back(std::move(list[i]));
        }
        result += sharedType(std::move(types));
    }
    return result;
}

// What is left of a name that tells its instances from each other: nothing. A conversion to a
// parameter's type is one to "auto".
std::string withoutInstance(const std::string& name)
{
    if (name.find('<') == std::string::npos) {
        return name;
    }
    std::string plain;
    if (leavePlainListsOut(name, plain)) {
        return plain; // it has no details
    }
    const NameText text(name);
    if (!text.hasArguments()) {
        return name;
    }
    return text.conversionType() == NameText::None
               ? text.withoutDetails()
               : NameText(name.substr(0, text.conversionType())).withoutDetails() + "auto";
}

// What a conversion's shared name has of it: all but the type.
std::string conversionFront(const std::string& name)
{
    const size_t type = NameText(name).conversionType();
    return type == NameText::None ? name : name.substr(0, type);
}

// Whether the name without argument lists, which was made of each instance already, is one, and
// nothing else was left out of it.
bool isOneTemplateName(const std::vector<FunctionText>& instances)
{
    const std::string& first = instances.front()._template;
    return !first.empty() && first.find("(...)") == std::string::npos &&
           NameText(first).conversionType() == NameText::None &&
           std::all_of(instances.begin(), instances.end(),
                       [&first](const FunctionText& one) { return one._template == first; });
}

// The name of several instances: no template arguments, and of the parameters of lambdas and of
// functions around those that all have.
std::string sharedName(const std::vector<FunctionText>& instances)
{
    const std::string& first = instances.front()._name;
    if (std::all_of(instances.begin(), instances.end(),
                    [&first](const FunctionText& one) { return one._name == first; })) {
        return first;
    }
    if (isOneTemplateName(instances)) {
        return instances.front()._template;
    }
    const std::string plain = withoutArguments(first);
    const std::string front = conversionFront(plain);
    const NameText text(front);
    const std::vector<std::string> details = text.details();
    std::vector<bool> keeps(details.size(), true);
    bool isSameConversion = true;
    for (const FunctionText& one : instances) {
        const std::string other = withoutArguments(one._name);
        if (other == plain) {
            continue;
        }
        const std::string otherFront = conversionFront(other);
        isSameConversion =
            isSameConversion && other.substr(otherFront.size()) == plain.substr(front.size());
        const std::vector<std::string> others = NameText(otherFront).details();
        for (size_t i = 0; i < keeps.size(); ++i) {
            keeps[i] = keeps[i] && i < others.size() && others[i] == details[i];
        }
    }
    return text.withDetails(keeps) + (isSameConversion ? plain.substr(front.size()) : "auto");
}

} // namespace

FunctionText unitedText(std::vector<FunctionText>& instances, ImportLosses& losses)
{
    for (const FunctionText& one : instances) {
        losses._namesNotUnfolded += one._isTooLarge ? 1 : 0;
    }
    if (instances.size() == 1) {
        return std::move(instances.front());
    }
    FunctionText function;
    function._name = sharedName(instances);
    function._types = sharedTypes(instances);
    function._hasTypes = std::all_of(instances.begin(), instances.end(),
                                     [](const FunctionText& one) { return one._hasTypes; });
    function._isSymbol = std::all_of(instances.begin(), instances.end(),
                                     [](const FunctionText& one) { return one._isSymbol; });
    return function;
}

std::string storedNameOf(const FunctionText& function, const NameStyle& style, ImportLosses& losses)
{
    return storedForm(function, style, losses);
}

std::string storedFunctionName(const std::vector<std::string>& symbols, const NameStyle& style,
                               ImportLosses& losses)
{
    std::vector<FunctionText> instances;
    instances.reserve(symbols.size());
    for (const std::string& symbol : symbols) {
        instances.push_back(readFunctionText(symbol));
    }
    return storedForm(unitedText(instances, losses), style, losses);
}

std::string storedFunctionName(const std::string& symbol, ImportLosses& losses)
{
    return storedFunctionName(std::vector<std::string>{symbol}, NameStyle(), losses);
}

const std::string& templateName(FunctionText& text)
{
    if (text._template.empty()) {
        text._template = withoutInstance(text._name);
    }
    return text._template;
}

std::string templateName(const std::string& symbol)
{
    return withoutInstance(readFunctionText(symbol)._name);
}
