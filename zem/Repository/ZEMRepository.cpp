// SPDX-License-Identifier: MIT
#include "zem/Repository/ZEMRepository.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"
#include "zem/Repository/SourceIndex.h"
#include "zem/Rows/NameFilter.h"
#include "zem/Rows/RowMaker.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iostream>
#include <new>
#include <sys/stat.h>

// Indexes beside the lists: each look-up would else walk a list, once for every record.
struct ZEMRepository::Index
{
    SourceIndex sources;
    PathIndex mapfiles;
};

// Adds the waiting hits to the blocks of a file right before they are counted, so that they are
// fetched from memory once.
class ZEMRepository::Rows : public RowMaker
{
public:
    explicit Rows(const ZEMRepository& repository)
        : RowMaker(repository._srcfiles, {repository._fileNames, repository._functionNames,
                                          repository._classNames, repository._directoryNames}),
          _waiting(repository._index->sources)
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

int clampToInt(int64_t n)
{
    return static_cast<int>(std::max<int64_t>(std::min<int64_t>(n, INT_MAX), INT_MIN));
}

} // namespace

ZEMRepository::ZEMRepository() : _totUncov(0), _totBlocks(0), _index(new Index), _logMemorySize(0)
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
    const size_t wanted = recordBytes(path);
    if (wanted > _logMemorySize) {
        _logMemory.reset();
        _logMemory.reset(new (std::nothrow) char[wanted]);
        _logMemorySize = _logMemory ? wanted : 0;
    }
    ZEMLogFile log(_logMemory.get(), _logMemorySize);
    int result = log.open(path, qipVLRecFile::READ);
    if (result < 0) {
        return result;
    }
    result = log.load();
    if (result < 0) {
        return result;
    }
    ListIterator<ZEMLogFileRecord*> records(log.toc());
    while (const ZEMLogFileRecord* record = records.next()) {
        if (_index->mapfiles.find(record->_mapfile) < 0) {
            result = processMapFile(record->_mapfile);
            if (result < 0) {
                return result;
            }
        }
        const long source = _index->sources.find(record->_filename);
        if (source >= 0) {
            merge(source, *record);
        }
    }
    return qipVLRecFile::NoError;
}

int ZEMRepository::processMapFile(const char* path)
{
    if (path == nullptr || path[0] == '\0') {
        return qipVLRecFile::BadParameter;
    }
    ZEMMapFile map;
    int result = map.open(path, qipVLRecFile::READ);
    if (result == qipVLRecFile::NoError) {
        result = map.load();
    }
    if (result < 0) {
        ListIterator<ZEMFileRecord*> files(map.toc());
        while (const ZEMFileRecord* file = files.next()) {
            delete file;
        }
        return result;
    }
    result = take(map.toc());
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    char* copy = new (std::nothrow) char[std::strlen(path) + 1];
    if (copy == nullptr) {
        return qipVLRecFile::OutOfMemory;
    }
    std::strcpy(copy, path);
    if (_index->mapfiles.add(copy) == PathIndex::NoMemory) {
        delete[] copy;
        return qipVLRecFile::OutOfMemory;
    }
    _mapfiles.append(copy);
    return qipVLRecFile::NoError;
}

// Takes over the records of a map file; those of source files that are known already are deleted.
int ZEMRepository::take(List<ZEMFileRecord*>& files)
{
    int result = qipVLRecFile::NoError;
    ListIterator<ZEMFileRecord*> it(files);
    while (ZEMFileRecord* file = it.next()) {
        const PathIndex::AddResult added = _index->sources.add(*file);
        if (added == PathIndex::Added) {
            _srcfiles.append(file);
        } else {
            delete file;
        }
        if (added == PathIndex::NoMemory) {
            result = qipVLRecFile::OutOfMemory;
        }
    }
    return result;
}

void ZEMRepository::merge(long source, const ZEMLogFileRecord& record)
{
    SourceIndex& sources = _index->sources;
    if (sources.statedBlocks(source) != record._nBlocks) {
        // One piece after the other, without closing brackets.
        std::cerr << " *** ZEMRepository::processLogFile() : block count mismatch!" << std::endl
                  << "     Mapfile(" << sources.path(source) << sources.statedBlocks(source)
                  << ", Logfile(" << record._filename << record._nBlocks << std::endl;
    }
    // Counts that the log does not have are 0.
    const size_t total = sources.placedBlocks(source);
    const size_t ran = sources.addHits(source, record._hits, record._nBlocks);
    _totBlocks += static_cast<long>(total);
    _totUncov += static_cast<long>(total - ran);
}

const List<ZEMFileRecord*>& ZEMRepository::srcfiles() const
{
    _index->sources.settle();
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
    filter->append(const_cast<char*>(name));
}

int ZEMRepository::isSuppressed(List<char*>& filter, const char* name) const
{
    return NameFilter(filter).hides(name) ? 1 : 0;
}

ZEMRptTable ZEMRepository::viewByFunction(int manglingLevel) const
{
    return Rows(*this).byFunction(manglingLevel);
}

ZEMRptTable ZEMRepository::viewByFile() const
{
    return Rows(*this).byFile();
}

ZEMRptTable ZEMRepository::viewByDirectory() const
{
    return Rows(*this).byDirectory();
}

ZEMRptTable ZEMRepository::viewByClass() const
{
    return Rows(*this).byClass();
}
