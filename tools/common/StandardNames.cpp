// SPDX-License-Identifier: MIT
#include "tools/common/StandardNames.h"

#include "tools/common/NameText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// What a template's arguments are when they are not given, the first of them being argument number
// `given`. "$0" and "$1" stand for its first arguments.
struct DefaultArguments
{
    std::string_view name;
    size_t given;
    const char* defaults[3];
};

// Sorted by name.
constexpr DefaultArguments defaultArguments[] = {
    {"basic_filebuf", 1, {"std::char_traits<$0>"}},
    {"basic_fstream", 1, {"std::char_traits<$0>"}},
    {"basic_ifstream", 1, {"std::char_traits<$0>"}},
    {"basic_ios", 1, {"std::char_traits<$0>"}},
    {"basic_iostream", 1, {"std::char_traits<$0>"}},
    {"basic_istream", 1, {"std::char_traits<$0>"}},
    {"basic_istringstream", 1, {"std::char_traits<$0>", "std::allocator<$0>"}},
    {"basic_ofstream", 1, {"std::char_traits<$0>"}},
    {"basic_ostream", 1, {"std::char_traits<$0>"}},
    {"basic_ostringstream", 1, {"std::char_traits<$0>", "std::allocator<$0>"}},
    {"basic_regex", 1, {"std::__cxx11::regex_traits<$0>"}},
    {"basic_streambuf", 1, {"std::char_traits<$0>"}},
    {"basic_string", 1, {"std::char_traits<$0>", "std::allocator<$0>"}},
    {"basic_string_view", 1, {"std::char_traits<$0>"}},
    {"basic_stringbuf", 1, {"std::char_traits<$0>", "std::allocator<$0>"}},
    {"basic_stringstream", 1, {"std::char_traits<$0>", "std::allocator<$0>"}},
    {"deque", 1, {"std::allocator<$0>"}},
    {"duration", 1, {"std::ratio<1l>"}},
    {"equal_to", 0, {"void"}},
    {"forward_list", 1, {"std::allocator<$0>"}},
    {"greater", 0, {"void"}},
    {"istreambuf_iterator", 1, {"std::char_traits<$0>"}},
    {"less", 0, {"void"}},
    {"list", 1, {"std::allocator<$0>"}},
    {"map", 2, {"std::less<$0>", "std::allocator<std::pair<$0 const, $1>>"}},
    {"match_results", 1, {"std::allocator<std::__cxx11::sub_match<$0>>"}},
    {"multimap", 2, {"std::less<$0>", "std::allocator<std::pair<$0 const, $1>>"}},
    {"multiset", 1, {"std::less<$0>", "std::allocator<$0>"}},
    {"ostreambuf_iterator", 1, {"std::char_traits<$0>"}},
    {"priority_queue", 1, {"std::vector<$0>", "std::less<$0>"}},
    {"queue", 1, {"std::deque<$0>"}},
    {"ratio", 1, {"1l"}},
    {"set", 1, {"std::less<$0>", "std::allocator<$0>"}},
    {"span", 1, {"18446744073709551615ul"}},
    {"stack", 1, {"std::deque<$0>"}},
    {"unique_ptr", 1, {"std::default_delete<$0>"}},
    {"unordered_map",
     2,
     {"std::hash<$0>", "std::equal_to<$0>", "std::allocator<std::pair<$0 const, $1>>"}},
    {"unordered_multimap",
     2,
     {"std::hash<$0>", "std::equal_to<$0>", "std::allocator<std::pair<$0 const, $1>>"}},
    {"unordered_multiset", 1, {"std::hash<$0>", "std::equal_to<$0>", "std::allocator<$0>"}},
    {"unordered_set", 1, {"std::hash<$0>", "std::equal_to<$0>", "std::allocator<$0>"}},
    {"vector", 1, {"std::allocator<$0>"}},
};

constexpr bool isSorted()
{
    for (size_t i = 1; i < std::size(defaultArguments); ++i) {
        if (defaultArguments[i - 1].name >= defaultArguments[i].name) {
            return false;
        }
    }
    return true;
}
static_assert(isSorted(), "the table is searched by bisection");

// The namespaces inside std whose templates these are, too.
constexpr std::string_view innerNamespaces[] = {"__cxx11::", "chrono::"};

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == ':';
}

// What is more than copied, at least when something certain stands beside it.
constexpr std::array<bool, 256> specialCharacters()
{
    std::array<bool, 256> result = {};
    for (const char c : std::string_view("()<>[]{} os")) {
        result[static_cast<unsigned char>(c)] = true;
    }
    return result;
}
constexpr std::array<bool, 256> isSpecial = specialCharacters();

// Whether the special character at `at` is only copied. Most are.
bool isCopied(std::string_view text, size_t at)
{
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    switch (text[at]) {
    case 'o':
        return next != 'p';
    case 's':
        return next != 't';
    case ' ':
        return at == 0 || text[at - 1] != ',';
    default:
        return false;
    }
}

// The first place from `at` on whose character is more than copied; the text's end when there is
// none.
size_t endOfCopied(std::string_view text, size_t at)
{
    while (at < text.size() &&
           (!isSpecial[static_cast<unsigned char>(text[at])] || isCopied(text, at))) {
        ++at;
    }
    return at;
}

// Copies text and remembers the open brackets of the copy, and where the arguments of each list
// start. So inner lists are short before an outer one is looked at.
class Writer
{
public:
    std::string write(std::string_view text);

private:
    struct Open
    {
        char _bracket;
        size_t _arguments; // how many of all arguments are those of brackets around it
    };

    size_t pastStream(std::string_view text, size_t at);
    size_t special(std::string_view text, size_t at);
    void open(char bracket);
    void pop();
    void close(char bracket);
    void closeList();
    bool isInList() const { return !_open.empty() && _open.back()._bracket == '<'; }
    size_t nameStart(size_t bracket) const;
    const DefaultArguments* findDefaults(size_t start, size_t bracket) const;
    void dropDefaults(const DefaultArguments& row);
    bool isDefault(const char* pattern, size_t index, size_t given) const;
    std::string_view argument(size_t index) const;
    void abbreviate(size_t start);

    std::string _text;
    std::vector<Open> _open;
    // Where the arguments of all open lists start, the innermost list's last. The first of a list
    // is behind its bracket.
    std::vector<size_t> _arguments;
    size_t _pastSign = 0; // behind the last operator's sign in the text that is copied
};

// The library's decoder has short names for streams of its own, c++filt has not.
size_t Writer::pastStream(std::string_view text, size_t at)
{
    if (text.compare(at, 5, "std::") != 0 || (at > 0 && isNameCharacter(text[at - 1]))) {
        return at;
    }
    for (const char* name : {"istream", "ostream", "iostream"}) {
        const size_t end = at + 5 + std::strlen(name);
        if (text.compare(at + 5, end - at - 5, name) == 0 &&
            (end >= text.size() || text[end] == ':' || !isNameCharacter(text[end]))) {
            _text += std::string("std::basic_") + name + "<char>";
            return end;
        }
    }
    return at;
}

size_t Writer::nameStart(size_t bracket) const
{
    size_t start = bracket;
    while (start > 0 && isNameCharacter(_text[start - 1])) {
        --start;
    }
    return start;
}

const DefaultArguments* Writer::findDefaults(size_t start, size_t bracket) const
{
    std::string_view name(_text.data() + start, bracket - start);
    if (!startsWith(name, "std::")) {
        return nullptr;
    }
    name.remove_prefix(5);
    for (const std::string_view space : innerNamespaces) {
        if (startsWith(name, space)) {
            name.remove_prefix(space.size());
            break;
        }
    }
    const DefaultArguments* row = std::lower_bound(
        std::begin(defaultArguments), std::end(defaultArguments), name,
        [](const DefaultArguments& a, std::string_view wanted) { return a.name < wanted; });
    return row != std::end(defaultArguments) && row->name == name ? row : nullptr;
}

// An argument of the innermost list; `index` counts those of all lists.
std::string_view Writer::argument(size_t index) const
{
    const size_t start = _arguments[index];
    const size_t end = index + 1 < _arguments.size() ? _arguments[index + 1] - 2 : _text.size();
    return std::string_view(_text).substr(start, end - start);
}

// Whether an argument is what the pattern gives.
bool Writer::isDefault(const char* pattern, size_t index, size_t given) const
{
    std::string_view rest = argument(index);
    for (const char* c = pattern; *c != '\0'; ++c) {
        std::string_view expected(c, 1);
        if (*c == '$') {
            const size_t number = static_cast<size_t>(*++c - '0');
            if (number >= given) {
                return false;
            }
            expected = argument(_open.back()._arguments + number);
        }
        if (!startsWith(rest, expected)) {
            return false;
        }
        rest.remove_prefix(expected.size());
    }
    return rest.empty();
}

void Writer::abbreviate(size_t start)
{
    for (const char* name : {"std::__cxx11::basic_string<char>", "std::basic_string<char>"}) {
        if (_text.compare(start, std::string::npos, name) == 0) {
            _text.replace(start, std::string::npos, "std::string");
        }
    }
}

// Takes the arguments off the end of the innermost list that are its template's defaults.
void Writer::dropDefaults(const DefaultArguments& row)
{
    const size_t first = _open.back()._arguments;
    const size_t bracket = _arguments[first] - 1;
    while (_arguments.size() > first + row.given) {
        const size_t last = _arguments.size() - 1;
        const size_t number = last - first - row.given;
        if (number >= std::size(row.defaults) || row.defaults[number] == nullptr ||
            !isDefault(row.defaults[number], last, row.given)) {
            return;
        }
        _text.resize(last == first ? bracket + 1 : _arguments[last] - 2);
        _arguments.pop_back();
    }
}

void Writer::closeList()
{
    if (_text.back() == ' ') {
        _text.pop_back();
    }
    const size_t bracket = _arguments[_open.back()._arguments] - 1;
    const size_t start = nameStart(bracket);
    const DefaultArguments* row = findDefaults(start, bracket);
    if (row != nullptr) {
        dropDefaults(*row);
    }
    pop();
    _text += '>';
    if (row != nullptr) {
        abbreviate(start);
    }
}

void Writer::open(char bracket)
{
    _text += bracket;
    _open.push_back({bracket, _arguments.size()});
    if (bracket == '<') {
        _arguments.push_back(_text.size());
    }
}

void Writer::pop()
{
    _arguments.resize(_open.back()._arguments);
    _open.pop_back();
}

void Writer::close(char bracket)
{
    const char opening = bracket == ')' ? '(' : bracket == ']' ? '[' : '{';
    while (isInList()) {
        pop(); // it was a comparison
    }
    if (!_open.empty() && _open.back()._bracket == opening) {
        pop();
    }
    _text += bracket;
}

// Writes what starts at `at` and is no character that is only copied. Returns the place behind it.
size_t Writer::special(std::string_view text, size_t at)
{
    const char c = text[at];
    const size_t past = c == 'o' ? pastOperator(text, at) : at;
    if (past != at) {
        _text.append(text, at, past - at);
        _pastSign = past;
        return past;
    }
    const size_t pastName = c == 's' ? pastStream(text, at) : at;
    if (pastName != at) {
        return pastName;
    }
    const size_t tagEnd =
        c == '[' && text.compare(at, 5, "[abi:") == 0 ? text.find(']', at) : std::string::npos;
    if (tagEnd != std::string::npos) {
        return tagEnd + 1;
    }
    const bool isList =
        c == '<' && !_text.empty() && (isNameCharacter(_text.back()) || at == _pastSign);
    if (c == '(' || c == '[' || c == '{' || isList) {
        open(c);
    } else if (c == ')' || c == ']' || c == '}') {
        close(c);
    } else if (c == '>' && isInList() && text[at - 1] != '-') {
        closeList();
    } else {
        _text += c;
        if (c == ' ' && isInList()) {
            _arguments.push_back(_text.size());
        }
    }
    return at + 1;
}

std::string Writer::write(std::string_view text)
{
    _text.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        const size_t start = i;
        i = endOfCopied(text, i);
        _text.append(text, start, i - start);
        i = i < text.size() ? special(text, i) : i;
    }
    return std::move(_text);
}

} // namespace

std::string withStandardNames(std::string_view text)
{
    const bool isPlain = text.find('<') == std::string::npos &&
                         text.find('[') == std::string::npos &&
                         text.find("std::") == std::string::npos;
    return isPlain ? std::string(text) : Writer().write(text);
}
