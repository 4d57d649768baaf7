// SPDX-License-Identifier: MIT
#include "tools/common/writeCoverage.h"

#include "qip/Support/qipVLRecFile.h"
#include "tools/common/ContentDigest.h"
#include "tools/common/InputFile.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
#include "tools/common/OutputFolder.h"
#include "tools/common/PendingFile.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/RelativePath.h"

#include <cerrno>
#include <cstring>
#include <sstream>
#include <sys/stat.h>

namespace {

constexpr size_t Piece = 64 * 1024; // bytes read at a time

// Of the 64 digits of the digest. No two maps ever meet with so many.
constexpr size_t DigitsInName = 32;

// errno for a code; where the system refused it is set already.
bool isWritten(int code)
{
    if (code == qipVLRecFile::OutOfMemory) {
        errno = ENOMEM;
    }
    return code == qipVLRecFile::NoError;
}

class CoverageFiles
{
public:
    CoverageFiles(const CoverageModel& model, const CoverageOutput& output, CoverageResult& result)
        : _model(model), _output(output), _result(result)
    {}

    bool write(const ImportLosses& losses);

private:
    // Of a file as the user knows it.
    std::string named(const std::string& name) const { return _output._folder + "/" + name; }
    // Of the same file as the system finds it.
    std::string placed(const std::string& name) const { return _folder.path() + "/" + name; }

    bool fail(const std::string& file);
    bool fail(const std::string& file, const std::string& reason);
    bool isFree(const std::string& name);
    bool writeMap();
    bool nameMap();
    bool isSameMap(const std::string& path);
    bool writeLog();
    bool writeLosses(const ImportLosses& losses);
    bool placeMap();

    const CoverageModel& _model;
    const CoverageOutput& _output;
    CoverageResult& _result;
    OutputFolder _folder;
    PendingFile _map;
    PendingFile _log;
    PendingFile _note;
    std::string _mapName;     // without the folder
    bool _isMapThere = false; // from another run of this build
};

bool CoverageFiles::fail(const std::string& file, const std::string& reason)
{
    _result._problem = "cannot write " + file + ": " + reason;
    return false;
}

bool CoverageFiles::fail(const std::string& file)
{
    return fail(file, std::strerror(errno));
}

// A folder in the place of a file is met before anything is written.
bool CoverageFiles::isFree(const std::string& name)
{
    struct stat status = {};
    if (stat(placed(name).c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        return fail(named(name), std::strerror(EISDIR));
    }
    return true;
}

bool CoverageFiles::writeMap()
{
    MapWriter writer;
    bool isGood = _map.create(_folder.path()) && isWritten(writer.create(_map.temporary().c_str()));
    for (size_t i = 0; i < _model._files.size() && isGood; ++i) {
        isGood = isWritten(writer.add(_model._files[i]));
    }
    if (!isGood || !isWritten(writer.close())) {
        return fail(named(_output._name + "-*.map"));
    }
    return nameMap();
}

bool digestOf(const std::string& path, std::string& digits, std::string& problem)
{
    InputFile file;
    ContentDigest digest;
    std::string bytes;
    bool isGood = file.open(path);
    while (isGood && file.position() < file.size()) {
        bytes.clear();
        isGood = file.append(bytes, Piece);
        digest.add(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    }
    problem = file.problem();
    digits = digest.text();
    return isGood;
}

// Names the map after its content.
bool CoverageFiles::nameMap()
{
    std::string digits;
    std::string problem;
    if (!digestOf(_map.temporary(), digits, problem)) {
        return fail(named(_output._name + "-*.map"), problem);
    }
    _mapName = _output._name + "-" + digits.substr(0, DigitsInName) + ".map";
    const std::string path = placed(_mapName);
    _result._map = _output._isRelative ? RelativePath().of(path) : path;
    if (_result._map.size() > RecordPayload::LongestText) {
        return fail(named(_mapName), std::strerror(ENAMETOOLONG));
    }
    struct stat status = {};
    _isMapThere = lstat(path.c_str(), &status) == 0;
    return !_isMapThere || isSameMap(path);
}

// The map of another run of this build stays. Something else under its name was damaged by
// somebody: older logs are not helped by overwriting it.
bool CoverageFiles::isSameMap(const std::string& path)
{
    InputFile theirs;
    InputFile ours;
    if (!theirs.open(path) || !ours.open(_map.temporary())) {
        return fail(named(_mapName), theirs.problem() + ours.problem());
    }
    bool isSame = theirs.size() == ours.size();
    std::string theirBytes;
    std::string ourBytes;
    while (isSame && ours.position() < ours.size()) {
        theirBytes.clear();
        ourBytes.clear();
        if (!theirs.append(theirBytes, Piece) || !ours.append(ourBytes, Piece)) {
            return fail(named(_mapName), theirs.problem() + ours.problem());
        }
        isSame = theirBytes == ourBytes;
    }
    return isSame || fail(named(_mapName), "what is there under this name is not the map of this "
                                           "content; remove it");
}

bool CoverageFiles::writeLog()
{
    LogWriter writer;
    bool isGood = _log.create(_folder.path()) &&
                  isWritten(writer.create(_log.temporary().c_str(), _model._executionTime));
    for (size_t i = 0; i < _model._files.size() && isGood; ++i) {
        isGood = isWritten(writer.add(_model._files[i], _result._map, _model._isBoolean));
    }
    return isGood && isWritten(writer.close());
}

bool CoverageFiles::writeLosses(const ImportLosses& losses)
{
    std::ostringstream text;
    losses.write(text);
    if (!text) { // a stream swallows that memory ran out
        errno = ENOMEM;
        return false;
    }
    return _note.create(_folder.path()) && _note.write(text.str());
}

// Gives the map its name, which is on the disk before a log's that needs it.
bool CoverageFiles::placeMap()
{
    if (!_isMapThere && (!_map.sync() || !_map.commit(placed(_mapName)))) {
        return false;
    }
    return _folder.sync();
}

bool CoverageFiles::write(const ImportLosses& losses)
{
    const std::string logName = _output._name + ".log";
    const std::string noteName = _output._name + ".losses";
    if (_model._files.empty()) {
        return fail(named(logName), "nothing to write");
    }
    if (!_folder.makeShared(_output._folder)) {
        return fail("into " + _output._folder);
    }
    if (!isFree(logName) || !isFree(noteName)) {
        return false;
    }
    PendingFile::removeDead(_folder.path());
    if (!writeMap()) {
        return false;
    }
    if (!writeLog()) {
        return fail(named(logName));
    }
    if (!writeLosses(losses)) {
        return fail(named(noteName));
    }
    if (!placeMap()) {
        return fail(named(_mapName));
    }
    // One after the other: the first one makes the system write for all three.
    if (!_note.sync() || !_log.sync() || !_note.commit(placed(noteName))) {
        return fail(named(noteName));
    }
    return (_log.commit(placed(logName)) && _folder.sync()) || fail(named(logName));
}

} // namespace

bool writeCoverage(const CoverageModel& model, const ImportLosses& losses,
                   const CoverageOutput& output, CoverageResult& result)
{
    return CoverageFiles(model, output, result).write(losses);
}
