// SPDX-License-Identifier: MIT
//
// Merges a log twice, makes each table and sorts it. The input is the length of a map file in two
// bytes, high byte first, the map file, and a log file. A log that names "/proc/self/fd/900" as its
// map file gets that one.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipEndian.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Rows/ZEMView.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace {

constexpr int MapDescriptor = 900;

void sortAndFree(ZEMRptTable table)
{
    for (const char* keys : {"%F", "#b", "fd"}) {
        table.sort(keys);
    }
    for (int i = 0; i < table._nItems; ++i) {
        if (table._view[i]->_totBlk < 0 || table._view[i]->_hits < 0) {
            std::abort(); // a sum that went past its field
        }
    }
    table.deleteRows();
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2) {
        return 0;
    }
    const size_t mapSize = std::min<size_t>(qipGetBig16(data), size - 2);
    const MemoryFile map(data + 2, mapSize);
    const MemoryFile log(data + 2 + mapSize, size - 2 - mapSize);
    // NOLINTNEXTLINE(android-cloexec-dup): nothing is executed
    if (dup2(map.descriptor(), MapDescriptor) < 0) {
        std::abort();
    }
    ZEMRepository repository;
    for (int times = 0; times < 2; ++times) {
        (void)repository.processFile(log.path().c_str()); // any code will do
        sortAndFree(repository.viewByFile());
        sortAndFree(repository.viewByFunction(3));
    }
    repository.addFilter('f', "main");
    sortAndFree(repository.viewByFile());
    sortAndFree(repository.viewByDirectory());
    sortAndFree(repository.viewByClass());
    long untested = 0;
    long total = 0;
    repository.coverageSummary(untested, total);
    std::ostringstream text;
    text << repository;
    close(MapDescriptor);
    if (untested < 0 || untested > total) {
        std::abort();
    }
    return 0;
}
