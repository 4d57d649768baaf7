// SPDX-License-Identifier: MIT
#include "zem/Rows/RowMaker.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Demangle/demangle.h"
#include "zem/Rows/NameLevel.h"
#include "zem/Rows/RowGroups.h"
#include "zem/Rows/ZEMClassView.h"
#include "zem/Rows/ZEMDirectoryView.h"
#include "zem/Rows/ZEMFileView.h"
#include "zem/Rows/ZEMFuncView.h"
#include "zem/Rows/groupLength.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

struct RowMaker::Counts
{
    int64_t hits = 0;
    int64_t untested = 0;

    void add(const ZEMBlkRecord* blocks, size_t count)
    {
        for (size_t i = 0; i < count; ++i) {
            hits += blocks[i]._nHits;
            untested += blocks[i]._nHits == 0;
        }
    }
};

namespace {

// A row without one of its names would be found under another, or not at all.
bool hasNames(const ZEMFileView& row)
{
    return row._directory != nullptr && row._filename != nullptr && row._label != nullptr;
}

// Null without memory for the row and its names.
ZEMFileView* fileRow(const char* path)
{
    std::unique_ptr<ZEMFileView> row(new (std::nothrow) ZEMFileView);
    if (!row) {
        return nullptr;
    }
    row->filename(path);
    row->setLabel();
    return hasNames(*row) ? row.release() : nullptr;
}

// Likewise.
ZEMFuncView* functionRow(const char* path, ZEMFuncRecord& func, int manglingLevel)
{
    std::unique_ptr<ZEMFuncView> row(new (std::nothrow) ZEMFuncView);
    if (!row) {
        return nullptr;
    }
    const char* stored = orEmpty(func._funcname);
    char* readable = manglingLevel == StoredNames
                         ? nullptr
                         : demangle_name(stored, manglingLevel - SimpleNames + DemangleName);
    row->funcname(readable == nullptr ? stored : readable);
    std::free(readable);
    row->filename(path);
    row->setLabel();
    return hasNames(*row) ? row.release() : nullptr;
}

} // namespace

RowMaker::RowMaker(const List<ZEMFileRecord*>& files, const Filters& shown)
    : _sources(files), _files(shown.files), _functions(shown.functions), _classes(shown.classes),
      _directories(shown.directories)
{}

RowMaker::~RowMaker() = default;

void RowMaker::prepare(long) {}

ZEMRptTable RowMaker::byFunction(int manglingLevel)
{
    size_t count = 0;
    ListIterator<ZEMFileRecord*> counted(_sources);
    while (const ZEMFileRecord* file = counted.next()) {
        count += static_cast<size_t>(file->_funcList.length());
    }
    ZEMRptTable table;
    if (!table.reserve(count)) {
        return table;
    }
    long number = 0;
    ListIterator<ZEMFileRecord*> files(_sources);
    while (ZEMFileRecord* file = files.next()) {
        prepare(number++);
        if (!_files.hides(file->_filename) && !addFunctions(*file, manglingLevel, table)) {
            table.giveUp();
            return table;
        }
    }
    return table;
}

bool RowMaker::addFunctions(ZEMFileRecord& file, int manglingLevel, ZEMRptTable& table) const
{
    ListIterator<ZEMFuncRecord*> funcs(file._funcList);
    while (ZEMFuncRecord* func = funcs.next()) {
        if (_functions.hides(func->_funcname)) {
            continue;
        }
        ZEMFuncView* row = functionRow(orEmpty(file._filename), *func, manglingLevel);
        if (row == nullptr) {
            return false;
        }
        Counts counts;
        counts.add(func->_blockMap, func->_nBlocks);
        row->setCounts(func, func->_nBlocks, func->_nBlocks - counts.untested, counts.hits);
        table.append(row);
    }
    return true;
}

// Counts what a file's row shows, by function only where that makes a difference.
RowMaker::Counts RowMaker::countFile(ZEMFileRecord& file) const
{
    Counts counts;
    if (_functions.isEmpty()) {
        counts.add(file.blocks(), file.placedBlocks());
        return counts;
    }
    ListIterator<ZEMFuncRecord*> funcs(file._funcList);
    while (const ZEMFuncRecord* func = funcs.next()) {
        if (!_functions.hides(func->_funcname)) {
            counts.add(func->_blockMap, func->_nBlocks);
        }
    }
    return counts;
}

ZEMRptTable RowMaker::byFile()
{
    ZEMRptTable table;
    if (!table.reserve(static_cast<size_t>(_sources.length()))) {
        return table;
    }
    long number = 0;
    ListIterator<ZEMFileRecord*> files(_sources);
    while (ZEMFileRecord* file = files.next()) {
        prepare(number++);
        if (_files.hides(file->_filename)) {
            continue;
        }
        ZEMFileView* row = fileRow(orEmpty(file->_filename));
        if (row == nullptr) {
            table.giveUp();
            return table;
        }
        const Counts counts = countFile(*file);
        row->setCounts(file, file->_nBlocks, file->_nBlocks - counts.untested, counts.hits);
        table.append(row);
    }
    return table;
}

ZEMRptTable RowMaker::byDirectory()
{
    const NameFilter shown(_directories);
    ZEMRptTable files = byFile();
    if (!files.isWhole()) {
        return files;
    }
    RowGroups directories;
    for (int i = 0; i < files._nItems; ++i) {
        ZEMView& row = *files._view[i];
        // The label of a file without a directory begins with a '/' of its own.
        const long length =
            directoryLength(orEmpty(static_cast<const ZEMFileRecord&>(*row._owner)._filename));
        if (length < 0) {
            continue;
        }
        row._label[length] = '\0';
        if (!shown.hides(row._label)) {
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

ZEMRptTable RowMaker::byClass()
{
    const NameFilter shown(_classes);
    ZEMRptTable functions = byFunction(0);
    if (!functions.isWhole()) {
        return functions;
    }
    RowGroups classes;
    for (int i = 0; i < functions._nItems; ++i) {
        ZEMView& row = *functions._view[i];
        const long length = classLength(row._label);
        if (length < 0) {
            continue;
        }
        row._label[length] = '\0';
        if (!shown.hides(row._label)) {
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
