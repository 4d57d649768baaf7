// SPDX-License-Identifier: MIT
#include "tools/common/FunctionText.h"

#include "tools/common/NameText.h"
#include "tools/common/StandardNames.h"
#include "tools/common/SymbolScan.h"
#include "tools/common/plainSymbol.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <new>
#include <string_view>

namespace {

constexpr uint64_t LongestUnfolded = 262144; // text that is made of a symbol, in characters

bool takeEnd(std::string_view& text, std::string_view end)
{
    if (text.size() < end.size() || text.substr(text.size() - end.size()) != end) {
        return false;
    }
    text.remove_suffix(end.size());
    return true;
}

// The text without what stands behind the parameters of a member function.
std::string_view withoutQualifiersAtEnd(std::string_view text)
{
    while (takeEnd(text, " const") || takeEnd(text, " volatile") || takeEnd(text, " &&") ||
           takeEnd(text, " &") || takeEnd(text, " noexcept") ||
           takeEnd(text, " transaction_safe")) {
    }
    return text;
}

void dropQualifiers(std::string& text)
{
    text.resize(withoutQualifiersAtEnd(text).size());
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
size_t parametersAtEnd(std::string_view text)
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
    size_t _end = std::string::npos;        // their closing one, where it is known
};

// Where the name behind a result starts, whose parameters open at `bracket`: behind the last blank
// outside of brackets. None where that is not certain: operators hold signs and blanks, and other
// parentheses are those of a result or of a function that the name is local to.
size_t nameBehindResult(std::string_view text, size_t bracket)
{
    if (text.substr(0, bracket).find("operator") != std::string_view::npos) {
        return std::string_view::npos;
    }
    int lists = 0;
    int others = 0; // signs of comparison may stand in these
    for (size_t i = bracket; i-- > 0 && lists >= 0 && others >= 0;) {
        const char c = text[i];
        if (lists == 0 && others == 0 && (c == ' ' || c == ')')) {
            return c == ' ' && i + 1 < bracket ? i + 1 : std::string_view::npos;
        }
        others += c == ')' || c == ']' || c == '}' ? 1 : 0;
        others -= c == '(' || c == '[' || c == '{' ? 1 : 0;
        lists += c == '>' && others == 0 ? 1 : 0;
        lists -= c == '<' && others == 0 ? 1 : 0;
    }
    return std::string_view::npos;
}

// Finds the name behind a result by the text alone, where that says it: the name is what stands
// before the last parameters, and nowhere before them.
bool findPlainName(Decoded& result)
{
    const std::string_view text = result._text;
    const std::string_view whole = withoutQualifiersAtEnd(text);
    const size_t bracket = parametersAtEnd(whole);
    const size_t name =
        bracket == std::string_view::npos ? bracket : nameBehindResult(whole, bracket);
    if (name == std::string_view::npos ||
        text.find(text.substr(name, bracket + 1 - name)) != name) {
        return false;
    }
    result._name = name;
    result._parameters = bracket;
    result._end = whole.size() - 1;
    return true;
}

// Of a name with a result the place is found by the name's own text: the marks of a result that is
// an array or a function stand behind the parameters.
void findName(const std::string& symbol, const SymbolScan& scan, Decoded& result)
{
    if (scan._isKnown && scan._hasResult) {
        if (findPlainName(result)) {
            return;
        }
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
    result._end = result._text.size() - 1;
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
    // Nothing else is shown as a clone.
    if (symbol.find('.') != std::string::npos || symbol.find('[') != std::string::npos) {
        result._text.resize(std::min(result._text.find(" [clone "), result._text.size()));
    }
    for (const char* thunk : {"non-virtual thunk to ", "virtual thunk to "}) {
        if (result._text.compare(0, std::strlen(thunk), thunk) == 0) {
            result._text.erase(0, std::strlen(thunk)); // its lines are the function's
        }
    }
    findName(symbol, scan, result);
    return result;
}

// Whether the "operator" at `at` is a word of its own.
bool isOperator(const std::string& text, size_t at)
{
    constexpr size_t Length = 8;
    const auto continuesName = [&text](size_t i) {
        return i < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[i])) != 0 || text[i] == '_');
    };
    return !(at != 0 && continuesName(at - 1)) && !continuesName(at + Length);
}

// Where the name starts that ends before `end`: behind the blank that keeps it apart from a result.
// Blanks in brackets, and those of an operator's name, are no such blanks.
size_t readableNameStart(const std::string& text, size_t end)
{
    const NameText brackets(text.substr(0, end));
    size_t start = end;
    const size_t word = text.rfind("operator", end);
    if (word != std::string::npos && isOperator(text, word)) {
        start = word; // what is behind it belongs to the operator
    }
    while (start > 0 && text[start - 1] != ' ') {
        const size_t partner = brackets.partner(start - 1);
        start = partner != NameText::None && partner < start - 1 ? partner : start - 1;
    }
    return start;
}

// Takes apart a name that another tool has made readable: "int ns::f<int>(int) const". Returns
// false for what does not look like one.
bool readReadable(const std::string& symbol, FunctionText& function)
{
    std::string text = symbol.substr(0, symbol.find(" [clone "));
    dropQualifiers(text);
    const bool hasList = text.size() > 1 && text[0] != '<' && text.back() == '>';
    const size_t bracket =
        text.empty() || text.back() != ')' ? std::string::npos : parametersAtEnd(text);
    if (bracket == std::string::npos || bracket == 0) {
        if (text.find("::") == std::string::npos && !hasList) {
            return false;
        }
        function._name = withStandardNames(text);
        function._isSymbol = false;
        return true;
    }
    const size_t start = readableNameStart(text, bracket);
    if (start == bracket) {
        return false;
    }
    const std::string_view view = text;
    function._name = withStandardNames(view.substr(start, bracket - start));
    function._types = withStandardNames(view.substr(bracket + 1, text.size() - bracket - 2));
    function._hasTypes = true;
    function._isSymbol = false;
    return true;
}

} // namespace

FunctionText readFunctionText(const std::string& symbol)
{
    FunctionText function;
    if (readPlainSymbol(symbol, function)) {
        return function;
    }
    function = FunctionText();
    function._name = symbol;
    function._isSymbol = true;
    if (symbol.compare(0, 2, "_Z") != 0) {
        if (symbol.find_first_of(":(>") != std::string::npos && symbol.size() <= LongestUnfolded) {
            (void)readReadable(symbol, function); // else a symbol
        }
        return function;
    }
    const SymbolScan scan = scanSymbol(symbol);
    if (scan._length > LongestUnfolded) {
        function._isTooLarge = true;
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
    const size_t end = found._end != std::string::npos ? found._end : closingBracket(text, bracket);
    const std::string_view view = text;
    function._name = withStandardNames(view.substr(found._name, bracket - found._name));
    function._types = withStandardNames(view.substr(bracket + 1, end - bracket - 1));
    function._hasTypes = true;
    return function;
}
