// SPDX-License-Identifier: MIT
#include "tools/common/shellWord.h"

namespace {

bool isPlain(char c)
{
    return static_cast<unsigned char>(c) >= 0x80 ||
           std::string("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-=,@:")
                   .find(c) != std::string::npos;
}

} // namespace

std::string shellWord(const std::string& text)
{
    bool isQuoted = text.empty();
    std::string word = "'";
    for (const char c : text) {
        isQuoted = isQuoted || !isPlain(c);
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return isQuoted ? word + "'" : text;
}
