// SPDX-License-Identifier: MIT
#include "tools/common/ShortLabels.h"

#include "tools/common/NameText.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr size_t WidestScope = ShortLabels::WidestScope;
constexpr size_t WidestLast = 18;  // the last part, beside a scope that is shortened
constexpr size_t ShortestWord = 8; // of those that are cut
constexpr char Dots[] = "...";
constexpr size_t DotsLength = sizeof(Dots) - 1;

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '~' || (static_cast<unsigned char>(c) & 0x80) != 0;
}

bool isInsideCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80; // of UTF-8
}

// A word of at most `longest` characters: its start and its end.
std::string cutWord(const std::string& word, size_t longest)
{
    if (word.size() <= longest) {
        return word;
    }
    size_t tail = (longest - DotsLength) / 2;
    size_t head = longest - DotsLength - tail;
    while (head > 0 && isInsideCharacter(word[head])) {
        --head;
    }
    while (tail > 0 && isInsideCharacter(word[word.size() - tail])) {
        --tail;
    }
    return word.substr(0, head) + Dots + word.substr(word.size() - tail);
}

std::string withWordsOf(const std::string& text, size_t longest)
{
    std::string result;
    for (size_t i = 0; i < text.size();) {
        size_t end = i;
        while (end < text.size() && isWordCharacter(text[end])) {
            ++end;
        }
        const std::string word = text.substr(i, end - i);
        result += word == "operator" ? word : cutWord(word, longest);
        for (; end < text.size() && !isWordCharacter(text[end]); ++end) {
            result += text[end];
        }
        i = end;
    }
    return result;
}

// The longest words are cut until the text fits, or all are as short as words get.
std::string withShortWords(const std::string& text, size_t longest)
{
    if (text.size() <= longest) {
        return text;
    }
    size_t fits = ShortestWord;
    for (size_t tooLong = longest + 1; fits + 1 < tooLong;) {
        const size_t middle = (fits + tooLong) / 2;
        (withWordsOf(text, middle).size() <= longest ? fits : tooLong) = middle;
    }
    return withWordsOf(text, fits);
}

// Where the last of the parts between "::" starts.
size_t lastPart(const std::string& label)
{
    return isPlainName(label) ? label.rfind(':') + 1 : NameText(label).lastPart();
}

std::string scopeOf(const std::string& label)
{
    const size_t last = lastPart(label);
    return last == 0 ? "" : label.substr(0, last - 2);
}

std::vector<std::string> partsOfScope(const std::string& scope)
{
    const NameText text(scope);
    std::vector<std::string> parts;
    size_t start = 0;
    for (size_t i = 0; i < scope.size(); ++i) {
        i = text.pastBrackets(i);
        if (scope.compare(i, 2, "::") == 0) {
            parts.push_back(scope.substr(start, i - start));
            start = i + 2;
            ++i;
        }
    }
    parts.push_back(scope.substr(start));
    return parts;
}

// Parts that are left out are empty; several in a row are one "...".
std::string joined(const std::vector<std::string>& parts)
{
    std::string result = parts.front();
    for (size_t i = 1; i < parts.size(); ++i) {
        if (!parts[i].empty() || !parts[i - 1].empty()) {
            result += "::" + (parts[i].empty() ? Dots : parts[i]);
        }
    }
    return result;
}

// Lambdas tell least.
bool isOfLambda(const std::string& part)
{
    return part.front() == '{' || part.compare(0, 10, "operator()") == 0;
}

// How many characters less joined() makes without part `i`, which is none of the ends.
ptrdiff_t savedBy(const std::vector<std::string>& parts, size_t i)
{
    const int nDots = (parts[i - 1].empty() ? 1 : 0) + (parts[i + 1].empty() ? 1 : 0);
    return static_cast<ptrdiff_t>(parts[i].size()) +
           static_cast<ptrdiff_t>(DotsLength) * (nDots - 1) + 2 * nDots;
}

// Parts between the first and the last are left out, those of lambdas at once and before the
// others, then words are cut.
std::string shortScope(const std::string& scope)
{
    std::vector<std::string> parts = partsOfScope(scope);
    auto size = static_cast<ptrdiff_t>(scope.size());
    for (const bool isLambdasTurn : {true, false}) {
        const bool isTooWide = size > ptrdiff_t(WidestScope);
        for (size_t i = 1; i + 1 < parts.size() && isTooWide; ++i) {
            const bool isNeeded = isLambdasTurn || size > ptrdiff_t(WidestScope);
            if (isNeeded && !parts[i].empty() && isOfLambda(parts[i]) == isLambdasTurn) {
                size -= savedBy(parts, i);
                parts[i].clear();
            }
        }
    }
    const std::string result = joined(parts);
    return withShortWords(result.size() < scope.size() ? result : scope, WidestScope);
}

// "Class<...>::~Class": 1 behind the '~', 0 without, -1 for what is none of the two.
int placeOfClass(const std::string& label, size_t last)
{
    const std::string scope = last == 0 ? "" : partsOfScope(label.substr(0, last - 2)).back();
    const std::string klass = scope.substr(0, scope.find('<'));
    for (const int place : {0, 1}) {
        const std::string word = label.substr(last, label.find('<', last) - last);
        if (!klass.empty() && word == std::string(place, '~') + klass) {
            return place;
        }
    }
    return -1;
}

// The room that the last part needs.
size_t leastLast(const std::string& label, size_t last)
{
    return placeOfClass(label, last) >= 0 ? DotsLength + 1
                                          : std::min(label.size() - last, WidestLast);
}

std::string shortLast(const std::string& label)
{
    if (label.size() <= ShortLabels::Widest) {
        return label;
    }
    const size_t last = lastPart(label);
    const int place = placeOfClass(label, last);
    if (place >= 0 && label.size() - last > DotsLength + 1) {
        return label.substr(0, last + static_cast<size_t>(place)) + Dots;
    }
    const size_t longest =
        std::max(WidestLast, ShortLabels::Widest - std::min(last, ShortLabels::Widest));
    return label.substr(0, last) + withShortWords(label.substr(last), longest);
}

// Whether the dots at `at` stand for an argument list or parameters.
bool isList(const std::string& text, size_t at)
{
    return at > 0 && (text[at - 1] == '(' || text[at - 1] == '<');
}

// Numbers a text that is another's, too: behind the dots for parts, else those in a word.
std::string numbered(const std::string& text, size_t number)
{
    size_t at = text.find("::...");
    if (at != std::string::npos) {
        at += 2;
    } else {
        at = text.find(Dots);
        while (at != std::string::npos && isList(text, at)) {
            at = text.find(Dots, at + DotsLength);
        }
    }
    at = at == std::string::npos ? text.size() : at + DotsLength;
    return text.substr(0, at) + std::to_string(number) + text.substr(at);
}

} // namespace

void ShortLabels::shorten(Texts& texts, std::string (*shortened)(const std::string& text))
{
    std::set<std::string> taken;
    for (auto& text : texts) {
        const std::string plain = shortened(text.first);
        text.second = plain;
        for (size_t number = 2; plain != text.first && !taken.insert(text.second).second;
             ++number) {
            text.second = numbered(plain, number);
        }
    }
}

void ShortLabels::add(const std::string& label)
{
    if (label.size() > Widest) {
        _added.insert(label);
    }
}

void ShortLabels::finish()
{
    for (const std::string& label : _added) {
        const size_t last = lastPart(label);
        if (last > WidestScope && last + leastLast(label, last) > Widest) {
            _scopes.emplace(label.substr(0, last - 2), "");
        }
    }
    shorten(_scopes, shortScope);
    // Functions of such a scope are looked up by their names with the short one.
    for (const std::string& label : _added) {
        const auto scope = _scopes.find(scopeOf(label));
        _labels.emplace(
            scope == _scopes.end() ? label : scope->second + label.substr(scope->first.size()), "");
    }
    shorten(_labels, shortLast);
    _added.clear();
}

std::string ShortLabels::of(const std::string& label) const
{
    const auto scope = _scopes.empty() ? _scopes.end() : _scopes.find(scopeOf(label));
    const std::string text =
        scope == _scopes.end() ? label : scope->second + label.substr(scope->first.size());
    const auto found = _labels.find(text);
    return found == _labels.end() ? text : found->second;
}
