// SPDX-License-Identifier: MIT
#include "tools/compare/PlainName.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <vector>

namespace {

constexpr size_t ShortestCut = 44; // of names that are cut, in characters

bool isWord(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$' || c == '.';
}

bool startsAt(const std::string& text, size_t at, const char* what)
{
    return text.compare(at, std::strlen(what), what) == 0;
}

bool endsWith(const std::string& text, const char* what)
{
    const size_t length = std::strlen(what);
    return text.size() >= length && text.compare(text.size() - length, length, what) == 0;
}

// A whole word at `at`.
bool wordAt(const std::string& text, size_t at, const char* word)
{
    const size_t end = at + std::strlen(word);
    return startsAt(text, at, word) && (at == 0 || !isWord(text[at - 1])) &&
           (end == text.size() || !isWord(text[end]));
}

constexpr size_t OperatorLength = 8; // of the word "operator"

// The length of an operator's sign at the start of `sign`, 0 for a conversion or new and delete.
size_t signLength(const char* sign)
{
    if (std::strncmp(sign, "()", 2) == 0 || std::strncmp(sign, "[]", 2) == 0) {
        return 2;
    }
    const size_t all = std::strspn(sign, "<>=!+-*/%^&|~,");
    // "operator<" and "operator-" may have template arguments behind them.
    static const char* const signs[] = {
        "<=>", "<<=", ">>=", "->*", "<<", ">>", "<=", ">=", "->", "==", "!=", "&&",
        "||",  "++",  "--",  "+=",  "-=", "*=", "/=", "%=", "^=", "&=", "|="};
    for (const char* known : signs) {
        if (std::strncmp(sign, known, std::strlen(known)) == 0) {
            // "operator<<int>" is "operator<" with an argument list, "operator<< <int>" is not.
            const bool isList = std::strcmp(known, "<<") == 0 && all == 2 && isWord(sign[2]);
            return isList ? 1 : std::strlen(known);
        }
    }
    return all > 0 ? 1 : 0;
}

// The place behind the word "operator" and its sign; `at` when there is none.
size_t pastOperator(const std::string& text, size_t at)
{
    if (!wordAt(text, at, "operator")) {
        return at;
    }
    return at + OperatorLength + signLength(text.c_str() + at + OperatorLength);
}

// Steps over one character, an operator's sign, or a whole bracket. `i` stands on it.
size_t pastOne(const std::string& text, size_t i);

size_t pastBracket(const std::string& text, size_t i)
{
    const char* open = "<([{";
    const char close = ">)]}"[std::strchr(open, text[i]) - open];
    ++i;
    while (i < text.size() && text[i] != close) {
        i = pastOne(text, i);
    }
    return i < text.size() ? i + 1 : i;
}

size_t pastOne(const std::string& text, size_t i)
{
    const size_t past = pastOperator(text, i);
    if (past != i) {
        return past;
    }
    if (startsAt(text, i, "->")) {
        return i + 2;
    }
    const bool isComparison = text[i] == '<' && i > 0 && text[i - 1] == ')' &&
                              (i < 10 || !startsAt(text, i - 10, "operator()"));
    if (isComparison) {
        return i + std::strspn(text.c_str() + i, "<="); // "(a)<=(b)"
    }
    return std::strchr("<([{", text[i]) != nullptr && text[i] != '\0' ? pastBracket(text, i)
                                                                      : i + 1;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        text.replace(at, from.size(), to);
        at += to.size();
    }
}

// Takes out each "[word ...]".
void dropTags(std::string& text, const char* tag)
{
    for (size_t at = text.find(tag); at != std::string::npos; at = text.find(tag, at)) {
        text.erase(at, pastBracket(text, text.find('[', at)) - at);
    }
}

// Whether the argument list that is open at `at` is that of a template for the library's own use,
// whose arguments are all given.
bool isInInternalList(const std::string& text, size_t at)
{
    int depth = 1;
    while (at > 0 && depth > 0) {
        --at;
        depth += text[at] == '>' ? 1 : text[at] == '<' ? -1 : 0;
    }
    size_t start = at;
    while (start > 0 && isWord(text[start - 1])) {
        --start;
    }
    return startsAt(text, start, "__");
}

// Takes out ", NAME<...>" where it ends an argument list: the standard library's defaults.
void dropDefault(std::string& text, const std::string& name)
{
    const std::string from = ", " + name + "<";
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + 1)) {
        const size_t end = pastBracket(text, at + from.size() - 1);
        const size_t next = text.find_first_not_of(' ', end);
        if (next != std::string::npos && text[next] == '>' && !isInInternalList(text, at)) {
            text.erase(at, end - at);
        }
    }
}

void dropDefaults(std::string& text)
{
    const char* const strings[] = {"std::__cxx11::basic_string", "std::basic_string"};
    for (const char* string : strings) {
        replaceAll(text,
                   std::string(string) + "<char, std::char_traits<char>, std::allocator<char> >",
                   "std::string");
    }
    // c++filt prints the streams' full names, gcov those of the standard.
    replaceAll(text, "std::ostream", "std::basic_ostream<char>");
    replaceAll(text, "std::istream", "std::basic_istream<char>");
    replaceAll(text, "std::iostream", "std::basic_iostream<char>");
    // A map's allocator stands behind its order, a hash map's behind two more.
    for (const char* name : {"std::allocator", "std::equal_to", "std::hash", "std::less",
                             "std::char_traits", "std::default_delete"}) {
        dropDefault(text, name);
    }
}

// Where the parameter list that ends `text` starts; npos when it ends otherwise.
size_t paramsStart(const std::string& text)
{
    size_t start = std::string::npos;
    for (size_t i = 0; i < text.size();) {
        const size_t past = pastOne(text, i);
        if (text[i] == '(' && past > i + 1 && past == text.size()) {
            start = i;
        }
        i = past;
    }
    return start;
}

void dropMemberQualifiers(std::string& text)
{
    for (bool isAny = true; isAny;) {
        isAny = false;
        for (const char* end : {" const", " volatile", "&", " noexcept"}) {
            // "operator&" has no parameters behind it only in what is no function's text.
            if (endsWith(text, end) && text.rfind(')') != std::string::npos) {
                text.resize(text.size() - std::strlen(end));
                isAny = true;
            }
        }
        while (endsWith(text, " ")) {
            text.resize(text.size() - 1);
        }
    }
}

// Takes out the qualifiers of a member function that a local class or lambda belongs to: those
// between its parameters and the "::".
void dropScopeQualifiers(std::string& text)
{
    for (size_t at = text.find(')'); at != std::string::npos; at = text.find(')', at + 1)) {
        size_t end = at + 1;
        for (bool isAny = true; isAny;) {
            isAny = false;
            for (const char* known : {" ", "&", "const", "volatile"}) {
                if (startsAt(text, end, known)) {
                    end += std::strlen(known);
                    isAny = true;
                }
            }
        }
        if (startsAt(text, end, "::")) {
            text.erase(at + 1, end - at - 1);
        }
    }
}

// Where the qualified name starts: behind the last blank that is outside of brackets and belongs
// neither to an operator nor to a member function's "const".
size_t nameStart(const std::string& text)
{
    size_t start = 0;
    for (size_t i = 0; i < text.size();) {
        if (wordAt(text, i, "operator")) {
            const size_t past = pastOperator(text, i);
            if (past == i + OperatorLength) {
                return start; // a conversion: blanks of the name
            }
            // A blank parts the sign from an argument list: "operator<< <int>".
            i = startsAt(text, past, " <") ? past + 1 : past;
            continue;
        }
        const bool isMemberConst =
            text[i] == ' ' && (startsAt(text, i + 1, "&") ||
                               (i > 0 && text[i - 1] == ')' &&
                                (wordAt(text, i + 1, "const") || wordAt(text, i + 1, "volatile"))));
        if (text[i] == ' ' && !isMemberConst) {
            start = i + 1;
        }
        i = isMemberConst ? i + 2 : pastOne(text, i);
    }
    return start;
}

size_t lastPartStart(const std::string& name)
{
    size_t start = 0;
    for (size_t i = 0; i < name.size();) {
        if (wordAt(name, i, "operator") && pastOperator(name, i) == i + OperatorLength) {
            return start;
        }
        if (startsAt(name, i, "::")) {
            start = i + 2;
        }
        i = pastOne(name, i);
    }
    return start;
}

// Of each qualified name in the text only its last word.
std::string withoutScopes(const std::string& text)
{
    std::string result;
    std::string chain; // what a "::" would take away
    for (size_t i = 0; i < text.size();) {
        if (startsAt(text, i, "::")) {
            chain.clear();
            i += 2;
            continue;
        }
        if (isWord(text[i])) {
            chain += text[i++];
            continue;
        }
        const size_t past = pastOne(text, i);
        if (std::strchr("<({[", text[i]) != nullptr) {
            chain += text[i] + withoutScopes(text.substr(i + 1, past - i - 1));
        } else {
            result += chain + text.substr(i, past - i);
            chain.clear();
        }
        i = past;
    }
    return result + chain;
}

// A function that returns a function or an array has its own text inside: "void (*f(int))(char)".
std::string innerText(const std::string& text)
{
    const size_t start = endsWith(text, ")") || endsWith(text, "]") ? text.find(" (*") : text.npos;
    const size_t other = endsWith(text, ")") || endsWith(text, "]") ? text.find(" (&") : text.npos;
    const size_t at = std::min(start, other);
    if (at == std::string::npos || at != text.find(" (")) {
        return text;
    }
    const size_t end = pastBracket(text, at + 1);
    const std::string inner = text.substr(at + 3, end - at - 4);
    return end < text.size() && paramsStart(inner) != std::string::npos ? inner : text;
}

// "(, int)" as "(int)": an expanded parameter pack with nothing in it is none.
std::string withoutEmptyPacks(const std::string& params)
{
    std::string result = "(";
    for (size_t start = 1; start < params.size();) {
        size_t end = start;
        while (end < params.size() && params[end] != ',' && params[end] != ')') {
            end = pastOne(params, end);
        }
        const std::string one = params.substr(start, end - start);
        if (one.find_first_not_of(' ') != std::string::npos) {
            result += (result.size() > 1 ? "," : "") + one;
        }
        start = end + 1;
    }
    return result + ")";
}

// "const T*" as "T const*": c++filt has the word behind the type, the viewer before it.
std::string constBehind(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size();) {
        const bool isStart = i == 0 || std::strchr("(<,", text[i - 1]) != nullptr ||
                             (text[i - 1] == ' ' && i > 1 && text[i - 2] == ',');
        const char* word = nullptr;
        for (const char* known : {"const ", "volatile "}) {
            word = isStart && startsAt(text, i, known) ? known : word;
        }
        if (word == nullptr) {
            result += text[i++];
            continue;
        }
        const size_t start = i + std::strlen(word);
        size_t end = start;
        while (end < text.size() && !startsAt(text, end, " const") &&
               (std::strchr("*&,)>(", text[end]) == nullptr ||
                startsAt(text, end, "(anonymous namespace)"))) {
            end = pastOne(text, end);
        }
        result += constBehind(text.substr(start, end - start)) + " " +
                  std::string(word, std::strlen(word) - 1);
        i = end;
    }
    return result;
}

} // namespace

PlainName PlainName::of(const std::string& filtered)
{
    std::string text = filtered;
    dropTags(text, "[abi:");
    dropTags(text, " [clone ");
    dropDefaults(text);
    replaceAll(text, "> >", ">>");
    text = innerText(text);
    dropMemberQualifiers(text);
    PlainName result;
    const size_t params = paramsStart(text);
    std::string name = text.substr(0, params);
    result._params = params == std::string::npos ? "" : withoutEmptyPacks(text.substr(params));
    name.erase(0, params == std::string::npos ? 0 : nameStart(name));
    result._wholeName = name;
    const size_t last = lastPartStart(name);
    const bool isConversion =
        wordAt(name, last, "operator") && pastOperator(name, last) == last + OperatorLength;
    result._shortName = name.substr(0, last) + withoutScopes(name.substr(last));
    result._name = isConversion ? name : result._shortName;
    return result;
}

bool canShowTypes(const std::string& name)
{
    std::string outside;
    for (size_t i = 0; i < name.size();) {
        const size_t past = pastOne(name, i);
        outside += past == i + 1 ? name[i] : '.';
        i = past;
    }
    return outside.find("__") == std::string::npos && (outside.empty() || outside.back() != '_');
}

std::string comparedSpelling(const std::string& text)
{
    std::string filled = text;
    dropDefaults(filled);
    dropScopeQualifiers(filled);
    const std::string moved = constBehind(filled);
    std::string result;
    for (size_t i = 0; i < moved.size(); ++i) {
        const bool isNeeded = moved[i] == ' ' && !result.empty() && i + 1 < moved.size() &&
                              isWord(result.back()) && isWord(moved[i + 1]);
        if (moved[i] != ' ' || isNeeded) {
            result += moved[i];
        }
    }
    return result;
}

std::string withoutQualifiers(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size();) {
        bool isTaken = false;
        for (const char* word : {"const", "volatile"}) {
            if (wordAt(text, i, word)) {
                i += std::strlen(word);
                isTaken = true;
            }
        }
        if (!isTaken) {
            result += text[i++];
        }
    }
    return comparedSpelling(result);
}

namespace {

// Whether a "<...>" or "(...)" stands for what starts with `c`: parameters are those of a lambda,
// of a function that the name is local to, or such as differ among instances.
bool isListLeftOut(char c, const std::string& shown, size_t s, Placeholders placeholders)
{
    if (placeholders == Placeholders::None) {
        return false;
    }
    if (c == '<') {
        return startsAt(shown, s, "<...>");
    }
    if (c != '(' || !startsAt(shown, s, "(...)")) {
        return false;
    }
    const size_t past = s + 5;
    const bool isLambda = s >= 6 && wordAt(shown, s - 6, "lambda");
    const bool isAround = startsAt(shown, past, "::") || startsAt(shown, past, "const::") ||
                          startsAt(shown, past, " const::");
    return isLambda || isAround || placeholders == Placeholders::OfInstances;
}

bool isTypeShown(const std::string& expected, size_t e, const std::string& shown, size_t s);

// Compares what stands behind `e` and `s`.
bool isRestShown(const std::string& expected, size_t e, const std::string& shown, size_t s,
                 Placeholders placeholders)
{
    const bool isOfInstances = placeholders == Placeholders::OfInstances;
    while (e < expected.size() && s < shown.size()) {
        if (isListLeftOut(expected[e], shown, s, placeholders)) {
            e = pastBracket(expected, e);
            s += 5;
        } else if (isOfInstances && startsAt(shown, s, ",...)") &&
                   (expected[e] == ',' || expected[e] == ')')) {
            while (e < expected.size() && expected[e] != ')') {
                e = pastOne(expected, e);
            }
            s += 4;
        } else if (isOfInstances && wordAt(shown, s, "auto") && !wordAt(expected, e, "auto")) {
            return isTypeShown(expected, e, shown, s + 4);
        } else if (expected[e++] != shown[s++]) {
            return false;
        }
    }
    return e == expected.size() && s == shown.size();
}

// "auto" stands for some type: all that does not end a parameter, as little as possible.
bool isTypeShown(const std::string& expected, size_t e, const std::string& shown, size_t s)
{
    while (e < expected.size() && expected[e] != ',' && expected[e] != ')') {
        e = pastOne(expected, e);
        // A blank parts "auto" from "const", but not a ">".
        const size_t next = s < shown.size() && shown[s] == ' ' && expected[e] != ' ' ? s + 1 : s;
        if (isRestShown(expected, e, shown, next, Placeholders::OfInstances)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isShown(const std::string& expected, const std::string& shown, Placeholders placeholders)
{
    return isRestShown(expected, 0, shown, 0, placeholders);
}

namespace {

// Whether dots stand for more than what brackets hold.
bool hasDotsOutside(const std::string& shown)
{
    for (size_t at = shown.find("..."); at != std::string::npos; at = shown.find("...", at + 3)) {
        if (at == 0 || (shown[at - 1] != '<' && shown[at - 1] != '(')) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isShownCut(const std::string& expected, const std::string& shown)
{
    if (expected.size() <= ShortestCut || !hasDotsOutside(shown)) {
        return false;
    }
    // For each place in `expected`, whether what is behind it can be what is behind a place in
    // `shown`: from the last to the first.
    std::vector<bool> isGood(expected.size() + 1, false);
    isGood[expected.size()] = true;
    std::vector<std::vector<bool>> behind(shown.size() + 1);
    behind[shown.size()] = isGood;
    for (size_t s = shown.size(); s-- > 0;) {
        isGood.assign(expected.size() + 1, false);
        for (size_t e = 0; e < expected.size(); ++e) {
            isGood[e] = expected[e] == shown[s] && behind[s + 1][e + 1];
        }
        if (startsAt(shown, s, "...")) {
            // The dots stand for any text; a number that tells two from each other may follow.
            bool isAny = false;
            const size_t number =
                std::min(shown.find_first_not_of("0123456789", s + 3), shown.size());
            for (size_t e = expected.size() + 1; e-- > 0;) {
                isAny = isAny || behind[s + 3][e] || behind[number][e];
                isGood[e] = isGood[e] || isAny;
            }
        }
        behind[s] = isGood;
    }
    return behind[0][0];
}

bool isShownShortened(const std::string& name, const std::string& whole, const std::string& shown,
                      Placeholders placeholders)
{
    // The bracket that the last one closes. Sizes of templates may hold comparisons, so only round
    // ones count.
    int depth = 0;
    size_t bracket = endsWith(shown, ")") ? shown.size() : 0;
    while (bracket > 0) {
        --bracket;
        depth += shown[bracket] == ')' ? 1 : shown[bracket] == '(' ? -1 : 0;
        if (depth == 0) {
            break;
        }
    }
    if (bracket == 0) {
        return false;
    }
    const std::string inside = shown.substr(bracket + 1, shown.size() - bracket - 2);
    const std::string label = shown.substr(0, bracket);
    return (isShown(name, label, Placeholders::OfLongName) || isShownCut(name, label)) &&
           isShown(whole, inside, placeholders);
}
