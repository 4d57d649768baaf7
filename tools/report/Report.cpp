// SPDX-License-Identifier: MIT
#include "tools/report/Report.h"

#include "qip/Support/qipVLFailure.h"
#include "qip/Support/qipVisibleText.h"
#include "tools/report/FilterNames.h"
#include "tools/report/loadAdvice.h"
#include "zem/Rows/RptText.h"

#include <cstdlib>
#include <ctime>
#include <iostream>
#include <new>

namespace {

RptType typeOf(char kind)
{
    switch (kind) {
    case 'd':
        return RptByDirectory;
    case 'f':
        return RptByFunction;
    case 'o':
        return RptByClass;
    default:
        return RptByFile;
    }
}

// When the report is made. A build that wants the same files each time says when that is.
int64_t timeOfReport()
{
    const char* wanted = std::getenv("SOURCE_DATE_EPOCH");
    if (wanted != nullptr && wanted[0] >= '0' && wanted[0] <= '9') {
        char* end = nullptr;
        const long long seconds = std::strtoll(wanted, &end, 10);
        constexpr long long Largest = 1LL << 40;
        if (*end == '\0' && seconds <= Largest) {
            return seconds;
        }
    }
    return std::time(nullptr);
}

} // namespace

Report::Report(const char* version, void (*usage)()) : _usage(usage)
{
    _contents._version = version;
}

Report::~Report()
{
    _table.deleteRows();
}

void Report::manglingLevel(int level)
{
    _level = level;
    _contents._isLevelChosen = true;
}

bool Report::otherManglingLetter(char letter)
{
    if (letter == '0') {
        manglingLevel(StoredNames);
    }
    return letter == '0';
}

// They count once the maps are known.
void Report::addFilter(int kind, const char* name)
{
    try {
        _contents._filters.push_back({static_cast<char>(kind), name});
    } catch (const std::bad_alloc&) {
        _isWhole = false;
    }
}

void Report::sortBy(const char* keys)
{
    _info.sortKeys(keys);
    const bool isSet = keys == nullptr || keys[0] == '\0' || _info.sortKeys() != nullptr;
    _isWhole = _isWhole && isSet;
}

// Shows what there is, as the viewer does, but says so.
bool Report::complainOfMisfits(const char* log, long nMisfits)
{
    std::cerr << "zem-report: " << qipVisibleText(log) << ": " << nMisfits
              << " records of this log and its maps do not fit: counts are missing, or stand at "
                 "other code; give logs of one build alone, or import the build and its run again"
              << std::endl;
    return false;
}

bool Report::merge(const char* log)
{
    const long before = _repository.misfits();
    if (_repository.processFile(log) < 0) {
        const char* map = _repository.failedMap();
        const qipVLFailure& failure = _repository.failure();
        RptText::beginLoadError(std::cerr, log)
            << (map[0] == '\0' ? "" : "map file ") << qipVisibleText(map)
            << (map[0] == '\0' ? "" : ": ") << failure << "; ";
        writeLoadAdvice(std::cerr, log, map, failure);
        std::cerr << std::endl;
        return false;
    }
    try {
        _contents._logs.push_back(log);
    } catch (const std::bad_alloc&) {
        _isWhole = false;
    }
    const long nMisfits = _repository.misfits() - before;
    return nMisfits == 0 || complainOfMisfits(log, nMisfits);
}

bool Report::findNames()
{
    bool isAllThere = true;
    try {
        for (const char kind : {'F', 'f', 'o', 'd'}) {
            isAllThere = findNames(kind) && isAllThere;
        }
    } catch (const std::bad_alloc&) {
        _isWhole = false;
    }
    return isAllThere;
}

bool Report::findNames(char kind)
{
    std::vector<const char*> names;
    for (const ReportFilter& filter : _contents._filters) {
        if (filter._kind == kind) {
            names.push_back(filter._name);
            _isWhole = keep(kind, filter._name) && _isWhole;
        }
    }
    const List<ZEMFileRecord*>& files = _repository.srcfiles();
    if (names.empty() || files.length() == 0) {
        return true;
    }
    const FilterNames known(files);
    bool isAllThere = true;
    for (const char* name : known.missing(kind, names)) {
        const std::vector<const char*> stored =
            kind == 'f' ? known.storedNames(name) : std::vector<const char*>();
        for (const char* each : stored) {
            _isWhole = keep(kind, each) && _isWhole;
        }
        if (stored.empty()) {
            complainOfName(kind, name);
            isAllThere = false;
        }
    }
    return isAllThere;
}

void Report::complainOfName(char kind, const char* name) const
{
    std::cerr << "zem-report: -f" << kind << ' ' << qipVisibleText(name) << ": no "
              << RptText::typeWord(typeOf(kind)) << " has this name";
    const std::vector<std::string> nearest =
        FilterNames(_repository.srcfiles()).nearest(kind, name);
    const char* before = "; near it: ";
    for (const std::string& each : nearest) {
        std::cerr << before << qipVisibleText(each.c_str());
        before = ", ";
    }
    if (nearest.empty()) {
        std::cerr << "; zem-report -d" << kind << " lists them";
    }
    std::cerr << std::endl;
}

// Puts a filter into the repository and into the list for files of lines; false without memory.
bool Report::keep(char kind, const char* name)
{
    _repository.addFilter(kind, name);
    List<char*>& names = kind == 'F'   ? _fileNames
                         : kind == 'f' ? _functionNames
                         : kind == 'o' ? _classNames
                                       : _directoryNames;
    const int before = names.length();
    return names.append(const_cast<char*>(name)) != before;
}

bool Report::prepare()
{
    bool isWhole = false;
    try {
        isWhole = _isWhole && makeContents();
    } catch (const std::bad_alloc&) {
        isWhole = false;
    }
    if (!isWhole) {
        complainOfMemory();
    }
    return isWhole;
}

bool Report::makeContents()
{
    _table = _repository.view(_info._type, _level);
    if (!_table.isWhole()) {
        return false;
    }
    _table.sort(_info.sortKeys());
    _shown = std::make_unique<ShownCode>(
        _info._type, RowMaker::Filters{_fileNames, _functionNames, _classNames, _directoryNames});
    _contents._time = timeOfReport();
    _contents._type = _info._type;
    _contents._level = _level;
    _contents._sortKeys = _info.sortKeys() == nullptr ? "" : _info.sortKeys();
    _contents._table = &_table;
    _contents._files = &_repository.srcfiles();
    _contents._shown = _shown.get();
    _contents._merged = _shown->totals(*_contents._files);
    _repository.coverageSummary(_contents._recordUntested, _contents._recordBlocks);
    return true;
}

void Report::complainOfMemory() const
{
    std::cerr << " *** zem-report: out of memory for the report by "
              << RptText::typeWord(_info._type)
              << "; give the program more memory, fewer logs or a filter" << std::endl;
}
