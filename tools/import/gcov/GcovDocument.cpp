// SPDX-License-Identifier: MIT
#include "tools/import/gcov/GcovDocument.h"

#include "tools/import/LineOwners.h"

#include <algorithm>
#include <new>
#include <simdjson.h>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

// A whole number; what does not fit 63 bits, or is written with an exponent, ends at the limit.
bool readNumber(const element& value, int64_t& number)
{
    if (value.get(number) == simdjson::SUCCESS) {
        return true;
    }
    constexpr double Limit = 9223372036854775808.0; // 2^63
    double large = 0;
    if (value.get(large) != simdjson::SUCCESS) {
        return false;
    }
    number = large >= Limit ? INT64_MAX : large <= -Limit ? INT64_MIN : static_cast<int64_t>(large);
    return true;
}

// A line or a column: 0 for what is none.
bool readPlace(const element& value, uint32_t& place)
{
    int64_t number = 0;
    if (!readNumber(value, number)) {
        return false;
    }
    place = number > 0 && number < UINT32_MAX ? static_cast<uint32_t>(number) : 0;
    return true;
}

void sortLines(std::vector<GcovLine>& lines)
{
    const auto isBefore = [](const GcovLine& a, const GcovLine& b) {
        return a._line < b._line;
    };
    const auto isNotBefore = [](const GcovLine& a, const GcovLine& b) {
        return a._line >= b._line;
    };
    if (std::adjacent_find(lines.begin(), lines.end(), isNotBefore) == lines.end()) {
        return;
    }
    std::stable_sort(lines.begin(), lines.end(), isBefore);
    size_t kept = 0;
    for (size_t i = 1; i < lines.size(); ++i) {
        if (lines[i]._line != lines[kept]._line) {
            lines[++kept] = lines[i];
        } else if (__builtin_add_overflow(lines[kept]._count, lines[i]._count,
                                          &lines[kept]._count)) {
            lines[kept]._count = INT64_MAX;
        }
    }
    lines.resize(kept + 1);
}

// Reads one of the files of a document.
class SourceReader
{
public:
    explicit SourceReader(GcovSource& source) : _source(source) {}

    bool read(const element& file);

    uint64_t linesWithoutNumber() const { return _linesWithoutNumber; }
    const std::string& problem() const { return _problem; }

private:
    bool fail(const char* problem)
    {
        _problem = problem;
        return false;
    }
    bool readFunctions(const element& file);
    bool readFunction(const element& value);
    bool readLine(const element& value);
    void keepLine(std::string_view function, const GcovLine& line);

    GcovSource& _source;
    std::unordered_map<std::string_view, uint32_t> _bySymbol; // borrows from the parser
    LineOwners _owners;
    std::string_view _lastSymbol; // a line's, nearly always that of the line before
    uint32_t _lastFunction = LineOwners::Nobody;
    uint64_t _linesWithoutNumber = 0;
    std::string _problem;
};

bool SourceReader::readFunction(const element& value)
{
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) {
        return fail("a function is no object");
    }
    GcovFunction function;
    std::string_view symbol;
    for (const auto& field : fields) {
        bool isGood = true;
        if (field.key == "name") {
            isGood = field.value.get(symbol) == simdjson::SUCCESS;
        } else if (field.key == "start_line") {
            isGood = readPlace(field.value, function._startLine);
        } else if (field.key == "start_column") {
            isGood = readPlace(field.value, function._startColumn);
        } else if (field.key == "end_line") {
            isGood = readPlace(field.value, function._endLine);
        } else if (field.key == "end_column") {
            isGood = readPlace(field.value, function._endColumn);
        }
        if (!isGood) {
            return fail("the name or the place of a function has the wrong type");
        }
    }
    if (symbol.empty()) {
        return fail("a function has no name");
    }
    function._symbol = symbol;
    const auto place = static_cast<uint32_t>(_source._functions.size());
    _owners.add(function._startLine, function._endLine, place);
    _bySymbol[symbol] = place;
    _source._functions.push_back(std::move(function));
    return true;
}

bool SourceReader::readFunctions(const element& file)
{
    array functions;
    if (file["functions"].get(functions) != simdjson::SUCCESS) {
        return fail("a file has no list of functions");
    }
    for (const element function : functions) {
        if (!readFunction(function)) {
            return false;
        }
    }
    _owners.build();
    return true;
}

void SourceReader::keepLine(std::string_view function, const GcovLine& line)
{
    if (function.empty() || function != _lastSymbol) {
        const auto found = _bySymbol.find(function);
        _lastFunction = found != _bySymbol.end() ? found->second : _owners.ownerOf(line._line);
        // The owner of one line says nothing of the next one.
        _lastSymbol = found != _bySymbol.end() ? function : std::string_view();
    }
    (_lastFunction == LineOwners::Nobody ? _source._strayLines
                                         : _source._functions[_lastFunction]._lines)
        .push_back(line);
}

bool SourceReader::readLine(const element& value)
{
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) {
        return fail("a line is no object");
    }
    GcovLine line;
    std::string_view function;
    bool hasNumber = false;
    bool hasCount = false;
    for (const auto& field : fields) {
        bool isGood = true;
        if (field.key == "line_number") {
            isGood = hasNumber = readPlace(field.value, line._line);
        } else if (field.key == "count") {
            isGood = hasCount = readNumber(field.value, line._count);
        } else if (field.key == "function_name") {
            isGood = field.value.get(function) == simdjson::SUCCESS;
        }
        if (!isGood) {
            return fail("the number, the count or the function of a line has the wrong type");
        }
    }
    if (!hasNumber || !hasCount) {
        return fail("a line has no number or no count");
    }
    if (line._line == 0) {
        ++_linesWithoutNumber;
        return true;
    }
    keepLine(function, line);
    return true;
}

bool SourceReader::read(const element& file)
{
    std::string_view path;
    array lines;
    if (file["file"].get(path) != simdjson::SUCCESS || path.empty() ||
        path.find('\0') != std::string_view::npos) {
        return fail("a file has no name");
    }
    _source._path = path;
    if (!readFunctions(file)) {
        return false;
    }
    if (file["lines"].get(lines) != simdjson::SUCCESS) {
        return fail("a file has no list of lines");
    }
    for (const element line : lines) {
        if (!readLine(line)) {
            return false;
        }
    }
    for (GcovFunction& function : _source._functions) {
        sortLines(function._lines);
    }
    sortLines(_source._strayLines);
    return true;
}

// Says what a document is that is none of gcov's, where people take one for the other.
const char* otherDocument(const element& document)
{
    element ignored;
    if (document["gcovr/format_version"].get(ignored) == simdjson::SUCCESS) {
        return "it is gcovr's own JSON: give what gcov wrote, or what gcovr --cobertura writes to "
               "zem-import cobertura";
    }
    return "it is none of gcov's JSON documents: it has no format_version";
}

} // namespace

class GcovDocument::Parser
{
public:
    bool parse(const std::string& json, GcovDocument& document);

private:
    bool readHead(const element& root, GcovDocument& document);

    simdjson::dom::parser _parser;
};

bool GcovDocument::Parser::readHead(const element& root, GcovDocument& document)
{
    std::string_view version;
    if (root["format_version"].get(version) != simdjson::SUCCESS) {
        document._problem = otherDocument(root);
        return false;
    }
    if (version != "1" && version != "2") {
        document._problem = "its format_version is not known: only 1 and 2 are";
        return false;
    }
    std::string_view folder;
    if (root["current_working_directory"].get(folder) == simdjson::SUCCESS) {
        document._folder = folder;
    }
    return true;
}

bool GcovDocument::Parser::parse(const std::string& json, GcovDocument& document)
{
    element root;
    const simdjson::error_code code = _parser.parse(json).get(root);
    if (code == simdjson::MEMALLOC) {
        throw std::bad_alloc(); // the document may be good
    }
    if (code != simdjson::SUCCESS) {
        document._problem = std::string("it is no JSON: ") + simdjson::error_message(code);
        return false;
    }
    array files;
    if (!readHead(root, document)) {
        return false;
    }
    if (root["files"].get(files) != simdjson::SUCCESS) {
        document._problem = "it has no list of files";
        return false;
    }
    for (const element file : files) {
        document._sources.emplace_back();
        SourceReader reader(document._sources.back());
        const bool isRead = reader.read(file);
        document._linesWithoutNumber += reader.linesWithoutNumber();
        if (!isRead) {
            document._problem = reader.problem();
            return false;
        }
    }
    return true;
}

GcovDocument::GcovDocument() : _parser(std::make_unique<Parser>()) {}

GcovDocument::~GcovDocument() = default;

bool GcovDocument::parse(const std::string& json)
{
    _folder.clear();
    _sources.clear();
    _linesWithoutNumber = 0;
    _problem.clear();
    return _parser->parse(json, *this);
}
