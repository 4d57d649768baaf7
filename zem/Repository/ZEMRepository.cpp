// SPDX-License-Identifier: MIT
#include "zem/Repository/ZEMRepository.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipMessages.h"
#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"
#include "zem/Rows/NameFilter.h"
#include "zem/Rows/RowMaker.h"
#include "zem/Rows/clampToInt.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <sys/stat.h>

// Adds the waiting hits to the blocks of a file right before they are counted, so that they are
// fetched from memory once.
class ZEMRepository::Rows : public RowMaker
{
public:
    explicit Rows(const ZEMRepository& repository)
        : RowMaker(repository._srcfiles, {repository._fileNames, repository._functionNames,
                                          repository._classNames, repository._directoryNames}),
          _waiting(repository._sources)
    {}
    // Nothing is left to add unless memory ran out; frees the sums.
    ~Rows() override { _waiting.settle(); }

protected:
    void prepare(long number) override { _waiting.settle(number); }

private:
    SourceIndex& _waiting;
};

namespace {

// Memory that is kept for the records of one log after the other: taking fresh pages for each log
// would cost more than reading it. Larger logs take the rest anew.
constexpr size_t MostLogMemory = 64 * 1024 * 1024;

// What the records of a log take, roughly: its bytes, and an object for each.
size_t recordBytes(const char* path)
{
    struct stat status = {};
    if (path == nullptr || stat(path, &status) != 0) {
        return 0;
    }
    const auto size = static_cast<uint64_t>(status.st_size);
    return std::min<uint64_t>(size + size / 8, MostLogMemory);
}

// Whether two maps say the same of a source file, so that the counts of one fit the other.
bool isSameFunction(const ZEMFuncRecord& a, const ZEMFuncRecord& b)
{
    return std::strcmp(a._funcname, b._funcname) == 0 && a._startLine == b._startLine &&
           a._endLine == b._endLine && a._nBlocks == b._nBlocks &&
           std::equal(a._blockMap, a._blockMap + a._nBlocks, b._blockMap,
                      [](const ZEMBlkRecord& one, const ZEMBlkRecord& other) {
                          return one._startLine == other._startLine &&
                                 one._stopLine == other._stopLine;
                      });
}

// Whether a file was not written to from one time to the other.
bool isSameState(const struct stat& a, const struct stat& b)
{
    const auto isSameTime = [](const timespec& one, const timespec& other) {
        return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
    };
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           isSameTime(a.st_mtim, b.st_mtim) && isSameTime(a.st_ctim, b.st_ctim);
}

bool isSameCode(const ZEMFileRecord& a, const ZEMFileRecord& b)
{
    ListIterator<ZEMFuncRecord*> others(b._funcList);
    ListIterator<ZEMFuncRecord*> functions(a._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        const ZEMFuncRecord* other = others.next();
        if (other == nullptr || !isSameFunction(*function, *other)) {
            return false;
        }
    }
    return others.next() == nullptr;
}

} // namespace

ZEMRepository::ZEMRepository()
    : _totUncov(0), _totBlocks(0), _hasAllFilters(true), _logMemorySize(0), _failedMap{}
{}

ZEMRepository::~ZEMRepository()
{
    ListIterator<ZEMFileRecord*> files(_srcfiles);
    while (const ZEMFileRecord* file = files.next()) {
        delete file;
    }
    ListIterator<char*> paths(_mapfiles);
    while (const char* path = paths.next()) {
        delete[] path;
    }
}

int ZEMRepository::processFile(const char* path)
{
    return processLogFile(path);
}

int ZEMRepository::processLogFile(const char* path)
{
    _failedMap[0] = '\0';
    return loadLog(path);
}

int ZEMRepository::processMapFile(const char* path)
{
    _failedMap[0] = '\0';
    return loadMap(path);
}

// Keeps why a file could not be loaded. Returns `code`.
int ZEMRepository::failed(int code, const qipVLFailure& failure)
{
    _failure = failure;
    return code;
}

int ZEMRepository::withoutMemory()
{
    qipVLFailure failure;
    failure._cause = qipVLRecFile::OutOfMemory;
    return failed(qipVLRecFile::OutOfMemory, failure);
}

int ZEMRepository::loadLog(const char* path)
{
    const size_t wanted = recordBytes(path);
    if (wanted > _logMemorySize) {
        _logMemory.reset();
        _logMemory.reset(new (std::nothrow) char[wanted]);
        _logMemorySize = _logMemory ? wanted : 0;
    }
    ZEMLogFile log(_logMemory.get(), _logMemorySize);
    int result = log.open(path, qipVLRecFile::READ);
    if (result == qipVLRecFile::NoError) {
        result = log.load();
    }
    if (result < 0) {
        return failed(result, log.failure());
    }
    qipMessages messages;
    ++_nLogs;
    ListIterator<ZEMLogFileRecord*> records(log.toc());
    while (const ZEMLogFileRecord* record = records.next()) {
        const long number = _mapIndex.find(record->_mapfile);
        if (number >= 0) {
            lookAgain(number);
        } else {
            messages.flush(); // before those of the map
            result = loadMap(record->_mapfile);
            if (result < 0) {
                std::snprintf(_failedMap, sizeof _failedMap, "%s", record->_mapfile);
                return result;
            }
        }
        const long source = _sources.find(record->_filename);
        if (source >= 0) {
            merge(source, *record, messages);
        } else {
            ++_nMisfits;
        }
    }
    _nMisfits += log.unknownRecords();
    return qipVLRecFile::NoError;
}

int ZEMRepository::loadMap(const char* path)
{
    ZEMMapFile map;
    int result = qipVLRecFile::BadParameter;
    if (path == nullptr || path[0] == '\0') {
        qipVLFailure failure;
        failure._cause = result;
        failure._reason = "a file without a name";
        return failed(result, failure);
    }
    struct stat state = {};
    (void)stat(path, &state); // else opening it fails, too
    result = map.open(path, qipVLRecFile::READ);
    if (result == qipVLRecFile::NoError) {
        result = map.load();
    }
    if (result < 0) {
        ListIterator<ZEMFileRecord*> files(map.toc());
        while (const ZEMFileRecord* file = files.next()) {
            delete file;
        }
        return failed(result, map.failure());
    }
    const long before = _sources.size();
    result = take(map.toc());
    if (result == qipVLRecFile::NoError) {
        result = enterMap(path, state);
        if (result != qipVLRecFile::NoError) {
            giveBack(before);
        }
    }
    _nMisfits += map.unknownRecords();
    return result;
}

// A map is loaded once. When it was written again since, with other code, this log's counts are of
// that. Looks once for each log, whatever the order of its records.
void ZEMRepository::lookAgain(long number)
{
    MapState& known = _mapStates[static_cast<size_t>(number)];
    if (known._log == _nLogs) {
        return;
    }
    known._log = _nLogs;
    const char* const path = _mapIndex.path(number);
    struct stat now = {};
    if (stat(path, &now) != 0 || isSameState(known._file, now)) {
        return; // one that is gone cannot be asked
    }
    ZEMMapFile map;
    bool isSame = map.open(path, qipVLRecFile::READ) == qipVLRecFile::NoError && map.load() >= 0;
    ListIterator<ZEMFileRecord*> files(map.toc());
    while (const ZEMFileRecord* file = files.next()) {
        const std::unique_ptr<const ZEMFileRecord> owned(file);
        const long source = isSame ? _sources.find(file->_filename) : -1;
        isSame = source >= 0 && isSameCode(_sources.file(source), *file);
    }
    if (isSame) {
        known._file = now;
    } else {
        ++_nMisfits;
    }
}

// Notes that a map file is loaded, in list and index or in neither.
int ZEMRepository::enterMap(const char* path, const struct stat& state)
{
    std::unique_ptr<char[]> copy(new (std::nothrow) char[std::strlen(path) + 1]);
    std::unique_ptr<dLinkT<char*>> node(new (std::nothrow) dLinkT<char*>(copy.get()));
    try {
        _mapStates.resize(static_cast<size_t>(_mapIndex.size()) + 1);
    } catch (const std::bad_alloc&) {
        return withoutMemory();
    }
    if (!copy || !node || _mapIndex.add(path) == PathIndex::NoMemory) {
        return withoutMemory();
    }
    _mapStates[static_cast<size_t>(_mapIndex.find(path))] = {state, _nLogs};
    std::strcpy(copy.release(), path);
    _mapfiles.append(node.release());
    return qipVLRecFile::NoError;
}

// Takes over the records of a map file; those of source files that are known already are deleted.
// Without memory for one of them none is taken: a part of them would pass for the whole map.
int ZEMRepository::take(List<ZEMFileRecord*>& files)
{
    const long before = _sources.size();
    bool tookAll = true;
    ListIterator<ZEMFileRecord*> it(files);
    while (ZEMFileRecord* file = it.next()) {
        if (tookAll) {
            tookAll = take(file);
        } else {
            delete file;
        }
    }
    if (!tookAll) {
        giveBack(before);
        return withoutMemory();
    }
    return qipVLRecFile::NoError;
}

// Forgets the source files from the number `size` on.
void ZEMRepository::giveBack(long size)
{
    _sources.cutTo(size);
    while (_srcfiles.length() > size) {
        auto* node = static_cast<dLinkT<ZEMFileRecord*>*>(_srcfiles.dList::last());
        _srcfiles.dList::remove(node);
        delete node->_datum;
        delete node;
    }
}

// The number of a file in the index is its place in the list. So it comes into both or neither.
bool ZEMRepository::take(ZEMFileRecord* file)
{
    std::unique_ptr<ZEMFileRecord> owned(file);
    std::unique_ptr<dLinkT<ZEMFileRecord*>> node(new (std::nothrow) dLinkT<ZEMFileRecord*>(file));
    if (!node) {
        return false;
    }
    const PathIndex::AddResult added = _sources.add(*file);
    if (added == PathIndex::Added) {
        _srcfiles.append(node.release());
        (void)owned.release(); // the list has it
    } else if (added == PathIndex::Known &&
               !isSameCode(_sources.file(_sources.find(file->_filename)), *file)) {
        ++_nMisfits;
    }
    return added != PathIndex::NoMemory;
}

void ZEMRepository::merge(long source, const ZEMLogFileRecord& record, std::ostream& messages)
{
    if (_sources.statedBlocks(source) != record._nBlocks) {
        ++_nMisfits;
        // One piece after the other, without closing brackets.
        messages << " *** ZEMRepository::processLogFile() : block count mismatch!\n"
                 << "     Mapfile(" << qipVisibleText(_sources.path(source))
                 << _sources.statedBlocks(source) << ", Logfile("
                 << qipVisibleText(record._filename) << record._nBlocks << '\n';
    }
    // Counts that the log does not have are 0.
    const size_t total = _sources.placedBlocks(source);
    const size_t ran = _sources.addHits(source, record._hits, record._nBlocks);
    _totBlocks += static_cast<long>(total);
    _totUncov += static_cast<long>(total - ran);
}

const List<ZEMFileRecord*>& ZEMRepository::srcfiles() const
{
    _sources.settle();
    return _srcfiles;
}

void ZEMRepository::coverageSummary(int& uncovered, int& total) const
{
    uncovered = clampToInt(_totUncov);
    total = clampToInt(_totBlocks);
}

void ZEMRepository::coverageSummary(long& uncovered, long& total) const
{
    uncovered = _totUncov;
    total = _totBlocks;
}

void ZEMRepository::addFilter(int kind, const char* name)
{
    if (name == nullptr) {
        return;
    }
    List<char*>* filter = nullptr;
    switch (kind) {
    case 'F':
        filter = &_fileNames;
        break;
    case 'f':
        filter = &_functionNames;
        break;
    case 'o':
        filter = &_classNames;
        break;
    case 'd':
        filter = &_directoryNames;
        break;
    default:
        return;
    }
    const int before = filter->length();
    if (filter->append(const_cast<char*>(name)) == before) {
        _hasAllFilters = false;
    }
}

int ZEMRepository::isSuppressed(List<char*>& filter, const char* name) const
{
    return NameFilter(filter).hides(name) ? 1 : 0;
}

// Rows that a lost filter would have hidden would lie, too.
ZEMRptTable ZEMRepository::withoutFilters() const
{
    ZEMRptTable table;
    table.giveUp();
    return table;
}

ZEMRptTable ZEMRepository::viewByFunction(int manglingLevel) const
{
    return _hasAllFilters ? Rows(*this).byFunction(manglingLevel) : withoutFilters();
}

ZEMRptTable ZEMRepository::viewByFile() const
{
    return _hasAllFilters ? Rows(*this).byFile() : withoutFilters();
}

ZEMRptTable ZEMRepository::viewByDirectory() const
{
    return _hasAllFilters ? Rows(*this).byDirectory() : withoutFilters();
}

ZEMRptTable ZEMRepository::viewByClass() const
{
    return _hasAllFilters ? Rows(*this).byClass() : withoutFilters();
}

ZEMRptTable ZEMRepository::view(RptType type, int manglingLevel) const
{
    switch (type) {
    case RptByDirectory:
        return viewByDirectory();
    case RptByFunction:
        return viewByFunction(manglingLevel);
    case RptByClass:
        return viewByClass();
    default:
        return viewByFile();
    }
}
