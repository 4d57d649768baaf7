// SPDX-License-Identifier: MIT
#include "tools/common/StandardNames.h"

#include "tools/common/NameText.h"

#include <cstring>
#include <vector>

namespace {

// What a template's arguments are when they are not given, the first of them being argument number
// `given`. "$0" and "$1" stand for its first arguments.
struct DefaultArguments
{
    const char* name;
    size_t given;
    const char* defaults[3];
};

const DefaultArguments defaultArguments[] = {
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

// The namespaces whose templates these are.
const char* const namespaces[] = {"std::__cxx11::", "std::chrono::", "std::"};

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == ':';
}

// Copies text and remembers the open brackets of the copy, and where the arguments of each list
// start. So inner lists are short before an outer one is looked at.
class Writer
{
public:
    std::string write(const std::string& text);

private:
    struct Open
    {
        char _bracket;
        std::vector<size_t> _arguments; // where each starts; the first behind the bracket
    };

    size_t pastStream(const std::string& text, size_t at);
    void close(char bracket);
    void closeList();
    size_t nameStart(size_t bracket) const;
    const DefaultArguments* findDefaults(size_t start, size_t bracket) const;
    bool isDefault(const char* pattern, const Open& open, size_t index, size_t given) const;
    std::string argument(const Open& open, size_t index) const;
    void abbreviate(size_t start);

    std::string _text;
    std::vector<Open> _open;
};

// The library's decoder has short names for streams of its own, c++filt has not.
size_t Writer::pastStream(const std::string& text, size_t at)
{
    if (text.compare(at, 5, "std::") != 0 || (at > 0 && isNameCharacter(text[at - 1]))) {
        return at;
    }
    for (const char* name : {"istream", "ostream", "iostream"}) {
        const size_t end = at + 5 + std::strlen(name);
        if (text.compare(at + 5, std::strlen(name), name) == 0 &&
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
    for (const char* space : namespaces) {
        const size_t length = std::strlen(space);
        if (_text.compare(start, length, space) != 0) {
            continue;
        }
        for (const DefaultArguments& row : defaultArguments) {
            if (_text.compare(start + length, bracket - start - length, row.name) == 0) {
                return &row;
            }
        }
    }
    return nullptr;
}

std::string Writer::argument(const Open& open, size_t index) const
{
    const size_t start = open._arguments[index];
    const size_t end =
        index + 1 < open._arguments.size() ? open._arguments[index + 1] - 2 : _text.size();
    return _text.substr(start, end - start);
}

bool Writer::isDefault(const char* pattern, const Open& open, size_t index, size_t given) const
{
    std::string expected;
    for (const char* c = pattern; *c != '\0'; ++c) {
        if (*c != '$') {
            expected += *c;
            continue;
        }
        const size_t number = static_cast<size_t>(*++c - '0');
        if (number >= given) {
            return false;
        }
        expected += argument(open, number);
    }
    return argument(open, index) == expected;
}

void Writer::abbreviate(size_t start)
{
    for (const char* name : {"std::__cxx11::basic_string<char>", "std::basic_string<char>"}) {
        if (_text.compare(start, std::string::npos, name) == 0) {
            _text.replace(start, std::string::npos, "std::string");
        }
    }
}

void Writer::closeList()
{
    Open open;
    open._arguments.swap(_open.back()._arguments);
    _open.pop_back();
    if (_text.back() == ' ') {
        _text.pop_back();
    }
    const size_t bracket = open._arguments.front() - 1;
    const size_t start = nameStart(bracket);
    const DefaultArguments* row = findDefaults(start, bracket);
    while (row != nullptr && open._arguments.size() > row->given) {
        const size_t index = open._arguments.size() - 1;
        const size_t number = index - row->given;
        if (number >= 3 || row->defaults[number] == nullptr ||
            !isDefault(row->defaults[number], open, index, row->given)) {
            break;
        }
        _text.resize(index == 0 ? bracket + 1 : open._arguments[index] - 2);
        open._arguments.pop_back();
    }
    _text += '>';
    abbreviate(start);
}

void Writer::close(char bracket)
{
    const char opening = bracket == ')' ? '(' : bracket == ']' ? '[' : '{';
    while (!_open.empty() && _open.back()._bracket == '<') {
        _open.pop_back(); // it was a comparison
    }
    if (!_open.empty() && _open.back()._bracket == opening) {
        _open.pop_back();
    }
    _text += bracket;
}

std::string Writer::write(const std::string& text)
{
    _text.reserve(text.size());
    size_t pastSign = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        size_t past = c == 'o' ? pastOperator(text, i) : i;
        if (past != i) {
            _text.append(text, i, past - i);
            i = past - 1;
            pastSign = past;
            continue;
        }
        past = c == 's' ? pastStream(text, i) : i;
        if (past != i) {
            i = past - 1;
            continue;
        }
        if (c == '[' && text.compare(i, 5, "[abi:") == 0 && text.find(']', i) < text.size()) {
            i = text.find(']', i);
        } else if (c == '(' || c == '[' || c == '{') {
            _text += c;
            _open.push_back({c, {}});
        } else if (c == '<' && !_text.empty() && (isNameCharacter(_text.back()) || i == pastSign)) {
            _text += c;
            _open.push_back({c, {_text.size()}});
        } else if (c == ')' || c == ']' || c == '}') {
            close(c);
        } else if (c == '>' && !_open.empty() && _open.back()._bracket == '<' &&
                   text[i - 1] != '-') {
            closeList();
        } else {
            _text += c;
            if (c == ' ' && i > 0 && text[i - 1] == ',' && !_open.empty() &&
                _open.back()._bracket == '<') {
                _open.back()._arguments.push_back(_text.size());
            }
        }
    }
    return _text;
}

} // namespace

std::string withStandardNames(const std::string& text)
{
    const bool isPlain =
        text.find_first_of("<[") == std::string::npos && text.find("std::") == std::string::npos;
    return isPlain ? text : Writer().write(text);
}
