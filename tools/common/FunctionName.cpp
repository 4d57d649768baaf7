// SPDX-License-Identifier: MIT
#include "tools/common/FunctionName.h"

#include "tools/common/RecordPayload.h"
#include "tools/common/TypeCode.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>

namespace {

// What the standard library's string is to its users.
const char longString[] =
    "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >";
const char shortString[] = "std::string";

// Longer signs before those that they begin with: "operator-<int>" is a minus with a template list.
const char* const operatorSigns[] = {
    "<=>", "<<=", ">>=", "->*", "()", "[]", "->", "<<", ">>", "<=", ">=", "==", "!=",
    "&&",  "||",  "++",  "--",  "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<",
    ">",   "=",   "!",   "+",   "-",  "*",  "/",  "%",  "^",  "&",  "|",  "~",  ","};

void replaceAll(std::string& text, const char* from, const char* to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        text.replace(at, std::strlen(from), to);
        at += std::strlen(to);
    }
}

bool takeEnd(std::string& text, const char* end)
{
    const size_t length = std::strlen(end);
    if (text.size() < length || text.compare(text.size() - length, length, end) != 0) {
        return false;
    }
    text.resize(text.size() - length);
    return true;
}

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// Returns the place behind an "operator" and its sign that start at `at`; `at` itself when there
// is none. The sign may look like brackets.
size_t pastOperator(const std::string& text, size_t at)
{
    static const char word[] = "operator";
    const size_t length = sizeof(word) - 1;
    if (text.compare(at, length, word) != 0 || (at > 0 && isWordCharacter(text[at - 1])) ||
        at + length >= text.size() || isWordCharacter(text[at + length])) {
        return at;
    }
    const size_t sign = at + length;
    for (const char* known : operatorSigns) {
        if (text.compare(sign, std::strlen(known), known) == 0) {
            return sign + std::strlen(known);
        }
    }
    return sign;
}

// Where the qualified name and its last part start in a function's text without parameters. What
// stands before the name is the result type, which templates carry.
struct NameParts
{
    size_t _name = 0;
    size_t _lastPart = 0;
};

NameParts findParts(const std::string& text)
{
    NameParts parts;
    int depth = 0;
    bool isConversion = false; // "operator int", "operator"" _x": blanks of the name
    for (size_t i = 0; i < text.size(); ++i) {
        if (depth == 0) {
            const size_t past = pastOperator(text, i);
            if (past != i) {
                isConversion = past < text.size() && (text[past] == ' ' || text[past] == '"');
                i = past - 1;
                continue;
            }
        }
        const char c = text[i];
        if (std::strchr("<([{", c) != nullptr) {
            ++depth;
        } else if (std::strchr(")]}", c) != nullptr ||
                   (c == '>' && (i == 0 || text[i - 1] != '-'))) {
            --depth;
        } else if (depth == 0 && c == ' ' && !isConversion) {
            parts._name = parts._lastPart = i + 1;
        } else if (depth == 0 && c == ':' && i + 1 < text.size() && text[i + 1] == ':' &&
                   !isConversion) {
            parts._lastPart = i + 2;
        }
    }
    return parts;
}

// Leaves of each qualified name inside the text the last word only, and no "[abi:...]": the class
// report cuts the stored name at its last ':'.
std::string withoutColons(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 5, "[abi:") == 0) {
            const size_t end = text.find(']', i);
            i = end == std::string::npos ? text.size() : end;
        } else if (text.compare(i, 2, "::") == 0) {
            size_t depth = 0;
            while (!result.empty() && (depth > 0 || isWordCharacter(result.back()) ||
                                       result.back() == '>' || result.back() == ')')) {
                const char c = result.back();
                if (c == '>' || c == ')') {
                    ++depth;
                } else if (c == '<' || c == '(') {
                    --depth;
                }
                result.pop_back();
            }
            ++i;
        } else {
            result += text[i] == ':' ? '.' : text[i];
        }
    }
    return result;
}

// Splits "result name(types) const" into the name and its types. Returns false when the text has no
// parameter list at its end.
bool splitDemangled(std::string text, std::string& name, std::string& types)
{
    const size_t clone = text.find(" [clone ");
    if (clone != std::string::npos) {
        text.resize(clone);
    }
    while (takeEnd(text, " const") || takeEnd(text, " volatile") || takeEnd(text, " &&") ||
           takeEnd(text, " &")) {
    }
    int depth = 0;
    size_t bracket = text.size();
    for (size_t i = text.size(); i-- > 0;) {
        if (text[i] == ')') {
            ++depth;
        } else if (text[i] == '(' && --depth == 0) {
            bracket = i;
            break;
        } else if (depth == 0) {
            break;
        }
    }
    if (bracket == text.size()) {
        return false;
    }
    name = text.substr(0, bracket);
    types = text.substr(bracket + 1, text.size() - bracket - 2);
    return !name.empty();
}

std::string demangled(const std::string& symbol)
{
    int status = 0;
    char* text = symbol.compare(0, 2, "_Z") == 0
                     ? abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status)
                     : nullptr;
    std::string result = text != nullptr ? text : "";
    std::free(text);
    return result;
}

std::string decoded(const std::string& stored, int mode)
{
    char* text = demangle_name(stored.c_str(), mode);
    std::string result = text != nullptr ? text : "";
    std::free(text);
    return result;
}

std::string sortedCharacters(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    std::sort(text.begin(), text.end());
    return text;
}

// The decoder spells types in an order of its own ("const char *" for "char const*"), so the full
// level is compared by characters, the others by name and brackets.
bool decodesTo(const std::string& stored, const std::string& name, const std::string& types)
{
    const std::string withTypes = decoded(stored, 0);
    return decoded(stored, -1) == name && withTypes.compare(0, name.size() + 1, name + "(") == 0 &&
           withTypes.back() == ')' &&
           sortedCharacters(decoded(stored, 1)) == sortedCharacters(name + "(" + types + ")");
}

// A name without types must be shown as it is, so it must not look encoded.
std::string plainName(std::string name, bool& isRenamed)
{
    if (!decoded(name, -1).empty()) {
        replaceAll(name, "__", "_ _");
        isRenamed = true;
    }
    return name;
}

std::string encodedName(const std::string& name, const std::string& types)
{
    std::string stored = name + "__F";
    return appendTypeCodes(types, stored) && decodesTo(stored, name, types) ? stored : "";
}

} // namespace

std::string storedFunctionName(const std::string& symbol, ImportLosses& losses)
{
    bool isRenamed = false;
    std::string text = demangled(symbol);
    replaceAll(text, longString, shortString);
    std::string name;
    std::string types;
    std::string stored;
    if (splitDemangled(text, name, types)) {
        const NameParts parts = findParts(name);
        const std::string last = name.substr(parts._lastPart);
        const std::string shortened = withoutColons(last);
        isRenamed = shortened != last;
        name = name.substr(parts._name, parts._lastPart - parts._name) + shortened;
        stored = encodedName(name, types);
        if (stored.empty()) {
            stored = plainName(name, isRenamed);
            ++losses._namesWithoutTypes;
        }
    } else {
        stored = plainName(symbol, isRenamed);
    }
    if (stored.size() > RecordPayload::LongestText) {
        stored.resize(RecordPayload::LongestText);
        isRenamed = true;
    }
    losses._renamedFunctions += isRenamed ? 1 : 0;
    return stored;
}

std::string storedFunctionName(const std::vector<std::string>& symbols, const NameStyle&,
                               ImportLosses& losses)
{
    if (symbols.size() == 1) {
        return storedFunctionName(symbols.front(), losses);
    }
    bool isRenamed = false;
    return plainName(templateName(symbols.front()), isRenamed);
}

std::string templateName(const std::string& symbol)
{
    std::string name;
    std::string types;
    if (!splitDemangled(demangled(symbol), name, types)) {
        return symbol;
    }
    name.erase(0, findParts(name)._name);
    std::string result;
    int depth = 0;
    for (size_t i = 0; i < name.size(); ++i) {
        const size_t past = depth == 0 ? pastOperator(name, i) : i;
        if (past != i) {
            result.append(name, i, past - i);
            i = past - 1;
            continue;
        }
        depth -= name[i] == '>' && name[i - 1] != '-' && depth > 0 ? 1 : 0;
        if (depth == 0) {
            result += name[i];
        }
        if (name[i] == '<' && ++depth == 1) {
            result += "...";
        }
    }
    return result;
}
