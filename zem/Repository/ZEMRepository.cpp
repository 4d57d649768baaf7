// SPDX-License-Identifier: MIT
#include "zem/Repository/ZEMRepository.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"
#include "zem/Demangle/demangle.h"
#include "zem/Repository/SourceIndex.h"
#include "zem/Rows/ZEMClassView.h"
#include "zem/Rows/ZEMDirectoryView.h"
#include "zem/Rows/ZEMFileView.h"
#include "zem/Rows/ZEMFuncView.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// Indexes beside the lists: each look-up would else walk a list, once for every record or row. The
// filters' keys are the caller's strings.
struct ZEMRepository::Index
{
    SourceIndex sources;
    PathIndex mapfiles;
    std::unordered_set<std::string_view> filters[UCHAR_MAX + 1]; // by kind
};

// What a file row shows of its functions.
struct ZEMRepository::Counts
{
    int64_t hits = 0;
    int64_t untested = 0;
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

const char* nameOf(const char* name)
{
    return name == nullptr ? "" : name;
}

// Counts blocks into `hits` and `untested`.
void addBlocks(const ZEMBlkRecord* blocks, size_t count, int64_t& hits, int64_t& untested)
{
    for (size_t i = 0; i < count; ++i) {
        hits += blocks[i]._nHits;
        untested += blocks[i]._nHits == 0;
    }
}

// An array for `count` rows, or null.
ZEMView** newRows(size_t count)
{
    return count == 0 ? nullptr : new (std::nothrow) ZEMView*[count];
}

void setCounts(ZEMView& row, ZEMRecord* owner, int64_t total, int64_t covered, int64_t hits)
{
    row._owner = owner;
    row._totBlk = clampToInt(total);
    row._covBlk = clampToInt(covered);
    row._hits = clampToInt(hits);
}

// The length of the directory in a file row's label, or -1 when the file's path names none: the
// label of a file without directory begins with a '/' too.
long directoryLength(const ZEMFileRecord& file, const char* label)
{
    if (std::strchr(nameOf(file._filename), '/') == nullptr) {
        return -1;
    }
    return static_cast<long>(std::strrchr(label, '/') - label);
}

// The length of the class name in a function's stored name, or -1 when it is no member: what stands
// before the last ':' and the character in front of it, or one character that stands alone.
long classLength(const char* label)
{
    const char* colon = std::strrchr(label, ':');
    if (colon == nullptr || colon == label) {
        return -1;
    }
    const long position = static_cast<long>(colon - label);
    if (position == 1) {
        return label[0] == ':' ? -1 : 1;
    }
    return position - 1;
}

// Sums rows up by a part of their labels. The groups come with the one met last first. Without
// memory for a group there are no rows at all: sums that lack some would lie.
class Grouping
{
public:
    struct Group
    {
        const char* name;
        int64_t total = 0;
        int64_t covered = 0;
        int64_t hits = 0;
    };

    // `name` is borrowed until the table is made.
    void add(const char* name, const ZEMView& row)
    {
        try {
            const auto found = _index.emplace(name, _groups.size());
            if (found.second) {
                _groups.push_back({name});
            }
            Group& group = _groups[found.first->second];
            group.total += row._totBlk;
            group.covered += row._covBlk;
            group.hits += row._hits;
        } catch (const std::bad_alloc&) {
            _complete = false;
        }
    }

    // `makeRow` makes a row with its name set.
    ZEMRptTable table(ZEMView* (*makeRow)(const char* name)) const
    {
        ZEMRptTable table;
        table._view = _complete ? newRows(_groups.size()) : nullptr;
        if (table._view == nullptr) {
            return table;
        }
        for (auto group = _groups.rbegin(); group != _groups.rend(); ++group) {
            ZEMView* row = makeRow(group->name);
            if (row != nullptr) {
                setCounts(*row, nullptr, group->total, group->covered, group->hits);
                row->setLabel();
                table._view[table._nItems++] = row;
            }
        }
        return table;
    }

private:
    std::unordered_map<std::string_view, size_t> _index;
    std::vector<Group> _groups; // in the order met
    bool _complete = true;
};

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
        // One piece after the other, without closing brackets: scripts look for it.
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
    _index->filters[kind].insert(name);
}

int ZEMRepository::isSuppressed(List<char*>& filter, const char* name) const
{
    if (filter.length() == 0) {
        return 0;
    }
    ListIterator<char*> names(filter);
    while (const char* shown = names.next()) {
        if (std::strcmp(shown, nameOf(name)) == 0) {
            return 0;
        }
    }
    return 1;
}

// As isSuppressed(), through the index.
int ZEMRepository::suppressed(char kind, const char* name) const
{
    const auto& filter = _index->filters[static_cast<unsigned char>(kind)];
    return !filter.empty() && filter.count(nameOf(name)) == 0 ? 1 : 0;
}

ZEMRptTable ZEMRepository::viewByFunction(int manglingLevel) const
{
    size_t count = 0;
    ListIterator<ZEMFileRecord*> counted(srcfiles());
    while (const ZEMFileRecord* file = counted.next()) {
        count += static_cast<size_t>(file->_funcList.length());
    }
    ZEMRptTable table;
    table._view = newRows(count);
    if (table._view == nullptr) {
        return table;
    }
    ListIterator<ZEMFileRecord*> files(_srcfiles);
    while (ZEMFileRecord* file = files.next()) {
        if (suppressed('F', file->_filename)) {
            continue;
        }
        ListIterator<ZEMFuncRecord*> funcs(file->_funcList);
        while (ZEMFuncRecord* func = funcs.next()) {
            if (suppressed('f', func->_funcname)) {
                continue;
            }
            auto* row = new (std::nothrow) ZEMFuncView;
            if (row == nullptr) {
                return table;
            }
            int64_t hits = 0;
            int64_t untested = 0;
            addBlocks(func->_blockMap, func->_nBlocks, hits, untested);
            setCounts(*row, func, func->_nBlocks, func->_nBlocks - untested, hits);
            const char* stored = nameOf(func->_funcname);
            char* readable =
                manglingLevel == 0 ? nullptr : demangle_name(stored, manglingLevel - 2);
            row->funcname(readable == nullptr ? stored : readable);
            std::free(readable);
            row->filename(nameOf(file->_filename));
            row->setLabel();
            table._view[table._nItems++] = row;
        }
    }
    return table;
}

// Counts what a file's row shows, by function only where that makes a difference.
ZEMRepository::Counts ZEMRepository::countFile(ZEMFileRecord& file) const
{
    Counts counts;
    if (_index->filters[static_cast<unsigned char>('f')].empty()) {
        addBlocks(file.blocks(), file.placedBlocks(), counts.hits, counts.untested);
        return counts;
    }
    ListIterator<ZEMFuncRecord*> funcs(file._funcList);
    while (const ZEMFuncRecord* func = funcs.next()) {
        if (!suppressed('f', func->_funcname)) {
            addBlocks(func->_blockMap, func->_nBlocks, counts.hits, counts.untested);
        }
    }
    return counts;
}

ZEMRptTable ZEMRepository::viewByFile() const
{
    ZEMRptTable table;
    table._view = newRows(static_cast<size_t>(_srcfiles.length()));
    if (table._view == nullptr) {
        return table;
    }
    long number = 0;
    ListIterator<ZEMFileRecord*> files(_srcfiles);
    while (ZEMFileRecord* file = files.next()) {
        // Right before its blocks are counted, so that they are fetched from memory once.
        _index->sources.settle(number++);
        if (suppressed('F', file->_filename)) {
            continue;
        }
        auto* row = new (std::nothrow) ZEMFileView;
        if (row == nullptr) {
            return table;
        }
        const Counts counts = countFile(*file);
        setCounts(*row, file, file->_nBlocks, file->_nBlocks - counts.untested, counts.hits);
        row->filename(nameOf(file->_filename));
        row->setLabel();
        table._view[table._nItems++] = row;
    }
    _index->sources.settle(); // nothing is left to add; frees the sums
    return table;
}

ZEMRptTable ZEMRepository::viewByDirectory() const
{
    ZEMRptTable files = viewByFile();
    Grouping directories;
    for (int i = 0; i < files._nItems; ++i) {
        ZEMView& row = *files._view[i];
        const long length =
            directoryLength(static_cast<const ZEMFileRecord&>(*row._owner), row._label);
        if (length < 0) {
            continue;
        }
        row._label[length] = '\0';
        if (!suppressed('d', row._label)) {
            directories.add(row._label, row);
        }
    }
    ZEMRptTable table = directories.table([](const char* name) -> ZEMView* {
        auto* row = new (std::nothrow) ZEMDirectoryView;
        if (row != nullptr) {
            row->directory(name);
        }
        return row;
    });
    files.deleteRows();
    return table;
}

ZEMRptTable ZEMRepository::viewByClass() const
{
    ZEMRptTable functions = viewByFunction(0);
    Grouping classes;
    for (int i = 0; i < functions._nItems; ++i) {
        ZEMView& row = *functions._view[i];
        const long length = classLength(row._label);
        if (length < 0) {
            continue;
        }
        row._label[length] = '\0';
        if (!suppressed('o', row._label)) {
            classes.add(row._label, row);
        }
    }
    ZEMRptTable table = classes.table([](const char* name) -> ZEMView* {
        auto* row = new (std::nothrow) ZEMClassView;
        if (row != nullptr) {
            row->classname(name);
        }
        return row;
    });
    functions.deleteRows();
    return table;
}

void ZEMRepository::showView(ZEMRptTable table)
{
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        std::cout << nameOf(row._label) << " " << row._covBlk << "/" << row._totBlk << "\n";
    }
    std::cout << std::flush;
}

std::ostream& operator<<(std::ostream& out, ZEMRepository& repository)
{
    out << " **** Repository info:\n"
        << "            map files: " << repository._mapfiles.length() << "\n";
    ListIterator<char*> paths(repository._mapfiles);
    while (const char* path = paths.next()) {
        out << "                       " << path << "\n";
    }
    out << "\n         source files: " << repository._srcfiles.length() << "\n";
    ListIterator<ZEMFileRecord*> files(repository._srcfiles);
    while (ZEMFileRecord* file = files.next()) {
        out << "            " << nameOf(file->_filename) << "\n"
            << "            --- " << file->_nFuncs << " funcs, " << file->_nBlocks << " blocks\n";
        ListIterator<ZEMFuncRecord*> funcs(file->_funcList);
        while (const ZEMFuncRecord* func = funcs.next()) {
            out << "                 +++ " << nameOf(func->_funcname)
                << ", lines: " << func->_startLine << "-" << func->_endLine
                << ", blocks: " << func->_nBlocks << "\n"
                << "                     ";
            for (uint32_t i = 0; i < func->_nBlocks; ++i) {
                out << "[" << func->_blockMap[i]._startLine << "-" << func->_blockMap[i]._stopLine
                    << "]";
            }
            out << "\n";
        }
    }
    return out;
}
