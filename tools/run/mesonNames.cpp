// SPDX-License-Identifier: MIT
#include "tools/run/mesonNames.h"

#include <simdjson.h>
#include <string_view>

namespace {

// Appends a text and its zero byte; false when the table cannot hold it.
bool append(const simdjson::dom::element& value, std::string& table)
{
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS || text.empty() ||
        text.find('\0') != std::string_view::npos) {
        return false;
    }
    table.append(text);
    table += '\0';
    return true;
}

bool appendTest(const simdjson::dom::element& test, std::string& table)
{
    simdjson::dom::element name;
    simdjson::dom::array words;
    if (test["name"].get(name) != simdjson::SUCCESS ||
        test["cmd"].get(words) != simdjson::SUCCESS || !append(name, table)) {
        return false;
    }
    for (const simdjson::dom::element& word : words) {
        if (!append(word, table)) {
            return false;
        }
    }
    table += '\0';
    return true;
}

// The words as they stand in the table.
std::string entryOf(char* const* words)
{
    std::string entry;
    for (; *words != nullptr; ++words) {
        entry += *words;
        entry += '\0';
    }
    return entry + '\0';
}

} // namespace

std::string mesonNames(const std::string& json)
{
    std::string table;
    simdjson::dom::parser parser;
    simdjson::dom::array tests;
    if (parser.parse(json).get(tests) != simdjson::SUCCESS) {
        return table;
    }
    for (const simdjson::dom::element& test : tests) {
        const size_t size = table.size();
        if (!appendTest(test, table)) {
            table.resize(size);
        }
    }
    return table;
}

std::string mesonName(const std::string& table, char* const* words)
{
    const std::string wanted = entryOf(words);
    const std::string end(2, '\0'); // of a test
    for (size_t start = 0; start < table.size();) {
        const size_t behindName = table.find('\0', start);
        const size_t last = table.find(end, start);
        if (behindName == std::string::npos || last == std::string::npos) {
            break;
        }
        const size_t behind = last + end.size();
        if (behind - behindName - 1 == wanted.size() &&
            table.compare(behindName + 1, wanted.size(), wanted) == 0) {
            return table.substr(start, behindName - start);
        }
        start = behind;
    }
    return "";
}
