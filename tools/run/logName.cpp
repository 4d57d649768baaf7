// SPDX-License-Identifier: MIT
#include "tools/run/logName.h"

#include <cstring>

namespace {

constexpr size_t MostBytes = 100;

// A % has a meaning in the names of Clang's profiles, and zem-import writes no log with one.
bool isSafe(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           (c >= '0' && c <= '9') || (c != '\0' && std::strchr("._+=,@-", c) != nullptr);
}

// Whether a UTF-8 character goes on with this byte.
bool isInside(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0u) == 0x80;
}

} // namespace

std::string baseName(const std::string& path)
{
    const size_t end = path.find_last_not_of('/');
    if (end == std::string::npos) {
        return path;
    }
    const size_t slash = path.rfind('/', end);
    return path.substr(slash == std::string::npos ? 0 : slash + 1,
                       slash == std::string::npos ? end + 1 : end - slash);
}

std::string logName(const std::string& text)
{
    std::string name;
    for (const char c : text.substr(0, MostBytes + 1)) {
        name += isSafe(c) ? c : '_';
    }
    if (name.size() > MostBytes) {
        size_t end = MostBytes;
        while (end > 0 && isInside(name[end])) {
            --end;
        }
        name.resize(end);
    }
    if (name.empty()) {
        return "unnamed";
    }
    if (name[0] == '.' || name[0] == '-') {
        name[0] = '_';
    }
    return name;
}

std::string testName(char* const* words)
{
    std::string joined;
    for (char* const* word = words; *word != nullptr; ++word) {
        if (word != words && std::strcmp(*word, "--test-name") == 0 && word[1] != nullptr) {
            return logName(word[1]);
        }
        if (joined.size() <= MostBytes) {
            joined += (joined.empty() ? "" : "-") + baseName(*word);
        }
    }
    return logName(joined);
}

std::string shellWord(const std::string& text)
{
    bool isPlain = !text.empty();
    std::string quoted = "'";
    for (const char c : text) {
        isPlain = isPlain && (isSafe(c) || c == '/' || c == ':');
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return isPlain ? text : quoted + "'";
}
