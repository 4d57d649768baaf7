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
    bool _isSymbol = false; // no C++ name: shown as it is
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

// The bracket that opens the parameter list, whose closing one is the text's last. Parentheses are
// always in pairs, those of an operator's name, too.
size_t parametersAtEnd(const std::string& text)
{
    int depth = 0;
    for (size_t i = text.size(); i-- > 0;) {
        depth += text[i] == ')' ? 1 : 0;
        depth -= text[i] == '(' ? 1 : 0;
        if (depth == 0) {
            return text[i] == '(' ? i : std::string::npos;
        }
    }
    return std::string::npos;
}

// The bracket that closes the one at `bracket`, or the text's end.
size_t closingBracket(const std::string& text, size_t bracket)
{
    int depth = 0;
    size_t i = bracket;
    for (; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1 : 0;
        depth -= text[i] == ')' ? 1 : 0;
        if (depth == 0) {
            break;
        }
    }
    return i;
}

// The parameter packs of lambdas as types with a qualifier "...", which every decoder knows.
std::string withPacksQualified(const std::string& symbol, const SymbolScan& scan)
{
    std::string result = symbol;
    for (size_t i = scan._lambdaPacks.size(); i-- > 0;) {
        result.replace(scan._lambdaPacks[i], 2, "U3...");
    }
    return result;
}

// Shows the qualifier as decoders do that know packs: "(auto:1)..." of "auto:1 ...". Returns how
// many there were.
size_t restorePacks(std::string& text)
{
    size_t count = 0;
    for (size_t at = text.find(" ..."); at != std::string::npos; at = text.find(" ...", at)) {
        const NameText brackets(text);
        size_t start = at;
        while (start > 0 && std::strchr("(<", text[start - 1]) == nullptr &&
               (start < 2 || text.compare(start - 2, 2, ", ") != 0)) {
            --start;
            const size_t partner = brackets.partner(start);
            start = partner != NameText::None && partner < start ? partner : start;
        }
        if (start < at) {
            text.replace(at, 1, ")");
            text.insert(start, "(");
            ++count;
        }
        at += 2;
    }
    return count;
}

// The symbol's text and where its parts are in it.
struct Decoded
{
    std::string _text;
    size_t _name = 0;                       // where the name starts
    size_t _parameters = std::string::npos; // their opening bracket
};

// Of a name with a result the place is found by the name's own text: the marks of a result that is
// an array or a function stand behind the parameters.
void findName(const std::string& symbol, const SymbolScan& scan, Decoded& result)
{
    if (scan._isKnown && scan._hasResult) {
        std::string name = decoded(symbol.substr(0, scan._nameEnd));
        dropQualifiers(name);
        const size_t at = name.empty() ? std::string::npos : result._text.find(name + "(");
        if (at != std::string::npos) {
            result._name = at;
            result._parameters = at + name.size();
            return;
        }
    }
    dropQualifiers(result._text);
    result._parameters = parametersAtEnd(result._text);
}

Decoded decodeSymbol(const std::string& symbol, const SymbolScan& scan)
{
    Decoded result;
    result._text = decoded(symbol);
    if (result._text.empty() && !scan._lambdaPacks.empty()) {
        // The name alone: parameters may refer to the pack, and would not be one any more.
        const std::string usable = withPacksQualified(symbol, scan);
        result._text = decoded(usable.substr(0, scanSymbol(usable)._nameEnd));
        if (restorePacks(result._text) != scan._lambdaPacks.size()) {
            result._text.clear();
        }
        dropQualifiers(result._text);
        return result;
    }
    result._text.resize(std::min(result._text.find(" [clone "), result._text.size()));
    for (const char* thunk : {"non-virtual thunk to ", "virtual thunk to "}) {
        if (result._text.compare(0, std::strlen(thunk), thunk) == 0) {
            result._text.erase(0, std::strlen(thunk)); // its lines are the function's
        }
    }
    findName(symbol, scan, result);
    return result;
}

Function readFunction(const std::string& symbol, ImportLosses& losses)
{
    Function function;
    function._name = symbol;
    function._isSymbol = true;
    if (symbol.compare(0, 2, "_Z") != 0) {
        return function;
    }
    const SymbolScan scan = scanSymbol(symbol);
    if (scan._length > LongestUnfolded) {
        ++losses._namesNotUnfolded;
        return function;
    }
    const Decoded found = decodeSymbol(symbol, scan);
    const std::string& text = found._text;
    if (text.empty()) {
        return function;
    }
    function._isSymbol = false;
    const size_t bracket = found._parameters;
    if (bracket == std::string::npos || bracket == 0) {
        function._name = withStandardNames(text);
        return function;
    }
    const size_t end = closingBracket(text, bracket);
    function._name = withStandardNames(text.substr(found._name, bracket - found._name));
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
std::string withPlainLastPart(const std::string& name)
{
    const size_t part =
        name.find_first_of("<(") == std::string::npos && name.find("operator ") == std::string::npos
            ? name.rfind(':') + 1
            : NameText(name).lastPart();
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
std::string encodedName(const Function& function, const std::string& shown, bool isShort,
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

// What the simple report shows of a name. A name with "__" has no form with types, so argument
// lists with it are left out of short names, too.
std::string shortLabel(const std::string& whole)
{
    std::string shown =
        whole.size() > LongestLabel ? NameText(whole).shortened(LongestLabel) : whole;
    if (shown.find("__") == std::string::npos) {
        return shown;
    }
    std::string plain = NameText(shown).withoutDoubleUnderscores();
    return plain.find("__") == std::string::npos ? plain : shown;
}

std::string storedForm(const Function& function, const NameStyle& style, ImportLosses& losses)
{
    bool isRenamed = false;
    std::string stored;
    if (function._isSymbol) {
        stored = plainName(function._name, isRenamed);
    } else {
        const std::string whole = withPlainLastPart(function._name);
        const std::string shown = style._isFull ? whole : shortLabel(whole);
        size_t nChanged = 0;
        if (function._hasTypes) {
            stored = encodedName(function, shown, shown != whole, nChanged);
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
    templates.reserve(types.size());
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
        types.reserve(lists.size());
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
    instances.reserve(symbols.size());
    for (const std::string& symbol : symbols) {
        instances.push_back(readFunction(symbol, losses));
    }
    Function function = instances.front();
    if (instances.size() > 1) {
        function._name = sharedName(instances);
        function._types = sharedTypes(instances);
        for (const Function& one : instances) {
            function._hasTypes = function._hasTypes && one._hasTypes;
            function._isSymbol = function._isSymbol && one._isSymbol;
        }
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
