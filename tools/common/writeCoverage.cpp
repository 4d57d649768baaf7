// SPDX-License-Identifier: MIT
#include "tools/common/writeCoverage.h"

#include "qip/Support/qipVLRecFile.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
#include "tools/common/SourcePath.h"

#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace {

// A file that takes its name when it is complete, and leaves nothing behind when it is not.
class PendingFile
{
public:
    explicit PendingFile(const std::string& path)
        : _path(path), _temporary(path + ".new." + std::to_string(getpid()))
    {}
    ~PendingFile()
    {
        if (!_isDone) {
            std::remove(_temporary.c_str());
        }
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const char* temporary() const { return _temporary.c_str(); }
    const std::string& path() const { return _path; }

    bool commit()
    {
        _isDone = std::rename(_temporary.c_str(), _path.c_str()) == 0;
        return _isDone;
    }

private:
    const std::string _path;
    const std::string _temporary;
    bool _isDone = false;
};

int writeMap(const CoverageModel& model, const char* filename)
{
    MapWriter map;
    int result = map.create(filename);
    for (size_t i = 0; i < model._files.size() && result == 0; ++i) {
        result = map.add(model._files[i]);
    }
    return result == 0 ? map.close() : result;
}

int writeLog(const CoverageModel& model, const char* filename, const std::string& mapPath)
{
    LogWriter log;
    int result = log.create(filename, model._executionTime);
    for (size_t i = 0; i < model._files.size() && result == 0; ++i) {
        result = log.add(model._files[i], mapPath, model._isBoolean);
    }
    return result == 0 ? log.close() : result;
}

int writeLosses(const ImportLosses& losses, const char* filename)
{
    std::ofstream out(filename);
    losses.write(out);
    out.close();
    return out ? qipVLRecFile::NoError : qipVLRecFile::WriteFailed;
}

} // namespace

int writeCoverage(const CoverageModel& model, const ImportLosses& losses, const std::string& stem,
                  std::string& failure)
{
    if (model._files.empty()) {
        failure = stem + ".map";
        return qipVLRecFile::BadParameter;
    }
    PendingFile map(absolutePath("", stem + ".map"));
    PendingFile log(absolutePath("", stem + ".log"));
    PendingFile note(absolutePath("", stem + ".losses"));
    PendingFile* files[] = {&map, &log, &note};
    int results[] = {writeMap(model, map.temporary()), writeLog(model, log.temporary(), map.path()),
                     writeLosses(losses, note.temporary())};
    for (int i = 0; i < 3; ++i) {
        if (results[i] != 0) {
            failure = files[i]->path();
            return results[i];
        }
    }
    for (PendingFile* file : files) {
        if (!file->commit()) {
            failure = file->path();
            return qipVLRecFile::CreateFailed;
        }
    }
    return qipVLRecFile::NoError;
}
