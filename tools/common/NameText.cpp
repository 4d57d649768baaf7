// SPDX-License-Identifier: MIT
#include "tools/common/NameText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::string_view Dots = "(...)"; // parameters that are left out

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
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || (static_cast<unsigned char>(c) & 0x80) != 0;
}

// What may be a bracket, a colon or the start of an operator.
constexpr std::array<bool, 256> specialCharacters()
{
    std::array<bool, 256> result = {};
    for (const char c : std::string_view("()<>[]{}:o")) {
        result[static_cast<unsigned char>(c)] = true;
    }
    return result;
}
constexpr std::array<bool, 256> isSpecial = specialCharacters();

// The same of a list, between whose parts commas stand.
constexpr std::array<bool, 256> specialCharactersOfLists()
{
    std::array<bool, 256> result = specialCharacters();
    result[':'] = false;
    result[','] = true;
    return result;
}
constexpr std::array<bool, 256> isSpecialInList = specialCharactersOfLists();

// The first place from `at` on that is a bracket or a colon or may start an operator; the text's
// end when there is none. Most of a name is nothing of this.
size_t nextSpecial(const std::string& text, size_t at,
                   const std::array<bool, 256>& special = isSpecial)
{
    while (at < text.size() && (!special[static_cast<unsigned char>(text[at])] ||
                                (text[at] == 'o' && text[at + 1] != 'p'))) {
        ++at;
    }
    return at;
}

bool startsAt(std::string_view text, size_t at, std::string_view word)
{
    return text.substr(at, word.size()) == word;
}

bool endsWith(const std::string& text, const char* end)
{
    const size_t length = std::strlen(end);
    return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
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

// The open brackets of a text in which each has its partner, for those who need no more of it. That
// is most texts; of others, and of those with operators, it says so, and NameText knows more.
class PlainBrackets
{
public:
    explicit PlainBrackets(const std::string& text) : _text(text) {}

    // Takes the special character at `at`. Returns false when NameText is needed.
    bool take(size_t at);

    size_t depth() const { return _open.size(); }

private:
    bool takeClosing(char c)
    {
        if (_open.empty() || _open.back() != opening(c)) {
            return false;
        }
        _open.pop_back();
        return true;
    }

    const std::string& _text;
    std::string _open;
};

bool PlainBrackets::take(size_t at)
{
    const char c = _text[at];
    switch (c) {
    case 'o':
        return pastOperator(_text, at) == at;
    case '<':
        if (at > 0 && isWordCharacter(_text[at - 1])) {
            _open += c;
        }
        return true;
    case '(':
    case '[':
    case '{':
        _open += c;
        return true;
    case '>': // or a comparison or an arrow
        if (!_open.empty() && _open.back() == '<' && _text[at - 1] != '-') {
            _open.pop_back();
        }
        return true;
    case ')':
    case ']':
    case '}':
        return takeClosing(c);
    default:
        return true;
    }
}

} // namespace

size_t pastOperator(std::string_view text, size_t at)
{
    const size_t sign = at + OperatorLength;
    if (text[at] != 'o' || !startsAt(text, at, operatorWord) ||
        (at > 0 && isWordCharacter(text[at - 1])) || sign >= text.size() ||
        isWordCharacter(text[sign])) {
        return at;
    }
    for (const char* known : operatorSigns) {
        if (startsAt(text, sign, known)) {
            const size_t past = sign + std::strlen(known);
            return startsAt(text, past, " <") ? past + 1 : past;
        }
    }
    return sign;
}

NameText::NameText(std::string text)
    : _text(std::move(text)), _partner(_text.size(), Alone), _listDepth(_text.size(), 0)
{
    matchBrackets();
    findParts();
}

size_t NameText::pastBrackets(size_t at) const
{
    return _partner[at] != Alone && _partner[at] > at ? _partner[at] : at;
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
    for (size_t i = nextSpecial(_text, 0); i < _text.size(); i = nextSpecial(_text, i + 1)) {
        const char c = _text[i];
        const size_t past = c == 'o' ? pastOperator(_text, i) : i;
        if (past != i) {
            pastSign = past;
            i = past - 1;
            continue;
        }
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
        _partner[start] = static_cast<Place>(i);
        _partner[i] = static_cast<Place>(start);
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
    for (size_t i = nextSpecial(_text, 0); i < _text.size(); i = nextSpecial(_text, i + 1)) {
        const size_t past = pastOperator(_text, i);
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
        if (_partner[i] != Alone) {
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
    return _text[at] == '{' && startsAt(_text, at, lambda) && _partner[bracket] != Alone ? bracket
                                                                                         : None;
}

// Whether the bracket at `at` opens the parameters of a function that something is local to.
bool NameText::isLocalParameters(size_t at) const
{
    if (_text[at] != '(' || _partner[at] == Alone || startsAt(_text, at, anonymous)) {
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

// Whether the parameters that open at `bracket` become "(...)".
bool NameText::isLeftOut(size_t bracket, bool isLambda, Parameters parameters) const
{
    const bool isLonger = _partner[bracket] - bracket > Dots.size();
    return parameters == AllParameters || (parameters == LongParameters && isLonger) ||
           (parameters == LongOfLambdas && isLambda && isLonger);
}

// Whether the brackets that open at `bracket` hold `word`.
bool NameText::holds(size_t bracket, std::string_view word) const
{
    return std::string_view(_text).substr(bracket, _partner[bracket] - bracket).find(word) !=
           std::string_view::npos;
}

std::string NameText::without(int depthOfLists, Parameters parameters,
                              std::string_view onlyWith) const
{
    std::string result;
    size_t rest = 0; // what the result does not have yet
    for (size_t i = nextSpecial(_text, 0); i < _text.size(); i = nextSpecial(_text, i + 1)) {
        const size_t lambda = lambdaParameters(i);
        if (lambda != None && isLeftOut(lambda, true, parameters) && holds(lambda, onlyWith)) {
            result.append(_text, rest, lambda - rest).append(Dots);
            i = _partner[lambda];
        } else if (_listDepth[i] > 0 && _listDepth[i] <= depthOfLists && holds(i, onlyWith)) {
            result.append(_text, rest, i - rest).append("<...>");
            i = _partner[i];
        } else if (isLocalParameters(i) && isLeftOut(i, false, parameters) && holds(i, onlyWith)) {
            result.append(_text, rest, i - rest).append(Dots);
            i = _partner[i];
        } else {
            continue;
        }
        rest = i + 1;
    }
    return result.append(_text, rest);
}

std::string NameText::shortened(size_t longest) const
{
    std::string result = _text.size() > longest ? without(0, LongOfLambdas) : _text;
    for (int depth = 1; depth <= _deepestList && result.size() > longest; ++depth) {
        result = without(depth, LongOfLambdas);
    }
    return result.size() > longest ? without(_deepestList, LongParameters) : result;
}

std::string NameText::withoutDoubleUnderscores() const
{
    std::string result = _text;
    for (int depth = 1; depth <= _deepestList && result.find("__") != std::string::npos; ++depth) {
        result = without(depth, NoParameters, "__");
    }
    return result.find("__") != std::string::npos ? without(_deepestList, AllParameters, "__")
                                                  : result;
}

std::string NameText::withoutArguments() const
{
    return without(_deepestList, NoParameters);
}

std::string NameText::withoutDetails() const
{
    return without(_deepestList, AllParameters);
}

// Whether the bracket at `at` opens parameters of a lambda or of a function that the name is local
// to.
bool NameText::isDetail(size_t at) const
{
    static const std::string lambda = "{lambda";
    const bool isOfLambda = _text[at] == '(' && at >= lambda.size() && _partner[at] != Alone &&
                            startsAt(_text, at - lambda.size(), lambda.c_str());
    return isOfLambda || isLocalParameters(at);
}

std::vector<std::string> NameText::details() const
{
    std::vector<std::string> result;
    for (size_t i = nextSpecial(_text, 0); i < _text.size(); i = nextSpecial(_text, i + 1)) {
        if (isDetail(i)) {
            result.push_back(_text.substr(i, _partner[i] + 1 - i));
            i = _partner[i];
        }
    }
    return result;
}

std::string NameText::withDetails(const std::vector<bool>& keeps) const
{
    std::string result;
    size_t rest = 0; // what the result does not have yet
    size_t number = 0;
    for (size_t i = nextSpecial(_text, 0); i < _text.size(); i = nextSpecial(_text, i + 1)) {
        if (!isDetail(i)) {
            continue;
        }
        if (!keeps[number++]) {
            result.append(_text, rest, i - rest).append(Dots);
            rest = _partner[i] + size_t{1};
        }
        i = _partner[i];
    }
    return result.append(_text, rest);
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

std::string withoutQualifiers(const std::string& text, int depth)
{
    std::string result;
    int inside = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const size_t past = pastOperator(text, i);
        if (past != i) {
            result.append(text, i, past - i);
            i = past - 1;
            continue;
        }
        inside += std::strchr("<({[", text[i]) != nullptr ? 1 : 0;
        inside -= std::strchr(")}]", text[i]) != nullptr ||
                  (text[i] == '>' && i > 0 && text[i - 1] != '-');
        const bool isPair = text.compare(i, 2, "::") == 0;
        if (isPair && inside > depth) {
            dropPart(result);
            ++i;
        } else if (isPair) {
            result += "::";
            ++i;
        } else if (text[i] != ':') {
            result += text[i];
        } else if (endsWith(result, "auto")) {
            // "auto:1", a parameter of a lambda
            i = std::min(text.find_first_not_of("0123456789", i + 1), text.size()) - 1;
        } else {
            result += '.';
        }
    }
    return result;
}

bool isPlainName(const std::string& name)
{
    for (const char c : name) {
        if (c == '<' || c == '(' || c == '{') {
            return false;
        }
    }
    return name.find(operatorWord) == std::string::npos;
}

bool leavePlainListsOut(const std::string& text, std::string& result)
{
    PlainBrackets brackets(text);
    size_t rest = 0; // what the result does not have yet
    for (size_t i = nextSpecial(text, 0); i < text.size(); i = nextSpecial(text, i + 1)) {
        const size_t before = brackets.depth();
        if (!brackets.take(i) || (before == 0 && brackets.depth() > 0 && text[i] != '<')) {
            return false;
        }
        if (before == 0 && brackets.depth() > 0) {
            result.append(text, rest, i - rest).append("<...>");
        } else if (before > 0 && brackets.depth() == 0) {
            rest = i + 1;
        }
    }
    result.append(text, rest);
    return brackets.depth() == 0;
}

std::string withoutArguments(const std::string& text)
{
    std::string result;
    return leavePlainListsOut(text, result) ? result : NameText(text).withoutArguments();
}

size_t partsOf(const std::string& text)
{
    size_t count = 1;
    for (size_t at = text.find("::"); at != std::string::npos; at = text.find("::", at + 2)) {
        ++count;
    }
    return count;
}

namespace {

// Finds the commas outside of brackets, and the text's end.
bool findPlainCommas(const std::string& types, std::vector<size_t>& commas)
{
    PlainBrackets brackets(types);
    const auto next = [&types](size_t at) {
        return nextSpecial(types, at, isSpecialInList);
    };
    for (size_t i = next(0); i < types.size(); i = next(i + 1)) {
        if (!brackets.take(i)) {
            return false;
        }
        if (types[i] == ',' && brackets.depth() == 0) {
            commas.push_back(i);
        }
    }
    commas.push_back(types.size());
    return brackets.depth() == 0;
}

std::vector<size_t> findCommas(const std::string& types)
{
    std::vector<size_t> commas;
    if (findPlainCommas(types, commas)) {
        return commas;
    }
    commas.clear();
    const NameText text(types);
    for (size_t i = 0; i < types.size(); ++i) {
        if (types[i] == ',') {
            commas.push_back(i);
        } else {
            i = text.pastBrackets(i);
        }
    }
    commas.push_back(types.size());
    return commas;
}

} // namespace

std::vector<std::string> splitList(const std::string& types)
{
    std::vector<std::string> result;
    if (types.empty()) {
        return result;
    }
    if (types.find(',') == std::string::npos && types.find_first_not_of(' ') == 0 &&
        types.back() != ' ') {
        return {types};
    }
    size_t start = 0;
    for (const size_t end : findCommas(types)) {
        const size_t first = std::min(types.find_first_not_of(' ', start), end);
        if (first < end) {
            const size_t last = types.find_last_not_of(' ', end - 1);
            result.push_back(types.substr(first, last + 1 - first));
        }
        start = end + 1;
    }
    return result;
}
