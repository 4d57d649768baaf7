// SPDX-License-Identifier: MIT
#include "tools/common/CoverageWriter.h"

#include "qip/Support/qipVLRecFile.h"
#include "tools/common/ContentDigest.h"
#include "tools/common/InputFile.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
#include "tools/common/RecordPayload.h"
#include "tools/common/RelativePath.h"

#include <cerrno>
#include <cstring>
#include <sstream>
#include <sys/stat.h>
#include <utility>

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

bool digestOf(const std::string& path, std::string& digits, std::string& problem)
{
    InputFile file;
    ContentDigest digest;
    std::vector<char> bytes(Piece);
    bool isGood = file.open(path);
    while (isGood && file.position() < file.size()) {
        size_t got = 0;
        isGood = file.next(bytes.data(), bytes.size(), got);
        digest.add(reinterpret_cast<const unsigned char*>(bytes.data()), got);
    }
    problem = file.problem();
    digits = digest.text();
    return isGood;
}

} // namespace

CoverageWriter::CoverageWriter(const CoverageModel& model, const CoverageOutput& output)
    : _model(model), _output(output)
{}

CoverageWriter::~CoverageWriter() = default;

bool CoverageWriter::fail(const std::string& file, const std::string& reason)
{
    _problem = "cannot write " + file + ": " + reason;
    return false;
}

bool CoverageWriter::fail(const std::string& file)
{
    return fail(file, std::strerror(errno));
}

// A folder in the place of a file is met before anything is written.
bool CoverageWriter::isFree(const std::string& name)
{
    struct stat status = {};
    if (stat(placed(name).c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        return fail(named(name), std::strerror(EISDIR));
    }
    return true;
}

bool CoverageWriter::writeMap()
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

// Names the map after its content.
bool CoverageWriter::nameMap()
{
    std::string digits;
    std::string problem;
    if (!digestOf(_map.temporary(), digits, problem)) {
        return fail(named(_output._name + "-*.map"), problem);
    }
    _mapName = _output._name + "-" + digits.substr(0, DigitsInName) + ".map";
    const std::string path = placed(_mapName);
    _mapAsNamed = _output._isRelative ? RelativePath().of(path) : path;
    if (_mapAsNamed.size() > RecordPayload::LongestText) {
        return fail(named(_mapName), std::strerror(ENAMETOOLONG));
    }
    struct stat status = {};
    _isMapThere = lstat(path.c_str(), &status) == 0;
    if (_isMapThere) {
        return isSameMap(path);
    }
    _map.startSync();
    return true;
}

// The map of another run of this build stays. Something else under its name was damaged by
// somebody: older logs are not helped by overwriting it.
bool CoverageWriter::isSameMap(const std::string& path)
{
    InputFile theirs;
    InputFile ours;
    if (!theirs.open(path) || !ours.open(_map.temporary())) {
        return fail(named(_mapName), theirs.problem() + ours.problem());
    }
    bool isSame = theirs.size() == ours.size();
    std::vector<char> theirBytes(Piece);
    std::vector<char> ourBytes(Piece);
    while (isSame && ours.position() < ours.size()) {
        size_t theirSize = 0;
        size_t ourSize = 0;
        if (!theirs.next(theirBytes.data(), Piece, theirSize) ||
            !ours.next(ourBytes.data(), Piece, ourSize)) {
            return fail(named(_mapName), theirs.problem() + ours.problem());
        }
        isSame =
            theirSize == ourSize && std::memcmp(theirBytes.data(), ourBytes.data(), ourSize) == 0;
    }
    return isSame || fail(named(_mapName), "what is there under this name is not the map of this "
                                           "content; remove it");
}

bool CoverageWriter::open()
{
    if (_model._files.empty()) {
        return fail(named(_output._name + "-*.map"), "nothing to write");
    }
    if (!_folder.makeShared(_output._folder)) {
        return fail("into " + _output._folder);
    }
    PendingFile::removeDead(_folder.path());
    return writeMap();
}

bool CoverageWriter::writeLog(PendingFile& log, const CoverageCounts& counts)
{
    LogWriter writer;
    bool isGood = log.create(_folder.path()) &&
                  isWritten(writer.create(log.temporary().c_str(), counts._executionTime));
    for (size_t i = 0; i < _model._files.size() && isGood; ++i) {
        isGood = isWritten(
            writer.add(_model._files[i], counts._files[i], _mapAsNamed, _model._isBoolean));
    }
    return isGood && isWritten(writer.close());
}

bool CoverageWriter::writeLosses(PendingFile& note, const ImportLosses& losses)
{
    std::ostringstream text;
    losses.write(text);
    if (!text) { // a stream swallows that memory ran out
        errno = ENOMEM;
        return false;
    }
    return note.create(_folder.path()) && note.write(text.str());
}

bool CoverageWriter::add(const std::string& run, const CoverageCounts& counts,
                         const ImportLosses& losses)
{
    auto files = std::make_unique<Run>();
    files->_name = run;
    if (!isFree(run + ".log") || !isFree(run + ".losses")) {
        return false;
    }
    if (!writeLog(files->_log, counts)) {
        return fail(named(run + ".log"));
    }
    files->_log.startSync();
    if (!writeLosses(files->_losses, losses)) {
        return fail(named(run + ".losses"));
    }
    files->_losses.startSync();
    _waiting.push_back(std::move(files));
    return _waiting.size() < RunsAtOnce || finish();
}

// Gives the map its name; it is on the disk before.
bool CoverageWriter::placeMap()
{
    if (!_isMapThere && (!_map.sync() || !_map.commit(placed(_mapName)))) {
        return fail(named(_mapName));
    }
    _isMapThere = true;
    return true;
}

bool CoverageWriter::sync(Run& run)
{
    return (run._losses.sync() && run._log.sync()) || fail(named(run._name + ".losses"));
}

bool CoverageWriter::place(Run& run)
{
    if (!run._losses.commit(placed(run._name + ".losses"))) {
        return fail(named(run._name + ".losses"));
    }
    if (!run._log.commit(placed(run._name + ".log"))) {
        return fail(named(run._name + ".log"));
    }
    ++_runsPlaced;
    return true;
}

bool CoverageWriter::finish()
{
    std::vector<std::unique_ptr<Run>> runs;
    runs.swap(_waiting);
    if (runs.empty()) {
        return true;
    }
    bool isGood = placeMap();
    for (size_t i = 0; i < runs.size() && isGood; ++i) {
        isGood = sync(*runs[i]);
    }
    // The map's name is on the disk before a log's that needs it.
    isGood = isGood && (_folder.sync() || fail(named(_mapName)));
    for (size_t i = 0; i < runs.size() && isGood; ++i) {
        isGood = place(*runs[i]);
    }
    return isGood && (_folder.sync() || fail(named(runs.back()->_name + ".log")));
}
