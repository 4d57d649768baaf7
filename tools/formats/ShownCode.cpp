// SPDX-License-Identifier: MIT
#include "tools/formats/ShownCode.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/groupLength.h"

#include <string_view>

namespace {

// Whether `filter` hides the group that the first `length` characters of `name` are. What is in no
// group is hidden as soon as the filter has names.
bool hidesGroup(const NameFilter& filter, const char* name, long length)
{
    if (filter.isEmpty()) {
        return false;
    }
    return length < 0 || filter.hides(std::string_view(name, static_cast<size_t>(length)));
}

void add(ShownCode::Totals& totals, const ZEMFuncRecord& function)
{
    for (uint32_t i = 0; i < function._nBlocks; ++i) {
        const uint32_t hits = function._blockMap[i]._nHits;
        totals.covered += hits != 0 ? 1 : 0;
        totals.hits += hits;
    }
    totals.blocks += function._nBlocks;
}

} // namespace

ShownCode::ShownCode(RptType type, const RowMaker::Filters& shown)
    : _files(shown.files), _functions(shown.functions),
      _classes(type == RptByClass ? shown.classes : _none),
      _directories(type == RptByDirectory ? shown.directories : _none)
{}

bool ShownCode::shows(const ZEMFileRecord& file) const
{
    const char* path = orEmpty(file._filename);
    return !_files.hides(path) && !hidesGroup(_directories, path, directoryLength(path));
}

bool ShownCode::shows(const ZEMFuncRecord& function) const
{
    const char* name = orEmpty(function._funcname);
    return !_functions.hides(name) && !hidesGroup(_classes, name, classLength(name));
}

ShownCode::Totals ShownCode::totals(const ZEMFileRecord& file) const
{
    Totals totals;
    ListIterator<ZEMFuncRecord*> functions(file._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        if (shows(*function)) {
            add(totals, *function);
        }
    }
    return totals;
}

ShownCode::Totals ShownCode::totals(const List<ZEMFileRecord*>& files) const
{
    Totals sum;
    ListIterator<ZEMFileRecord*> it(files);
    while (const ZEMFileRecord* file = it.next()) {
        if (shows(*file)) {
            const Totals part = totals(*file);
            sum.blocks += part.blocks;
            sum.covered += part.covered;
            sum.hits += part.hits;
        }
    }
    return sum;
}
