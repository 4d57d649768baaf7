// SPDX-License-Identifier: MIT
#include "tools/common/plainSymbol.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr size_t LongestSymbol = 4096;

// What the letters from 'a' on are as types; null for those that are none, or stand for more.
const char* const builtinTypes[26] = {
    "signed char", "bool",       "char",          "double",    "long double",
    "float",       "__float128", "unsigned char", "int",       "unsigned int",
    nullptr,       "long",       "unsigned long", nullptr,     nullptr,
    nullptr,       nullptr,      nullptr,         "short",     "unsigned short",
    nullptr,       "void",       "wchar_t",       "long long", "unsigned long long",
    "..."};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

class PlainReader
{
public:
    PlainReader(const std::string& symbol, FunctionText& function)
        : _at(symbol.c_str()), _end(_at + symbol.size()), _function(function)
    {}

    bool read();

private:
    // Whether the character is there; moves behind it. The text ends with a zero, which is none.
    bool take(char c)
    {
        const bool isThere = *_at == c;
        _at += isThere ? 1 : 0;
        return isThere;
    }
    bool readName();
    bool readParts();
    bool readPart();
    bool readSpecial();
    bool readArguments();
    bool readArgument(std::string& text);
    bool readType(std::string& text);
    bool readTypes();

    const char* _at;
    const char* _end;
    FunctionText& _function;
    std::string_view _part;     // the last one without its arguments
    bool _hasArguments = false; // the last part
};

// A part of a name with its length before it.
bool PlainReader::readPart()
{
    size_t length = 0;
    for (; isDigit(*_at) && length < LongestSymbol; ++_at) {
        length = length * 10 + static_cast<size_t>(*_at - '0');
    }
    if (length == 0 || length > static_cast<size_t>(_end - _at)) {
        return false;
    }
    _part = std::string_view(_at, length);
    _at += length;
    // An anonymous namespace; the library's own has other rules.
    if (_part.substr(0, 8) == "_GLOBAL_" || _part == "std") {
        return false;
    }
    const bool isWord = std::all_of(_part.begin(), _part.end(), [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    });
    _function._name += _part;
    _hasArguments = false;
    return isWord && !isDigit(_part[0]) && (!take('I') || readArguments());
}

// A constructor or destructor, whose class stands before it.
bool PlainReader::readSpecial()
{
    const bool isDestructor = *_at == 'D';
    if (_part.empty() || _hasArguments || (*_at != 'C' && !isDestructor) || _at[1] < '0' ||
        _at[1] > '2' || (!isDestructor && _at[1] == '0')) {
        return false;
    }
    _at += 2;
    _function._name += isDestructor ? "~" : "";
    _function._name += _part;
    return *_at == 'E';
}

// What stands between "N" and "E".
bool PlainReader::readParts()
{
    (void)take('K');
    while (!take('E')) {
        _function._name += _part.empty() ? "" : "::";
        if (!(isDigit(*_at) ? *_at != '0' && readPart() : readSpecial())) {
            return false;
        }
    }
    return !_part.empty();
}

bool PlainReader::readName()
{
    if (take('N')) {
        return readParts();
    }
    (void)take('L'); // of one unit alone
    return isDigit(*_at) && *_at != '0' && readPart();
}

// A type, or a number of type int.
bool PlainReader::readArgument(std::string& text)
{
    if (!take('L')) {
        return *_at != 'v' && readType(text);
    }
    if (!take('i')) {
        return false;
    }
    text += take('n') ? "-" : "";
    const char* first = _at;
    while (isDigit(*_at)) {
        ++_at;
    }
    text.append(first, _at);
    return first != _at && take('E');
}

bool PlainReader::readArguments()
{
    _hasArguments = true;
    _function._name += '<';
    for (bool isFirst = true; !take('E'); isFirst = false) {
        _function._name += isFirst ? "" : ", ";
        if (!readArgument(_function._name)) {
            return false;
        }
    }
    _function._name += '>';
    return true;
}

// One of the language's own types, or a pointer or reference to one.
bool PlainReader::readType(std::string& text)
{
    const char mark = *_at == 'P' || *_at == 'R' ? *_at++ : '\0';
    const bool isConstant = mark != '\0' && take('K');
    if (*_at < 'a' || *_at > 'z' || builtinTypes[*_at - 'a'] == nullptr ||
        (*_at == 'z' && mark != '\0')) {
        return false;
    }
    text += builtinTypes[*_at++ - 'a'];
    text += isConstant ? " const" : "";
    text += mark == 'P' ? "*" : mark == 'R' ? "&" : "";
    return true;
}

// The types of the parameters, up to the end.
bool PlainReader::readTypes()
{
    if (_at + 1 == _end && *_at == 'v') {
        return true; // no parameters
    }
    std::string& types = _function._types;
    while (_at != _end) {
        types += types.empty() ? "" : ", ";
        if (*_at == 'v' || !readType(types)) {
            return false;
        }
    }
    return !types.empty();
}

bool PlainReader::read()
{
    if (_end - _at > static_cast<std::ptrdiff_t>(LongestSymbol) || !take('_') || !take('Z') ||
        !readName()) {
        return false;
    }
    std::string result; // which only templates have in their symbols
    return (!_hasArguments || readType(result)) && readTypes();
}

} // namespace

bool readPlainSymbol(const std::string& symbol, FunctionText& function)
{
    function = FunctionText();
    function._hasTypes = true;
    return PlainReader(symbol, function).read();
}
