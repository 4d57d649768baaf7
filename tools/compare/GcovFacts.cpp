// SPDX-License-Identifier: MIT
#include "tools/compare/GcovFacts.h"

#include "tools/common/SourcePath.h"

#include <simdjson.h>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;

std::string textOf(const element& object, const char* key)
{
    std::string_view text;
    return object[key].get(text) == simdjson::SUCCESS ? std::string(text) : std::string();
}

// Counts past 63 bits come as unsigned or floating numbers and are large enough as 1.
int64_t countOf(const element& object, const char* key)
{
    int64_t number = 0;
    return object[key].get(number) == simdjson::SUCCESS ? number : 1;
}

uint32_t lineOf(const element& object, const char* key)
{
    return static_cast<uint32_t>(countOf(object, key));
}

bool addFile(const element& file, FileFacts& facts)
{
    array functions;
    array lines;
    if (file["functions"].get(functions) != simdjson::SUCCESS ||
        file["lines"].get(lines) != simdjson::SUCCESS) {
        return false;
    }
    for (const element function : functions) {
        FunctionFacts& entry =
            facts._functions[{lineOf(function, "start_line"), lineOf(function, "end_line"),
                              textOf(function, "name")}];
        entry._readable = textOf(function, "demangled_name");
        entry._entries += countOf(function, "execution_count");
    }
    for (const element line : lines) {
        LineFacts& entry = facts._lines[lineOf(line, "line_number")];
        entry._isListed = true;
        entry._count += countOf(line, "count");
    }
    return true;
}

// Other files may hold lines of theirs: inlined or included.
void addLeftOut(const element& file, BuildFacts& facts)
{
    array functions;
    if (file["functions"].get(functions) != simdjson::SUCCESS) {
        return;
    }
    for (const element function : functions) {
        facts._leftOut.insert(textOf(function, "demangled_name"));
    }
}

bool addDocument(const element& document, const SourceFilter& filter, BuildFacts& facts)
{
    array files;
    if (document["files"].get(files) != simdjson::SUCCESS) {
        return false;
    }
    const std::string folder = textOf(document, "current_working_directory");
    for (const element file : files) {
        const std::string path = absolutePath(folder, textOf(file, "file"));
        if (filter.ask(path) != SourceFilter::Kept) {
            addLeftOut(file, facts);
        } else if (!addFile(file, facts._files[path])) {
            return false;
        }
    }
    return true;
}

} // namespace

bool addGcovFacts(const std::string& json, const SourceFilter& filter, BuildFacts& facts)
{
    simdjson::dom::parser parser;
    bool isAny = false;
    for (size_t start = 0; start < json.size();) {
        size_t end = json.find('\n', start);
        end = end == std::string::npos ? json.size() : end;
        element document;
        if (end > start) {
            if (parser.parse(json.data() + start, end - start).get(document) != simdjson::SUCCESS ||
                !addDocument(document, filter, facts)) {
                return false;
            }
            isAny = true;
        }
        start = end + 1;
    }
    return isAny;
}
