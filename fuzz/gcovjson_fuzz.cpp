// SPDX-License-Identifier: MIT
//
// What the compiler's gcov prints, as JSON. An input that begins with a 0 is made into a good
// document, which must come out as it went in; any other is read as it is.
#include "fuzz/FuzzBytes.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "tools/import/gcov/GcovDocument.h"

#include <map>
#include <string>
#include <vector>

namespace {

using Lines = std::map<uint32_t, int64_t>; // number > count

// Lines from 1 in order, each once.
void check(const std::vector<GcovLine>& lines)
{
    uint32_t before = 0;
    for (const GcovLine& line : lines) {
        qipAssert(line._line > before);
        before = line._line;
    }
}

// Whatever the text was, what is kept of it holds together.
void check(std::vector<GcovSource>& sources)
{
    for (const GcovSource& source : sources) {
        for (const GcovFunction& function : source._functions) {
            check(function._lines);
        }
        check(source._strayLines);
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

Lines linesOf(const std::vector<GcovLine>& lines)
{
    Lines result;
    for (const GcovLine& line : lines) {
        result[line._line] = line._count;
    }
    return result;
}

// One file with functions that do not overlap, each of ten lines.
void checkGood(FuzzBytes& bytes)
{
    const uint32_t nFunctions = bytes.below(6);
    std::map<std::string, Lines> wanted;
    std::string functions;
    std::string lines;
    Lines strays;
    uint64_t withoutNumber = 0;
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
        if (line == 0) {
            ++withoutNumber;
        } else {
            int64_t& sum = (owner != wanted.end() ? owner->second : strays)[line];
            sum = __builtin_add_overflow(sum, count, &sum) ? INT64_MAX : sum;
        }
        lines += std::string(lines.empty() ? "" : ", ") + "{" + field("line_number", line) + ", " +
                 field("count", count) + ", " + field("function_name", name) + "}";
    }
    GcovDocument reader;
    qipAssert(reader.parse("{" + field("format_version", "1") + ", " +
                           field("current_working_directory", "/b") + ", \"files\": [{" +
                           field("file", "a.c") + ", \"functions\": [" + functions +
                           "], \"lines\": [" + lines + "]}]}\n"));
    check(reader.sources());
    const GcovSource& source = reader.sources().at(0);
    qipAssert(reader.linesWithoutNumber() == withoutNumber);
    qipAssert(source._functions.size() == nFunctions);
    qipAssert(source._path == "a.c" && reader.folder() == "/b");
    qipAssert(linesOf(source._strayLines) == strays);
    for (const GcovFunction& function : source._functions) {
        qipAssert(linesOf(function._lines) == wanted[function._symbol]);
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
    GcovDocument reader;
    (void)reader.parse(std::string(reinterpret_cast<const char*>(data), size));
    check(reader.sources());
    return 0;
}
