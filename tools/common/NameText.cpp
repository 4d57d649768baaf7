// SPDX-License-Identifier: MIT
#include "tools/common/NameText.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

namespace {

const char operatorWord[] = "operator";
constexpr size_t OperatorLength = sizeof(operatorWord) - 1;

// Longer signs before those that they begin with: "operator-<int>" is a minus with a template list.
const char* const operatorSigns[] = {
    "<=>", "<<=", ">>=", "->*", "()", "[]", "->", "<<", ">>", "<=", ">=", "==", "!=",
    "&&",  "||",  "++",  "--",  "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<",
    ">",   "=",   "!",   "+",   "-",  "*",  "/",  "%",  "^",  "&",  "|",  "~",  ","};

// Operators that are words and no conversions.
const char* const operatorWords[] = {" new", " delete", " co_await"};

// What may stand between the parameters of a member function and the "::" of what is local to it.
const char* const memberQualifiers[] = {" const", " volatile", " &&", " &"};

const char anonymous[] = "(anonymous namespace)";

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$' ||
           (static_cast<unsigned char>(c) & 0x80) != 0;
}

bool startsAt(const std::string& text, size_t at, const char* word)
{
    return text.compare(at, std::strlen(word), word) == 0;
}

bool endsWith(const std::string& text, const char* end)
{
    const size_t length = std::strlen(end);
    return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

bool takeEnd(std::string& text, const char* end)
{
    if (!endsWith(text, end)) {
        return false;
    }
    text.resize(text.size() - std::strlen(end));
    return true;
}

// A bracket that waits for its partner, and how deep the lists inside are.
struct OpenBracket
{
    size_t _at;
    int _listDepth;
};

char opening(char closing)
{
    return closing == ')' ? '(' : closing == ']' ? '[' : closing == '}' ? '{' : '<';
}

} // namespace

NameText::NameText(std::string text)
    : _text(std::move(text)), _partner(_text.size(), None), _listDepth(_text.size(), 0)
{
    matchBrackets();
    findParts();
}

size_t NameText::pastBrackets(size_t at) const
{
    return _partner[at] != None && _partner[at] > at ? _partner[at] : at;
}

// Returns the place behind an "operator" and its sign that start at `at`; `at` itself when there
// is none. The sign may look like brackets; a blank keeps it apart from a list behind it.
size_t NameText::pastOperator(size_t at) const
{
    const size_t sign = at + OperatorLength;
    if (_text[at] != 'o' || !startsAt(_text, at, operatorWord) ||
        (at > 0 && isWordCharacter(_text[at - 1])) || sign >= _text.size() ||
        isWordCharacter(_text[sign])) {
        return at;
    }
    for (const char* known : operatorSigns) {
        if (startsAt(_text, sign, known)) {
            const size_t past = sign + std::strlen(known);
            return startsAt(_text, past, " <") ? past + 1 : past;
        }
    }
    return sign;
}

void NameText::matchBrackets()
{
    std::vector<OpenBracket> open;
    size_t pastSign = 0;
    const auto pop = [&open] {
        const int depth = open.back()._listDepth;
        open.pop_back();
        if (!open.empty()) {
            open.back()._listDepth = std::max(open.back()._listDepth, depth);
        }
    };
    for (size_t i = 0; i < _text.size(); ++i) {
        const size_t past = pastOperator(i);
        if (past != i) {
            pastSign = past;
            i = past - 1;
            continue;
        }
        const char c = _text[i];
        if (c == '(' || c == '[' || c == '{' ||
            (c == '<' && i > 0 && (isWordCharacter(_text[i - 1]) || i == pastSign))) {
            open.push_back({i, 0});
            continue;
        }
        if (c == '>' && (open.empty() || _text[open.back()._at] != '<' || _text[i - 1] == '-')) {
            continue; // a comparison or an arrow
        }
        if (c != '>' && c != ')' && c != ']' && c != '}') {
            continue;
        }
        while (!open.empty() && c != '>' && _text[open.back()._at] == '<') {
            pop(); // it was a comparison
        }
        if (open.empty() || _text[open.back()._at] != opening(c)) {
            continue;
        }
        const size_t start = open.back()._at;
        _partner[start] = i;
        _partner[i] = start;
        if (c == '>') {
            _listDepth[start] = ++open.back()._listDepth;
            _deepestList = std::max(_deepestList, _listDepth[start]);
        }
        pop();
    }
}

void NameText::findParts()
{
    bool isConversion = false;
    for (size_t i = 0; i < _text.size(); ++i) {
        const size_t past = pastOperator(i);
        if (past != i) {
            const auto isNext = [&](const char* word) {
                return startsAt(_text, past, word);
            };
            isConversion = past == i + OperatorLength && startsAt(_text, past, " ") &&
                           std::none_of(std::begin(operatorWords), std::end(operatorWords), isNext);
            _conversionType = isConversion ? past + 1 : None;
            i = past - 1;
            continue;
        }
        if (_partner[i] != None) {
            const bool isLocal = isLocalParameters(i);
            i = pastBrackets(i);
            isConversion = isConversion && !isLocal;
        } else if (!isConversion && _text[i] == ':' && i + 1 < _text.size() &&
                   _text[i + 1] == ':') {
            ++i;
            _lastPart = i + 1;
            _conversionType = None;
        }
    }
}

// The place of the '(' in "{lambda(int)#1}" that starts at `at`; None when there is none.
size_t NameText::lambdaParameters(size_t at) const
{
    static const char lambda[] = "{lambda(";
    const size_t bracket = at + sizeof(lambda) - 2;
    return _text[at] == '{' && startsAt(_text, at, lambda) && _partner[bracket] != None ? bracket
                                                                                        : None;
}

// Whether the bracket at `at` opens the parameters of a function that something is local to.
bool NameText::isLocalParameters(size_t at) const
{
    if (_text[at] != '(' || _partner[at] == None || startsAt(_text, at, anonymous)) {
        return false;
    }
    size_t past = _partner[at] + 1;
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (const char* word : memberQualifiers) {
            if (startsAt(_text, past, word)) {
                past += std::strlen(word);
                isFound = true;
            }
        }
    }
    return startsAt(_text, past, "::");
}

std::string NameText::without(int depthOfLists, bool withoutLambda, bool withoutParameters) const
{
    static const std::string dots = "(...)";
    std::string result;
    for (size_t i = 0; i < _text.size(); ++i) {
        const size_t lambda = withoutLambda ? lambdaParameters(i) : None;
        if (lambda != None && (withoutParameters || _partner[lambda] - lambda > dots.size())) {
            result.append(_text, i, lambda - i);
            result += dots;
            i = _partner[lambda];
        } else if (_listDepth[i] > 0 && _listDepth[i] <= depthOfLists) {
            result += "<...>";
            i = _partner[i];
        } else if (withoutParameters && isLocalParameters(i)) {
            result += dots;
            i = _partner[i];
        } else {
            result += _text[i];
        }
    }
    return result;
}

std::string NameText::shortened(size_t longest) const
{
    std::string result = _text.size() > longest ? without(0, true, false) : _text;
    for (int depth = 1; depth <= _deepestList && result.size() > longest; ++depth) {
        result = without(depth, true, false);
    }
    return result;
}

std::string NameText::withoutArguments() const
{
    return without(_deepestList, false, false);
}

std::string NameText::withoutDetails() const
{
    return without(_deepestList, true, true);
}

namespace {

// Takes the last qualified part off the end of `text`: a word, its lists and parameters, and what
// qualifies a member function.
void dropPart(std::string& text)
{
    size_t depth = 0;
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (const char* word : memberQualifiers) {
            const size_t length = std::strlen(word);
            if (endsWith(text, word) && text.size() > length &&
                text[text.size() - length - 1] == ')') {
                text.resize(text.size() - length);
                isFound = true;
            }
        }
    }
    while (!text.empty()) {
        const char c = text.back();
        const bool isClosing = std::strchr(">)}]", c) != nullptr;
        if (depth == 0 && !isClosing && !isWordCharacter(c) && c != '~') {
            return;
        }
        if (isClosing) {
            ++depth;
        } else if (std::strchr("<({[", c) != nullptr) {
            --depth;
        }
        text.pop_back();
    }
}

} // namespace

std::string withoutQualifiers(const std::string& text, size_t nKept)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != ':') {
            result += text[i];
        } else if (text.compare(i, 2, "::") == 0) {
            ++i;
            if (nKept > 0) {
                --nKept;
                result += "::";
                continue;
            }
            dropPart(result);
            while (takeEnd(result, "::")) {
                dropPart(result); // the same name's, kept before
            }
        } else if (endsWith(result, "auto")) {
            // "auto:1", a parameter of a lambda
            i = std::min(text.find_first_not_of("0123456789", i + 1), text.size()) - 1;
        } else {
            result += '.';
        }
    }
    return result;
}

std::vector<std::string> splitList(const std::string& types)
{
    std::vector<std::string> result;
    const NameText text(types);
    size_t start = 0;
    for (size_t i = 0; i <= types.size(); ++i) {
        if (i < types.size() && types[i] != ',') {
            i = text.pastBrackets(i);
            continue;
        }
        const size_t first = std::min(types.find_first_not_of(' ', start), i);
        const size_t last = types.find_last_not_of(' ', i - 1);
        result.push_back(first < i ? types.substr(first, last + 1 - first) : "");
        start = i + 1;
    }
    if (result.size() == 1 && result.front().empty()) {
        result.clear();
    }
    return result;
}
