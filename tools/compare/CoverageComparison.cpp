// SPDX-License-Identifier: MIT
#include "tools/compare/CoverageComparison.h"

#include "qip/Support/ListIterator.h"
#include "tools/compare/DrawnFile.h"
#include "tools/compare/PlainName.h"
#include "zem/Demangle/demangle.h"
#include "zem/Repository/ZEMRepository.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <ostream>

namespace {

constexpr uint32_t LastBlockLine = 65535;
constexpr size_t LongestSimpleName = 60; // longer ones are shown with "<...>"
constexpr int NLevels = 3;
constexpr int FirstMode = -1; // of demangle_name
const Findings::Class nameClasses[NLevels] = {Findings::NameSimple, Findings::NameExtended,
                                              Findings::NameFull};

// `text` as it shows at `level`.
std::string spelling(const std::string& text, int level)
{
    return level == 1 ? withoutQualifiers(text) : comparedSpelling(text);
}

std::string shownName(const char* stored, int level)
{
    char* readable = demangle_name(stored, level + FirstMode);
    const std::string shown = readable == nullptr ? stored : readable;
    std::free(readable);
    return spelling(shown, level);
}

std::string expectedName(const PlainName& name, int level)
{
    return spelling(level == 0 ? name._name : name._name + name._params, level);
}

bool isNameGood(const PlainName& name, int level, const std::string& shown, bool isOfSeveral)
{
    if (level > 0 && !canShowTypes(name._shortName)) {
        return isNameGood(name, 0, shown, isOfSeveral);
    }
    const std::string expected = expectedName(name, level);
    if (isShown(expected, shown, Placeholders::None)) {
        return true;
    }
    const std::string simple = spelling(name._shortName, level);
    const std::string params = level == 0 ? "" : name._params;
    const std::string whole = spelling(name._wholeName + params, level);
    const Placeholders inWhole = isOfSeveral ? Placeholders::OfInstances : Placeholders::None;
    if (level == 0 ? isShownCut(simple, shown) : isShownShortened(simple, whole, shown, inWhole)) {
        return true;
    }
    // "__" inside of brackets would end the name for the viewer, so what they hold is left out.
    const bool isLong =
        name._name.size() > LongestSimpleName || simple.find("__") != std::string::npos;
    if (!isOfSeveral && !isLong) {
        return false;
    }
    const Placeholders placeholders =
        isOfSeveral ? Placeholders::OfInstances : Placeholders::OfLongName;
    return isShown(expected, shown, placeholders) ||
           isShown(spelling(name._shortName + params, level), shown, placeholders);
}

bool anyBlockRan(const ZEMFuncRecord& function)
{
    return std::any_of(function._blockMap, function._blockMap + function._nBlocks,
                       [](const ZEMBlkRecord& block) { return block._nHits > 0; });
}

bool anyLineRan(const FileFacts& facts, uint32_t first, uint32_t last)
{
    return std::any_of(facts._lines.begin(), facts._lines.end(), [=](const auto& line) {
        return line.first >= first && line.first <= last && line.second.anyRan();
    });
}

// Whether a function with lines of `row` was entered.
bool anotherStarted(const FileFacts& facts, const ZEMFuncRecord& row)
{
    return std::any_of(facts._functions.begin(), facts._functions.end(), [&row](const auto& other) {
        return other.second._entries > 0 && other.first._startLine <= row._endLine &&
               row._startLine <= other.first._endLine &&
               (other.first._startLine == row._startLine || other.first._endLine == row._endLine);
    });
}

std::string placeText(const std::string& path, uint32_t line)
{
    return path + ":" + std::to_string(line) + ": ";
}

} // namespace

// A function of the map, or several that have one place and one name, and those of gcov that it
// stands for.
struct CoverageComparison::Row
{
    const ZEMFuncRecord* _record = nullptr; // the first of them
    std::string _shown[NLevels];
    bool _ran = false;
    bool _isTold = false; // gcov has it
    int64_t _entries = 0;
    std::vector<const std::string*> _readable;
};

bool CoverageComparison::Agreement::add(bool agrees)
{
    ++_all;
    _agree += agrees ? 1 : 0;
    return agrees;
}

CoverageComparison::CoverageComparison(const BuildFacts& facts, size_t nExamples)
    : _facts(facts), _findings(nExamples)
{
    for (const std::string& failure : facts._failures) {
        _findings.add(Findings::UnitFailed, failure);
    }
}

// Whether some function anywhere, also in files that the import leaves out, has this simple name.
bool CoverageComparison::isFunction(const std::string& shown)
{
    if (_names.empty()) {
        for (const auto& file : _facts._files) {
            for (const auto& function : file.second._functions) {
                _names.push_back(
                    comparedSpelling(PlainName::of(function.second._readable)._shortName));
            }
        }
        for (const std::string& readable : _facts._leftOut) {
            _names.push_back(comparedSpelling(PlainName::of(readable)._shortName));
        }
    }
    return std::any_of(_names.begin(), _names.end(), [&shown](const std::string& name) {
        return isShown(name, shown, Placeholders::OfInstances) || isShownCut(name, shown);
    });
}

void CoverageComparison::run(const ZEMRepository& repository)
{
    std::map<std::string, const ZEMFileRecord*> records;
    ListIterator<ZEMFileRecord*> files(repository.srcfiles());
    while (const ZEMFileRecord* record = files.next()) {
        records[record->_filename] = record;
    }
    for (const auto& file : _facts._files) {
        const auto found = records.find(file.first);
        if (found != records.end()) {
            compareFile(file.first, file.second, *found->second);
            continue;
        }
        for (const auto& line : file.second._lines) {
            if (line.second._isListed) {
                _lines.add(false);
                _findings.add(Findings::FileMissing, placeText(file.first, line.first));
            }
        }
    }
}

void CoverageComparison::compareFile(const std::string& path, const FileFacts& facts,
                                     const ZEMFileRecord& record)
{
    compareLines(path, facts, record);
    compareFunctions(path, facts, record);
}

void CoverageComparison::compareLines(const std::string& path, const FileFacts& facts,
                                      const ZEMFileRecord& record)
{
    DrawnFile drawn;
    if (!drawn.open(record)) {
        _findings.add(Findings::SourceMissing, path);
        return;
    }
    std::vector<uint32_t> lines;
    for (const auto& line : facts._lines) {
        lines.push_back(line.first);
    }
    std::sort(lines.begin(), lines.end()); // so that the examples are the first ones
    for (const uint32_t line : lines) {
        const LineFacts& known = facts._lines.at(line);
        if (known._isListed) {
            compareLine(path, line, known, drawn);
        } else {
            compareUnlisted(path, line, known, drawn);
        }
    }
    for (uint32_t line = 1; line <= drawn.nLines(); ++line) {
        if (facts._lines.count(line) == 0 && (drawn.isRed(line) || drawn.hasMark(line))) {
            addLine(drawn.hasMark(line) ? Findings::LineStray : Findings::TextRed, path, line,
                    LineFacts(), drawn);
        }
    }
}

void CoverageComparison::addLine(Findings::Class which, const std::string& path, uint32_t line,
                                 const LineFacts& facts, DrawnFile& drawn)
{
    std::string example;
    if (_findings.wantsExample(which)) {
        example = placeText(path, line) + "gcov " +
                  (facts._isListed ? std::to_string(facts._count) : "-") + ", drawn " +
                  drawn.marks(line) + (drawn.isRed(line) ? " red" : "") + ": " + drawn.text(line);
    }
    _findings.add(which, example);
}

void CoverageComparison::compareLine(const std::string& path, uint32_t line, const LineFacts& facts,
                                     DrawnFile& drawn)
{
    const bool isRed = drawn.isRed(line);
    const bool isCovered = isRed || drawn.hasMark(line) || drawn.isInsideRun(line);
    const bool ran = facts._count > 0;
    _linesRun += ran ? 1 : 0;
    if (line > drawn.nLines()) {
        _lines.add(false);
        addLine(Findings::LinePastEnd, path, line, facts, drawn);
        return;
    }
    if (!_lines.add(isCovered && ran != isRed)) {
        Findings::Class which = Findings::LineRanRed;
        if (!isCovered) {
            which = line > LastBlockLine ? Findings::LinePast65535 : Findings::LineMissing;
        } else if (!isRed) {
            which = facts.anyRan() ? Findings::LinePassed : Findings::LineDeadBlack;
        }
        addLine(which, path, line, facts, drawn);
    } else if (isRed && facts._blockRan) {
        addLine(Findings::LinePassedRed, path, line, facts, drawn);
    }
}

// A line that blocks touch and gcov does not list.
void CoverageComparison::compareUnlisted(const std::string& path, uint32_t line,
                                         const LineFacts& facts, DrawnFile& drawn)
{
    if (!drawn.isRed(line) && !drawn.hasMark(line)) {
        return;
    }
    if (drawn.isRed(line) == facts.anyRan()) {
        addLine(facts.anyRan() ? Findings::LineRanRed : Findings::LineDeadBlack, path, line, facts,
                drawn);
        return;
    }
    addLine(facts._isTouched ? Findings::LineUnlisted : Findings::LineMade, path, line, facts,
            drawn);
}

void CoverageComparison::compareFunctions(const std::string& path, const FileFacts& facts,
                                          const ZEMFileRecord& record)
{
    std::map<std::pair<uint32_t, uint32_t>, std::vector<Row>> rows;
    ListIterator<ZEMFuncRecord*> functions(record._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        std::vector<Row>& place = rows[{function->_startLine, function->_endLine}];
        const auto same = std::find_if(place.begin(), place.end(), [function](const Row& row) {
            return std::strcmp(row._record->_funcname, function->_funcname) == 0;
        });
        if (same != place.end()) {
            same->_ran |= anyBlockRan(*function);
            continue;
        }
        Row row;
        row._record = function;
        row._ran = anyBlockRan(*function);
        for (int level = 0; level < NLevels; ++level) {
            row._shown[level] = shownName(function->_funcname, level);
        }
        place.push_back(row);
    }
    for (const auto& function : facts._functions) {
        const auto found = rows.find({function.first._startLine, function.first._endLine});
        const std::string& readable = function.second._readable;
        if (!_functions.add(found != rows.end())) {
            _findings.add(Findings::FunctionMissing,
                          placeText(path, function.first._startLine) + readable);
            continue;
        }
        // Of several rows at one place the one with the name, best with the parameters, too.
        Row* row = nullptr;
        const PlainName plain = PlainName::of(readable);
        for (int level = NLevels - 1; level >= 0 && row == nullptr; --level) {
            for (Row& candidate : found->second) {
                if (row == nullptr && isNameGood(plain, level, candidate._shown[level], true)) {
                    row = &candidate;
                }
            }
        }
        row = row == nullptr ? &found->second.front() : row;
        row->_isTold = true;
        row->_entries += function.second._entries;
        row->_readable.push_back(&readable);
    }
    for (const auto& place : rows) {
        for (const Row& row : place.second) {
            compareRow(path, facts, row);
        }
    }
}

void CoverageComparison::compareRow(const std::string& path, const FileFacts& facts, const Row& row)
{
    const ZEMFuncRecord& function = *row._record;
    const std::string example = placeText(path, function._startLine) + function._funcname;
    if (!row._isTold) {
        _findings.add(isFunction(row._shown[0]) ? Findings::FunctionPart : Findings::FunctionExtra,
                      example);
        return;
    }
    if (row._entries > 0 && !row._ran) {
        _findings.add(Findings::FunctionDead, example);
    } else if (row._entries == 0 && row._ran) {
        Findings::Class which = Findings::FunctionRan;
        if (anotherStarted(facts, function)) {
            which = Findings::FunctionShared;
        } else if (anyLineRan(facts, function._startLine, function._endLine)) {
            which = Findings::FunctionInlined;
        }
        _findings.add(which, example);
    }
    compareNames(path, row);
}

void CoverageComparison::compareNames(const std::string& path, const Row& row)
{
    std::vector<PlainName> names;
    for (const std::string* readable : row._readable) {
        names.push_back(PlainName::of(*readable));
    }
    for (int level = 0; level < NLevels; ++level) {
        for (const PlainName& name : names) {
            if (!_rowNames[level].add(
                    isNameGood(name, level, row._shown[level], names.size() > 1))) {
                _findings.add(nameClasses[level], placeText(path, row._record->_startLine) +
                                                      expectedName(name, level) + " is shown as " +
                                                      row._shown[level]);
            }
        }
    }
}

void CoverageComparison::writeTotals(std::ostream& out) const
{
    const struct
    {
        const char* what;
        const Agreement& agreement;
    } totals[] = {
        {"functions", _functions},       {"lines", _lines},
        {"names, simple", _rowNames[0]}, {"names, extended", _rowNames[1]},
        {"names, full", _rowNames[2]},
    };
    for (const auto& total : totals) {
        const double share = total.agreement._all == 0
                                 ? 100
                                 : 100.0 * static_cast<double>(total.agreement._agree) /
                                       static_cast<double>(total.agreement._all);
        out << std::left << std::setw(16) << total.what << std::right << total.agreement._agree
            << " of " << total.agreement._all << " agree (" << std::fixed << std::setprecision(2)
            << share << "%)\n";
    }
    out << "lines that ran  " << _linesRun << ", of them red "
        << _findings.count(Findings::LineRanRed) << '\n';
}
