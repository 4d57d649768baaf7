// SPDX-License-Identifier: MIT
#include "tools/report/loadAdvice.h"

#include "qip/Support/qipVLFailure.h"
#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"

#include <cstdio>
#include <cstring>
#include <ostream>
#include <unistd.h>

namespace {

bool isMap(const char* path)
{
    ZEMMapFile map;
    return map.open(path, qipVLRecFile::READ) == qipVLRecFile::NoError;
}

bool isLog(const char* path)
{
    ZEMLogFile log;
    return log.open(path, qipVLRecFile::READ) == qipVLRecFile::NoError;
}

// A map is often moved together with its logs. Writes where it lies now, if it lies beside the log.
void writeWhereItLies(std::ostream& out, const char* log, const char* map)
{
    const char* slash = std::strrchr(log, '/');
    const char* mapSlash = std::strrchr(map, '/');
    const char* name = mapSlash == nullptr ? map : mapSlash + 1;
    char path[4096];
    const int length = slash == nullptr ? std::snprintf(path, sizeof path, "%s", name)
                                        : std::snprintf(path, sizeof path, "%.*s/%s",
                                                        static_cast<int>(slash - log), log, name);
    if (length > 0 && length < static_cast<int>(sizeof path) && isMap(path)) {
        out << "; a map of that name lies at " << qipVisibleText(path);
    }
}

void writeLostMapAdvice(std::ostream& out, const char* log, const char* map)
{
    out << "the log counts the blocks of this map: put it back, or import the same build again, "
           "which makes the same map";
    if (map[0] != '/') {
        out << "; the path counts from the folder where zem-report is started";
    }
    writeWhereItLies(out, log, map);
}

} // namespace

void writeLoadAdvice(std::ostream& out, const char* log, const char* map,
                     const qipVLFailure& failure)
{
    const bool isInMap = map[0] != '\0';
    if (isInMap && failure._cause == qipVLRecFile::OpenFailed && access(map, F_OK) != 0) {
        writeLostMapAdvice(out, log, map);
    } else if (failure._cause != qipVLRecFile::BadMagic) {
        out << failure.advice();
    } else if (isInMap) {
        out << (isLog(map) ? "this is a log; " : "this is no map; ")
            << "import the build and its run again";
    } else if (isMap(log)) {
        out << "this is a map; give the log";
    } else {
        out << "this is no log; zem-import makes logs of what compilers write";
    }
}
