// SPDX-License-Identifier: MIT
#include "tools/common/cleanMaps.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLHeader.h"
#include "tools/common/InputFile.h"
#include "tools/common/OutputFolder.h"
#include "tools/common/PendingFile.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Kind { Other, Map, Log, Unreadable };

bool endsWith(const std::string& name, const char* end)
{
    const size_t length = std::strlen(end);
    return name.size() > length && name.compare(name.size() - length, length, end) == 0;
}

std::string lastPart(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

// The word at `position` of a file's first bytes, 0 behind their end.
uint32_t wordAt(const std::string& bytes, size_t position)
{
    return bytes.size() < position + 4
               ? 0
               : qipGetBig32(reinterpret_cast<const unsigned char*>(bytes.data()) + position);
}

Kind kindOf(const std::string& path, std::string& problem)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        return Kind::Other;
    }
    InputFile file;
    std::string bytes;
    if (!file.open(path) || !file.append(bytes, qipVLHeader::Size + 4)) {
        problem = file.problem();
        return Kind::Unreadable;
    }
    if (wordAt(bytes, 0) != qipVLHeader::Magic) {
        return Kind::Other;
    }
    switch (wordAt(bytes, qipVLHeader::Size)) {
    case ZEMMapHeader::Magic:
        return Kind::Map;
    case ZEMLogHeader::Magic:
        return Kind::Log;
    default:
        problem = "damaged";
        return Kind::Unreadable;
    }
}

class MapCleaner
{
public:
    explicit MapCleaner(CleanedMaps& result) : _result(result) {}

    bool clean(const std::string& folder);

private:
    bool fail(const std::string& file, const std::string& reason);
    bool look();
    bool lookAt(const std::string& name);
    bool addLog(const std::string& name);
    bool remove();

    CleanedMaps& _result;
    OutputFolder _folder;
    std::vector<std::string> _maps;
    std::set<std::string> _named;
};

bool MapCleaner::fail(const std::string& file, const std::string& reason)
{
    _result._problem = file + ": " + reason;
    return false;
}

// Remembers the maps that the log `name` names.
bool MapCleaner::addLog(const std::string& name)
{
    ZEMLogFile log;
    const std::string path = _folder.path() + "/" + name;
    int result = log.open(path.c_str(), qipVLRecFile::READ, 0);
    result = result < 0 ? result : log.load();
    if (result < 0) {
        return fail(path, qipVLRecFile::error(result));
    }
    ListIterator<ZEMLogFileRecord*> records(log.toc());
    while (const ZEMLogFileRecord* record = records.next()) {
        if (record->_mapfile != nullptr) {
            _named.insert(lastPart(record->_mapfile));
        }
    }
    return true;
}

bool MapCleaner::lookAt(const std::string& name)
{
    std::string problem;
    switch (kindOf(_folder.path() + "/" + name, problem)) {
    case Kind::Map:
        if (endsWith(name, ".map")) {
            _maps.push_back(name);
        }
        return true;
    case Kind::Log:
        return addLog(name);
    case Kind::Unreadable:
        return fail(_folder.path() + "/" + name, problem);
    default:
        return true;
    }
}

bool MapCleaner::look()
{
    DIR* entries = opendir(_folder.path().c_str());
    if (entries == nullptr) {
        return fail(_folder.path(), std::strerror(errno));
    }
    bool isGood = true;
    errno = 0; // tells the end of the folder from an error
    while (const dirent* entry = isGood ? readdir(entries) : nullptr) {
        isGood = lookAt(entry->d_name);
        errno = 0;
    }
    if (isGood && errno != 0) {
        isGood = fail(_folder.path(), std::strerror(errno));
    }
    closedir(entries);
    return isGood;
}

bool MapCleaner::remove()
{
    std::sort(_maps.begin(), _maps.end());
    for (const std::string& name : _maps) {
        if (_named.count(name) != 0) {
            ++_result._kept;
            continue;
        }
        const std::string path = _folder.path() + "/" + name;
        if (unlink(path.c_str()) != 0) {
            return fail(path, std::strerror(errno));
        }
        _result._removed.push_back(name);
    }
    return true;
}

bool MapCleaner::clean(const std::string& folder)
{
    if (!_folder.takeAlone(folder)) {
        return fail(folder, std::strerror(errno));
    }
    PendingFile::removeDead(_folder.path());
    return look() && remove();
}

} // namespace

bool cleanMaps(const std::string& folder, CleanedMaps& result)
{
    return MapCleaner(result).clean(folder);
}
