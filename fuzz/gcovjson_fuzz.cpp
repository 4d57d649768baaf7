// SPDX-License-Identifier: MIT
//
// What the compiler's gcov prints, as JSON. An input that begins with a 0 is made into a good
// document, which must come out as it went in; any other is read as it is.
#include "fuzz/FuzzBytes.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "tools/import/gcc/GcovLines.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Lines = std::vector<std::pair<uint32_t, int64_t>>; // number, count

// Whatever the text was, what is kept of it holds together.
void check(std::vector<GcovLineFunction>& functions)
{
    for (const GcovLineFunction& function : functions) {
        qipAssert(function._copy._lines.size() == function._counts.size());
        for (size_t i = 0; i < function._copy._lines.size(); ++i) {
            qipAssert(function._copy._lines[i]._block == i);
            qipAssert(function._copy._lines[i]._line != 0);
        }
    }
}

int64_t anyCount(FuzzBytes& bytes)
{
    const uint32_t kind = bytes.below(4);
    return kind < 3 ? kind : static_cast<int64_t>(bytes.word()) << bytes.below(32);
}

std::string field(const char* name, const std::string& text)
{
    return "\"" + std::string(name) + "\": \"" + text + "\"";
}

std::string field(const char* name, int64_t number)
{
    return "\"" + std::string(name) + "\": " + std::to_string(number);
}

// One file with functions that do not overlap, each of ten lines.
void checkGood(FuzzBytes& bytes)
{
    const uint32_t nFunctions = bytes.below(6);
    std::map<std::string, Lines> wanted;
    std::string functions;
    std::string lines;
    uint64_t stray = 0;
    for (uint32_t i = 0; i < nFunctions; ++i) {
        const std::string name = "f" + std::to_string(i);
        wanted[name];
        functions += std::string(i > 0 ? ", " : "") + "{" + field("name", name) + ", " +
                     field("start_line", i * 10 + 1) + ", " + field("end_line", i * 10 + 10) + "}";
    }
    while (!bytes.isEmpty()) {
        const uint32_t line = bytes.below(64);
        const int64_t count = anyCount(bytes);
        const uint32_t named = bytes.below(8); // a function that the line says, if there is one
        const std::string name = "f" + std::to_string(named);
        const std::string around = "f" + std::to_string(line == 0 ? 99 : (line - 1) / 10);
        const auto owner = wanted.find(wanted.count(name) != 0 ? name : around);
        if (owner != wanted.end() && line != 0) {
            owner->second.emplace_back(line, count);
        } else {
            ++stray;
        }
        lines += std::string(lines.empty() ? "" : ", ") + "{" + field("line_number", line) + ", " +
                 field("count", count) + ", " + field("function_name", name) + "}";
    }
    GcovLines reader;
    qipAssert(reader.parse("{" + field("current_working_directory", "/b") + ", \"files\": [{" +
                           field("file", "a.c") + ", \"functions\": [" + functions +
                           "], \"lines\": [" + lines + "]}]}\n"));
    check(reader.functions());
    qipAssert(reader.strayLines() == stray && reader.functions().size() == nFunctions);
    for (const GcovLineFunction& function : reader.functions()) {
        Lines found;
        for (size_t i = 0; i < function._copy._lines.size(); ++i) {
            found.emplace_back(function._copy._lines[i]._line, function._counts[i]);
        }
        qipAssert(found == wanted[function._copy._symbol]);
        qipAssert(function._file == "a.c" && function._folder == "/b");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzBytes bytes(data, size);
    if (size > 0 && data[0] == 0) {
        (void)bytes.byte();
        checkGood(bytes);
        return 0;
    }
    GcovLines reader;
    (void)reader.parse(std::string(reinterpret_cast<const char*>(data), size));
    check(reader.functions());
    return 0;
}
