// SPDX-License-Identifier: MIT
//
// The repository as text.
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/ZEMView.h"

#include <iostream>

namespace {

void dumpFunction(std::ostream& out, const ZEMFuncRecord& func)
{
    out << "                 +++ " << qipVisibleText(func._funcname)
        << ", lines: " << func._startLine << "-" << func._endLine << ", blocks: " << func._nBlocks
        << "\n"
        << "                     ";
    for (uint32_t i = 0; i < func._nBlocks; ++i) {
        out << "[" << func._blockMap[i]._startLine << "-" << func._blockMap[i]._stopLine << "]";
    }
    out << "\n";
}

} // namespace

std::ostream& operator<<(std::ostream& out, ZEMRepository& repository)
{
    out << " **** Repository info:\n"
        << "            map files: " << repository.mapfiles().length() << "\n";
    ListIterator<char*> paths(repository.mapfiles());
    while (const char* path = paths.next()) {
        out << "                       " << qipVisibleText(path) << "\n";
    }
    const List<ZEMFileRecord*>& sources = repository.srcfiles();
    out << "\n         source files: " << sources.length() << "\n";
    ListIterator<ZEMFileRecord*> files(sources);
    while (const ZEMFileRecord* file = files.next()) {
        out << "            " << qipVisibleText(file->_filename) << "\n"
            << "            --- " << file->_nFuncs << " funcs, " << file->_nBlocks << " blocks\n";
        ListIterator<ZEMFuncRecord*> funcs(file->_funcList);
        while (const ZEMFuncRecord* func = funcs.next()) {
            dumpFunction(out, *func);
        }
    }
    return out;
}

void ZEMRepository::showView(ZEMRptTable table)
{
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        std::cout << qipVisibleText(row._label) << " " << row._covBlk << "/" << row._totBlk << "\n";
    }
    std::cout << std::flush;
}
