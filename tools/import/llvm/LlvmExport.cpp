// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmExport.h"

#include <simdjson.h>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;

// Brackets and braces around: the document, its data, the first of them, its functions.
constexpr size_t KeyDepth = 3;
constexpr size_t ListDepth = 4;
constexpr size_t DeepestDocument = 1000;
constexpr size_t LongestKey = 16; // bytes

constexpr size_t RegionNumbers = 8;

// Counts past 63 bits stand as such.
uint64_t countOf(const element& value)
{
    uint64_t count = 0;
    if (value.get(count) == simdjson::SUCCESS) {
        return count;
    }
    int64_t number = 0;
    return value.get(number) == simdjson::SUCCESS ? 0 : UINT64_MAX;
}

bool readRegion(const element& value, ExportedFunction& function)
{
    array numbers;
    if (value.get(numbers) != simdjson::SUCCESS || numbers.size() < RegionNumbers) {
        return false;
    }
    uint64_t place[RegionNumbers];
    size_t i = 0;
    for (const element number : numbers) {
        if (i == RegionNumbers) {
            break;
        }
        place[i] = countOf(number);
        if (i != 4 && place[i] > UINT32_MAX) {
            return false;
        }
        ++i;
    }
    CoverageRegion region;
    region._startLine = static_cast<uint32_t>(place[0]);
    region._startColumn = static_cast<uint32_t>(place[1]);
    region._endLine = static_cast<uint32_t>(place[2]);
    region._endColumn = static_cast<uint32_t>(place[3]);
    region._file = static_cast<uint32_t>(place[5]);
    region._expanded = static_cast<uint32_t>(place[6]);
    if (place[7] > CoverageRegion::Condition) {
        return false;
    }
    region._kind = static_cast<CoverageRegion::Kind>(place[7]);
    function._regions.push_back(region);
    function._counts.push_back(place[4]);
    return true;
}

} // namespace

class LlvmExport::Parser
{
public:
    bool parse(const std::string& text, ExportedFunction& function);

private:
    simdjson::dom::parser _parser;
};

bool LlvmExport::Parser::parse(const std::string& text, ExportedFunction& function)
{
    element object;
    std::string_view name;
    array files;
    array regions;
    if (_parser.parse(text).get(object) != simdjson::SUCCESS ||
        object["name"].get(name) != simdjson::SUCCESS ||
        object["filenames"].get(files) != simdjson::SUCCESS ||
        object["regions"].get(regions) != simdjson::SUCCESS) {
        return false;
    }
    function._name = std::string(name);
    for (const element file : files) {
        std::string_view path;
        if (file.get(path) != simdjson::SUCCESS) {
            return false;
        }
        function._files.emplace_back(path);
    }
    for (const element region : regions) {
        if (!readRegion(region, function)) {
            return false;
        }
    }
    return true;
}

LlvmExport::LlvmExport(Receiver& receiver)
    : _receiver(receiver), _parser(std::make_unique<Parser>())
{}

LlvmExport::~LlvmExport() = default;

bool LlvmExport::receive(const char* bytes, size_t size)
{
    for (size_t i = 0; i < size; ++i) {
        if (!take(bytes[i])) {
            return false;
        }
    }
    return true;
}

void LlvmExport::open(char byte)
{
    if (byte == '[' && _depth == KeyDepth && _text == "functions") {
        _isInFunctions = true;
        _hadFunctions = true;
    }
    ++_depth;
}

bool LlvmExport::close()
{
    if (_depth == 0) {
        return false;
    }
    --_depth;
    if (_isInFunctions && _depth == KeyDepth) {
        _isInFunctions = false;
    }
    if (!_isInFunctions || _depth != ListDepth) {
        return true;
    }
    ExportedFunction function;
    const bool isGood = _parser->parse(_function, function) && _receiver.function(function);
    _function.clear();
    return isGood;
}

// The scan sees texts and nesting; what is inside of a function is for the parser.
bool LlvmExport::take(char byte)
{
    const bool isInFunction = _isInFunctions && (_depth > ListDepth || byte == '{');
    if (isInFunction) {
        _function += byte;
        if (_function.size() > LargestFunction) {
            return false;
        }
    }
    if (_isInText) {
        const bool isEnd = byte == '"' && !_isEscaped;
        _isEscaped = byte == '\\' && !_isEscaped;
        _isInText = !isEnd;
        if (!isEnd && _text.size() < LongestKey) {
            _text += byte;
        }
        return true;
    }
    switch (byte) {
    case '"':
        _isInText = true;
        _text.clear();
        return true;
    case '{':
    case '[':
        open(byte);
        return _depth < DeepestDocument;
    case '}':
    case ']':
        return close();
    default:
        return true;
    }
}
