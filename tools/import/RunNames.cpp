// SPDX-License-Identifier: MIT
#include "tools/import/RunNames.h"

#include <cstring>

namespace {

const char plainCharacters[] =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-+=@,";

// A character of several bytes is plain, whatever it is.
bool isPlain(char c)
{
    return c != 0 &&
           (static_cast<unsigned char>(c) >= 0x80 || std::strchr(plainCharacters, c) != nullptr);
}

bool continuesCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

std::string plainName(const std::string& name)
{
    std::string result = name;
    if (result.size() > RunNames::LongestName) {
        size_t end = RunNames::LongestName;
        while (end > 0 && continuesCharacter(result[end])) {
            --end;
        }
        result.resize(end);
    }
    for (char& c : result) {
        c = isPlain(c) ? c : '_';
    }
    // Hidden files and options begin like this.
    if (result.empty() || result[0] == '.' || result[0] == '-') {
        result.insert(0, "_");
    }
    return result;
}

} // namespace

std::string RunNames::another(const std::string& fileName)
{
    std::string result = fileName;
    size_t& last = _last[fileName];
    last = last == 0 ? 1 : last;
    while (!_used.insert(result).second) {
        result = fileName + "-" + std::to_string(++last);
    }
    return result;
}

std::string RunNames::fileName(const std::string& name)
{
    return another(plainName(name));
}
