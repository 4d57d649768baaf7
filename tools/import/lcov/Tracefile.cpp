// SPDX-License-Identifier: MIT
#include "tools/import/lcov/Tracefile.h"

#include "tools/common/SourcePath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

const char unusedKinds[][6] = {"FNDA:", "FNF:", "FNH:", "BRDA:", "BRF:", "BRH:", "MCDC:",
                               "MCF:",  "MCH:", "LF:",  "LH:",   "VER:", "#"};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Nearly always the first byte says no.
bool startsWith(const char* at, const char* end, const char* text)
{
    for (; *text != '\0'; ++at, ++text) {
        if (at == end || *at != *text) {
            return false;
        }
    }
    return true;
}

// A number of a line, or another of 32 bits. Moves behind it; false when there is none.
bool takeNumber(const char*& at, const char* end, uint32_t& number)
{
    uint64_t value = 0;
    const char* start = at;
    for (; at != end && isDigit(*at); ++at) {
        value = value * 10 + static_cast<uint64_t>(*at - '0');
        if (value > UINT32_MAX) {
            return false;
        }
    }
    number = static_cast<uint32_t>(value);
    return at != start;
}

bool takeComma(const char*& at, const char* end)
{
    if (at == end || *at != ',') {
        return false;
    }
    ++at;
    return true;
}

// A count that is no plain number of up to 18 digits: a longer one, or one with an exponent, which
// other tools write for great counts. What is too great or too small stays at the limit.
bool takeLargeCount(const char*& at, const char* end, int64_t& count)
{
    constexpr size_t LongestCount = 64;
    constexpr double Limit = 9223372036854775808.0; // 2^63
    const char* behind = at;
    while (behind != end && std::strchr("0123456789.eE+-", *behind) != nullptr && *behind != '\0') {
        ++behind;
    }
    const std::string text(at, behind);
    if (text.empty() || text.size() > LongestCount || (!isDigit(text[0]) && text[0] != '-')) {
        return false;
    }
    char* last = nullptr;
    const double value = std::strtod(text.c_str(), &last);
    if (!std::isfinite(value) || *last != '\0') {
        return false;
    }
    at = behind;
    count = value >= Limit ? INT64_MAX : value <= -Limit ? INT64_MIN : static_cast<int64_t>(value);
    return true;
}

bool takeCount(const char*& at, const char* end, int64_t& count)
{
    constexpr int MostDigits = 18; // that surely fit
    const char* digit = at;
    const bool isNegative = digit != end && *digit == '-';
    digit += isNegative ? 1 : 0;
    const char* start = digit;
    int64_t value = 0;
    while (digit != end && isDigit(*digit) && digit - start < MostDigits) {
        value = value * 10 + (*digit++ - '0');
    }
    if (digit == start || (digit != end && *digit != ',')) {
        return takeLargeCount(at, end, count);
    }
    at = digit;
    count = isNegative ? -value : value;
    return true;
}

// LLVM's tools put the file's name before that of a local function: "a.cc:_ZL1fv". Names have no
// single ':' before their brackets; those of Objective-C methods begin with their sign.
const char* behindFile(const char* name, const char* end)
{
    if (name != end && (*name == '-' || *name == '+')) {
        return name;
    }
    for (const char* at = name; at != end && *at != '(' && *at != '<' && *at != '['; ++at) {
        const bool isDouble = at + 1 != end && at[0] == ':' && at[1] == ':';
        at += isDouble ? 1 : 0;
        if (!isDouble && (*at == ':' || *at == ';')) {
            return at + 1 != end ? at + 1 : name;
        }
    }
    return name;
}

} // namespace

bool Tracefile::fail(const std::string& cause)
{
    _problem = _path + (_line != 0 ? ":" + std::to_string(_line) : "") + ": " + cause;
    return false;
}

bool Tracefile::read(const std::string& path, const std::string& runName)
{
    _path = path;
    _runName = runName;
    _roots = std::make_unique<SourceRoots>(path);
    if (!_input.open(path)) {
        return fail(_input.problem());
    }
    _time = modificationTime(path);
    if (!readPieces()) {
        return false;
    }
    if (_isInSection) {
        return fail("the file ends within a section: it is cut short");
    }
    if (_isCut) {
        return fail("the file ends within a line: it is cut short");
    }
    _line = 0;
    return _hasSections || fail("no section of a source file in it: is it a tracefile of lcov?");
}

// What a section that begins now belongs to.
uint32_t Tracefile::run()
{
    uint32_t result = _ownRun;
    if (!_test.empty()) {
        result = _table.test(_test);
    } else if (_ownRun == UINT32_MAX) {
        result = _ownRun = _table.addRun(_runName);
    }
    _table.noteTime(result, _time);
    return result;
}

// Reads on to the end of a line of which `start` is known.
bool Tracefile::skipLongLine(const std::string& start)
{
    if (!isUnused(start.data(), start.data() + start.size())) {
        ++_line;
        return fail("the line has more than " + std::to_string(LongestRecord) + " bytes");
    }
    _isSkipping = true;
    return true;
}

// Whether the file, of which these bytes are the last, ends within a line. The mark of a section's
// end is whole without a newline.
bool Tracefile::endsWithinLine(const char* start, const char* end) const
{
    if (start == end || end[-1] == '\n') {
        return start == end && _isSkipping;
    }
    const void* newline = memrchr(start, '\n', static_cast<size_t>(end - start));
    if (newline == nullptr && _isSkipping) {
        return true;
    }
    return !startsWith(newline == nullptr ? start : static_cast<const char*>(newline) + 1, end,
                       "end_of_record");
}

bool Tracefile::readPieces()
{
    std::vector<char> buffer(LongestRecord);
    size_t kept = 0; // bytes of an unfinished line
    for (;;) {
        size_t got = 0;
        if (!_input.read(buffer.data() + kept, buffer.size() - kept, got)) {
            _line = 0;
            return fail(_input.problem());
        }
        size_t size = kept + got;
        const bool isAtEnd = size < buffer.size();
        _isCut = isAtEnd && endsWithinLine(buffer.data(), buffer.data() + size);
        if (isAtEnd && size != 0 && buffer[size - 1] != '\n') {
            buffer[size++] = '\n'; // the last line
        }
        const char* start = buffer.data();
        const char* end = start + size;
        if (_isSkipping) {
            const void* newline = std::memchr(start, '\n', size);
            _isSkipping = newline == nullptr;
            start = _isSkipping ? end : static_cast<const char*>(newline) + 1;
            _line += _isSkipping ? 0 : 1;
        }
        const void* lastNewline = memrchr(start, '\n', static_cast<size_t>(end - start));
        if (lastNewline != nullptr) {
            const char* behind = static_cast<const char*>(lastNewline) + 1;
            if (!readRecords(start, behind)) {
                return false;
            }
            start = behind;
        } else if (start == buffer.data() && size == buffer.size()) {
            if (!skipLongLine(std::string(start, 32))) {
                return false;
            }
            start = end;
        }
        if (isAtEnd) {
            return true;
        }
        kept = static_cast<size_t>(end - start);
        std::memmove(buffer.data(), start, kept);
    }
}

// Takes "DA:line,count" and the end of the line behind it, the most frequent record, when both
// numbers are short. Moves behind it; false, and nothing is done, for everything else.
bool Tracefile::takePlainLine(const char*& at)
{
    constexpr int MostLineDigits = 9;
    constexpr int MostCountDigits = 18;
    if (!_isInSection || at[0] != 'D' || at[1] != 'A' || at[2] != ':') {
        return false;
    }
    const char* digit = at + 3;
    uint32_t line = 0;
    for (; isDigit(*digit) && digit - at < 3 + MostLineDigits; ++digit) {
        line = line * 10 + static_cast<uint32_t>(*digit - '0');
    }
    if (*digit != ',' || line == 0) {
        return false;
    }
    const char* start = ++digit;
    int64_t count = 0;
    for (; isDigit(*digit) && digit - start < MostCountDigits; ++digit) {
        count = count * 10 + (*digit - '0');
    }
    if (*digit != '\n' || digit == start) {
        return false;
    }
    _table.addLine(line, count);
    ++_line;
    at = digit + 1;
    return true;
}

// Reads the whole lines from `at` to `end`.
bool Tracefile::readRecords(const char* at, const char* end)
{
    while (at != end) {
        if (takePlainLine(at)) {
            continue;
        }
        const char* newline =
            static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
        const char* behind = newline != at && newline[-1] == '\r' ? newline - 1 : newline;
        ++_line;
        if (!readRecord(at, behind)) {
            return false;
        }
        at = newline + 1;
    }
    return true;
}

bool Tracefile::readRecord(const char* at, const char* end)
{
    if (startsWith(at, end, "DA:")) {
        return readLine(at + 3, end);
    }
    if (_isInSection && startsWith(at, end, "FN:")) {
        return readFunction(at + 3, end);
    }
    if (at == end || isUnused(at, end)) {
        return true;
    }
    if (startsWith(at, end, "SF:")) {
        return beginSection(at + 3, end);
    }
    if (startsWith(at, end, "TN:")) {
        _test.assign(at + 3, end);
        return !_isInSection || fail("a test begins within the section of a source file");
    }
    if (startsWith(at, end, "end_of_record")) {
        return endSection();
    }
    return readOther(at, end);
}

// Records of functions, and those of kinds that are not known.
bool Tracefile::readOther(const char* at, const char* end)
{
    const char* colon =
        static_cast<const char*>(std::memchr(at, ':', static_cast<size_t>(end - at)));
    const char* word = at;
    while (word != end && ((*word >= 'A' && *word <= 'Z') || isDigit(*word))) {
        ++word;
    }
    if (colon == nullptr || word != colon || word == at) {
        const size_t shown = std::min<size_t>(static_cast<size_t>(end - at), 40);
        return fail("this is no record of a tracefile: " + std::string(at, shown));
    }
    const bool isFunction = startsWith(at, end, "FN:");
    const bool isPlace = startsWith(at, end, "FNL:");
    if (!isFunction && !isPlace && !startsWith(at, end, "FNA:")) {
        ++_losses._unknownRecords;
        return true;
    }
    if (!_isInSection) {
        return fail("a function outside the section of a source file");
    }
    return isFunction ? readFunction(colon + 1, end)
           : isPlace  ? readPlace(colon + 1, end)
                      : readAlias(colon + 1, end);
}

bool Tracefile::isUnused(const char* at, const char* end)
{
    return std::any_of(std::begin(unusedKinds), std::end(unusedKinds),
                       [at, end](const char* kind) { return startsWith(at, end, kind); });
}

bool Tracefile::beginSection(const char* at, const char* end)
{
    if (_isInSection) {
        return fail("a section begins before the one before it has ended");
    }
    _text.assign(at, end);
    if (_text.empty() || _text.find('\0') != std::string::npos) {
        return fail("the source file has no name");
    }
    _table.beginSection(_table.file(_roots->find(_text)), run());
    if (_table.runs() > MostTests) {
        return fail("there are more than " + std::to_string(MostTests) +
                    " tests: leave their names out (TN:), and all are one log");
    }
    _places.clear();
    _isInSection = _hasSections = true;
    return true;
}

bool Tracefile::endSection()
{
    if (!_isInSection) {
        return fail("the end of a section that has not begun");
    }
    _table.endSection();
    _isInSection = false;
    return true;
}

bool Tracefile::readLine(const char* at, const char* end)
{
    uint32_t line = 0;
    int64_t count = 0;
    if (!takeNumber(at, end, line) || !takeComma(at, end) || !takeCount(at, end, count) ||
        (at != end && *at != ',')) {
        return fail("the record of a line wants two numbers: DA:line,count");
    }
    if (!_isInSection) {
        return fail("a line outside the section of a source file");
    }
    if (line == 0) {
        ++_losses._linesWithoutNumber;
        return true;
    }
    _table.addLine(line, count);
    return true;
}

bool Tracefile::readFunction(const char* at, const char* end)
{
    uint32_t first = 0;
    uint32_t last = 0;
    if (!takeNumber(at, end, first) || !takeComma(at, end)) {
        return fail("the record of a function wants a line and a name: FN:line,name");
    }
    const char* name = at;
    if (!takeNumber(at, end, last) || !takeComma(at, end)) {
        at = name;
        last = 0;
    }
    addFunction({first, last}, at, end);
    return true;
}

bool Tracefile::readPlace(const char* at, const char* end)
{
    uint32_t index = 0;
    Place place = {0, 0};
    const bool isGood = takeNumber(at, end, index) && takeComma(at, end) &&
                        takeNumber(at, end, place._first) &&
                        (at == end || (takeComma(at, end) && takeNumber(at, end, place._last)));
    if (!isGood || at != end) {
        return fail("the record of a function's place wants two or three numbers: "
                    "FNL:index,line[,last line]");
    }
    _places[index] = place;
    return true;
}

bool Tracefile::readAlias(const char* at, const char* end)
{
    uint32_t index = 0;
    int64_t count = 0;
    if (!takeNumber(at, end, index) || !takeComma(at, end) || !takeCount(at, end, count) ||
        !takeComma(at, end)) {
        return fail("the record of a function wants two numbers and a name: FNA:index,count,name");
    }
    const auto place = _places.find(index);
    if (place == _places.end()) {
        return fail("no FNL record of this section has the index " + std::to_string(index));
    }
    addFunction(place->second, at, end);
    return true;
}

void Tracefile::addFunction(const Place& place, const char* name, const char* end)
{
    name = behindFile(name, end);
    if (place._first == 0 || name == end) {
        ++_losses._linesWithoutNumber;
        return;
    }
    _table.addFunction(name, static_cast<size_t>(end - name), place._first,
                       place._last < place._first ? 0 : place._last);
}
