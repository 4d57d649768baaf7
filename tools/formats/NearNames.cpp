// SPDX-License-Identifier: MIT
#include "tools/formats/NearNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <strings.h>

namespace {

constexpr size_t Most = 3;
constexpr int OtherCapitals = 0;
constexpr int OtherQualifier = 1;
constexpr int Part = 2;
constexpr int Far = 1000;

// Parts of fewer letters are in many names.
constexpr size_t ShortestPart = 3;
// Longer names are not compared letter by letter.
constexpr size_t LongestCompared = 200;
constexpr int MostWrong = 5;

bool isSeparator(char c)
{
    return c == '/' || c == ':';
}

bool endsIn(const char* name, size_t length, const char* end, size_t endLength)
{
    return length > endLength && isSeparator(name[length - endLength - 1]) &&
           strcasecmp(name + length - endLength, end) == 0;
}

int lower(char c)
{
    return std::tolower(static_cast<unsigned char>(c));
}

// How many letters have to be changed, put in or left out to make one of the other; more than
// `limit` when it is more. Looks only at what is that near to the diagonal.
int lettersWrong(const char* a, int aLength, const char* b, int bLength, int limit)
{
    if (std::abs(aLength - bLength) > limit) {
        return limit + 1;
    }
    std::array<int, LongestCompared + 2> row;
    for (int j = 0; j <= bLength; ++j) {
        row[static_cast<size_t>(j)] = j;
    }
    for (int i = 1; i <= aLength; ++i) {
        const int first = std::max(1, i - limit);
        const int last = std::min(bLength, i + limit);
        int diagonal = row[static_cast<size_t>(first - 1)];
        row[static_cast<size_t>(first - 1)] = first == 1 ? i : limit + 1;
        for (int j = first; j <= last; ++j) {
            const auto at = static_cast<size_t>(j);
            const int above = j == i + limit ? limit + 1 : row[at];
            const int changed = diagonal + (lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1);
            diagonal = row[at];
            row[at] = std::min({changed, above + 1, row[at - 1] + 1});
        }
    }
    return row[static_cast<size_t>(bLength)];
}

int distanceByLetters(const char* wanted, size_t wantedLength, const char* name, size_t length)
{
    if (std::max(wantedLength, length) > LongestCompared || length == 0) {
        return Far;
    }
    const size_t shorter = std::min(wantedLength, length);
    const int limit = shorter < 4 ? 1 : shorter < 10 ? 2 : shorter < 20 ? 3 : MostWrong;
    const int wrong =
        lettersWrong(wanted, static_cast<int>(wantedLength), name, static_cast<int>(length), limit);
    return wrong > limit ? Far : Part + wrong;
}

// As if there were nothing in front of the last separator of `name`.
int distanceToLastPart(const char* wanted, size_t wantedLength, const char* name, size_t length)
{
    size_t start = length;
    while (start > 0 && !isSeparator(name[start - 1])) {
        --start;
    }
    const int distance =
        start == 0 ? Far : distanceByLetters(wanted, wantedLength, name + start, length - start);
    return distance >= Far ? Far : distance + 1;
}

// The name without what stands in angle brackets, "ns::List<a::B>::add" as "ns::List::add"; as it
// is when these do not match, as those of operators.
std::string withoutArguments(const char* name)
{
    std::string plain;
    size_t depth = 0;
    for (const char* at = name; *at != '\0'; ++at) {
        if (*at == '>' && depth == 0) {
            return name;
        }
        depth -= *at == '>' ? 1 : 0;
        if (depth == 0 && *at != '<' && *at != '>') {
            plain += *at;
        }
        depth += *at == '<' ? 1 : 0;
    }
    return depth == 0 ? plain : name;
}

int distanceByName(const char* wanted, const char* name)
{
    const size_t wantedLength = std::strlen(wanted);
    const size_t length = std::strlen(name);
    if (wantedLength == 0 || length == 0) {
        return Far;
    }
    if (strcasecmp(wanted, name) == 0) {
        return OtherCapitals;
    }
    if (endsIn(name, length, wanted, wantedLength) || endsIn(wanted, wantedLength, name, length)) {
        return OtherQualifier;
    }
    if ((wantedLength >= ShortestPart && strcasestr(name, wanted) != nullptr) ||
        (length >= ShortestPart && strcasestr(wanted, name) != nullptr)) {
        return Part;
    }
    return std::min(distanceByLetters(wanted, wantedLength, name, length),
                    distanceToLastPart(wanted, wantedLength, name, length));
}

// A class is meant by its name alone as often as with its arguments.
int distanceOf(const char* wanted, const char* name)
{
    const int distance = distanceByName(wanted, name);
    if (distance < Far || std::strchr(name, '<') == nullptr) {
        return distance;
    }
    const int plain = distanceByName(wanted, withoutArguments(name).c_str());
    return plain < Far ? plain + 1 : Far;
}

} // namespace

NearNames::NearNames(const char* wanted) : _wanted(wanted) {}

void NearNames::add(const char* name)
{
    const int distance = distanceOf(_wanted, name);
    if (distance >= Far || (_nearest.size() == Most && distance >= _nearest.back().distance)) {
        return;
    }
    const auto isSame = [name](const Candidate& known) {
        return known.name == name;
    };
    if (std::any_of(_nearest.begin(), _nearest.end(), isSame)) {
        return;
    }
    const auto place =
        std::upper_bound(_nearest.begin(), _nearest.end(), distance,
                         [](int mine, const Candidate& known) { return mine < known.distance; });
    _nearest.insert(place, {distance, name});
    if (_nearest.size() > Most) {
        _nearest.pop_back();
    }
}

std::vector<std::string> NearNames::nearest() const
{
    std::vector<std::string> names;
    names.reserve(_nearest.size());
    for (const Candidate& candidate : _nearest) {
        names.push_back(candidate.name);
    }
    return names;
}
