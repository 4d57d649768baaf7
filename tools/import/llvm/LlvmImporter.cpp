// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmImporter.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/FolderWalk.h"
#include "tools/common/Progress.h"
#include "tools/common/SourcePath.h"
#include "tools/common/WorkOn.h"
#include "tools/import/isBuildProbe.h"
#include "tools/import/llvm/ElfFile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <utility>

namespace {

// No profile is larger; a sparse file can be.
constexpr uint64_t LargestProfile = uint64_t(4) << 30;

// Of a folder that may hold anything.
constexpr size_t MostFilesLookedInto = 20000;

// Whether it is a program, library or object with a coverage map.
bool hasMap(const std::string& path, LlvmInputs::Kind kind)
{
    ElfFile file;
    return (kind == LlvmInputs::Elf || kind == LlvmInputs::Object) && file.open(path) &&
           file.find("__llvm_covmap") != nullptr;
}

bool complain(const std::string& path, const std::string& problem)
{
    std::cerr << "zem-import: " << qipVisibleText(path.c_str()) << ": "
              << qipVisibleText(problem.c_str()) << '\n';
    return false;
}

// What `bytes` held goes. Their memory is used again as it is: for profiles of one program, one
// after the other, none of it is filled with zeros first.
// Returns false with a line on the standard error stream.
bool readAll(const std::string& path, std::string& bytes)
{
    InputFile file;
    std::string head;
    if (!file.openToWatch(path) || !file.append(head, RawProfile::HeadSize)) {
        return complain(path, file.problem());
    }
    if (!head.empty() && !RawProfile::isRaw(head.data(), head.size())) {
        bytes.swap(head);
        return true; // whatever it is, its end is not wanted
    }
    if (file.size() > LargestProfile) {
        return complain(path, "is larger than " + std::to_string(LargestProfile >> 30) +
                                  " GiB: no raw profile of one run is");
    }
    bytes.resize(static_cast<size_t>(file.size()));
    return (file.fill(0, bytes.size(), &bytes[0]) && file.isUnchanged()) ||
           complain(path, file.problem());
}

// How often the file has a profile of one program or library: processes that forked, and such that
// wrote their counters more than once, add profiles to it.
size_t timesOfOneImage(const RawProfile& profile)
{
    std::map<std::pair<std::vector<std::string>, size_t>, size_t> times;
    size_t most = 0;
    for (const ProfilePart& part : profile.parts()) {
        size_t& seen = times[{part._binaryIds, part._records.size()}];
        most = std::max(most, ++seen);
    }
    return most;
}

const char* textOf(RawProfile::Result result)
{
    switch (result) {
    case RawProfile::Empty:
        return "is empty: the program did not write its profile; it crashed, was killed or called "
               "_exit(). Run it again, or with LLVM_PROFILE_FILE=%p%c.profraw";
    case RawProfile::NotRaw:
        return "is no profile of clang++ -fprofile-instr-generate, and no program";
    case RawProfile::LeftOut:
        return "holds counters without functions: name the program that wrote it, built with "
               "-profile-correlate=binary";
    case RawProfile::UnknownVersion:
        return "is of a version that is not known: try --via-llvm-cov";
    default:
        return "is damaged or cut short: run the program again";
    }
}

} // namespace

int LlvmImporter::option(char** words)
{
    if (std::strcmp(words[0], "--merge") == 0) {
        _isMerged = true;
        return 1;
    }
    if (std::strcmp(words[0], "--via-llvm-cov") == 0) {
        _usesTools = true;
        return 1;
    }
    if (std::strcmp(words[0], "--each-run") == 0) {
        _keepsRunsApart = true;
        return 1;
    }
    if (words[1] != nullptr && std::strcmp(words[0], "--run") == 0) {
        _folders.push_back(words[1]);
        return 2;
    }
    if (words[1] != nullptr && std::strcmp(words[0], "--llvm-cov") == 0) {
        _tools.useCov(words[1]);
        return 2;
    }
    if (words[1] != nullptr && std::strcmp(words[0], "--llvm-profdata") == 0) {
        _tools.useProfdata(words[1]);
        return 2;
    }
    return 0;
}

void LlvmImporter::input(const char* word)
{
    _words.emplace_back(word);
}

void LlvmImporter::usage(std::ostream& out) const
{
    out << "  --merge          one log with the sum of all profiles\n"
           "  --run DIR        take the profiles of one run from DIR; those of several runs are "
           "added up\n"
           "  --each-run       write a log for each --run DIR, named after it\n"
           "  --via-llvm-cov   let llvm-profdata and llvm-cov read everything\n"
           "  --llvm-cov PROGRAM, --llvm-profdata PROGRAM\n"
           "                   the ones to ask (default: what fits the profile, the newest "
           "first)\n";
}

// A folder whose tests have not run yet has programs and no profile.
bool LlvmImporter::recognises(const char* path) const
{
    if (!LlvmInputs::isFolder(path)) {
        const LlvmInputs::Kind kind = LlvmInputs::kindOf(path);
        return kind == LlvmInputs::Raw || kind == LlvmInputs::Indexed || hasMap(path, kind);
    }
    FolderWalk walk(path);
    std::vector<std::string> files;
    while (walk.next()) {
        if (LlvmInputs::hasProfileName(walk.path())) {
            return true;
        }
        if (files.size() < MostFilesLookedInto && walk.isFile() && !isBuildProbe(walk.path())) {
            files.push_back(walk.path());
        }
    }
    return std::any_of(files.begin(), files.end(), [](const std::string& file) {
        return hasMap(file, LlvmInputs::kindOf(file));
    });
}

bool LlvmImporter::findInputs(ImportLosses& losses)
{
    bool isGood = true;
    for (const std::string& word : _words) {
        isGood = _inputs.add(word) && isGood;
    }
    _inputs.problems().report(losses);
    if (!isGood) {
        return false;
    }
    if (_inputs.binaries().empty() && _inputs.objects().empty()) {
        std::cerr << "zem-import: no program among the inputs: name the program or library that "
                     "wrote the profiles, or a folder that holds it\n";
        return false;
    }
    return findRuns(losses);
}

// The profiles of each folder that --run names are one log, or all of them are.
bool LlvmImporter::findFolderRuns(ImportLosses& losses)
{
    bool isAny = false;
    for (const char* folder : _folders) {
        LlvmInputs found;
        const bool isRead = found.add(folder);
        found.problems().report(losses);
        if (!isRead) {
            return false;
        }
        std::error_code failure;
        const std::filesystem::path real = std::filesystem::canonical(folder, failure);
        if (_keepsRunsApart || _runs.empty()) {
            _runs.push_back({_keepsRunsApart ? real.filename().string() : "", {}});
        }
        std::vector<std::string>& profiles = _runs.back()._profiles;
        profiles.insert(profiles.end(), found.profiles().begin(), found.profiles().end());
        isAny = isAny || !found.profiles().empty();
    }
    return isAny || complain(_folders.front(), "no .profraw file in the run folder");
}

// A log for each profile, one for all with --merge, or those of the folders that --run names. One
// run has the name of the import; several have those of their files.
bool LlvmImporter::findRuns(ImportLosses& losses)
{
    const std::vector<std::string>& profiles = _inputs.profiles();
    if (_keepsRunsApart && _folders.empty()) {
        std::cerr << "zem-import: --each-run wants the folders of runs: --run DIR\n";
        return false;
    }
    if (!_folders.empty()) {
        return findFolderRuns(losses);
    }
    if (profiles.empty()) {
        std::cerr << "zem-import: no .profraw file among the inputs: run the program with "
                     "LLVM_PROFILE_FILE=NAME.profraw and name that file or its folder\n";
        return false;
    }
    if (_isMerged || profiles.size() == 1) {
        _runs.push_back({"", profiles});
        return true;
    }
    for (const std::string& path : profiles) {
        const std::string name = path.substr(path.rfind('/') + 1);
        _runs.push_back(
            {LlvmInputs::hasProfileName(name) ? name.substr(0, name.rfind('.')) : name, {path}});
    }
    return true;
}

std::vector<std::string> LlvmImporter::allProfiles() const
{
    std::vector<std::string> all;
    for (const Run& run : _runs) {
        all.insert(all.end(), run._profiles.begin(), run._profiles.end());
    }
    return all;
}

// A file of debug information has the map and lacks the names, which profiles have, too.
void LlvmImporter::addNames(CoverageImage& image) const
{
    for (const std::string& path : allProfiles()) {
        std::string bytes;
        RawProfile profile;
        if (image.lacksNames() && readAll(path, bytes) &&
            profile.read(bytes, {}) == RawProfile::Ok) {
            for (const ProfilePart& part : profile.parts()) {
                (void)image.addNames(part._names);
            }
        }
    }
}

// Returns false when the file is damaged.
bool LlvmImporter::readImage(const LlvmInputs::Binary& binary, ImportLosses& losses)
{
    const WorkOn work("reading ", binary._path);
    auto image = std::make_unique<CoverageImage>();
    switch (image->read(binary._path)) {
    case CoverageImage::Ok:
        if (image->lacksNames()) {
            addNames(*image);
        }
        _toolBinaries.push_back(binary._path);
        _read.push_back(std::move(image));
        return true;
    case CoverageImage::NoCoverage:
        return !binary._isNamed ||
               complain(binary._path, "was not built with clang++ -fprofile-instr-generate "
                                      "-fcoverage-mapping");
    case CoverageImage::Stripped:
        _stripped = _stripped.empty() ? binary._path : _stripped;
        return !binary._isNamed ||
               complain(binary._path, "has no coverage map (built without -fcoverage-mapping, or "
                                      "llvm-strip took it): name the file before it was stripped");
    case CoverageImage::UnknownVersion:
        _usesTools = true;
        _toolBinaries.push_back(binary._path);
        return true;
    case CoverageImage::Failed:
        break;
    }
    if (binary._isNamed) {
        return complain(binary._path, image->problem());
    }
    // A folder holds files of all kinds.
    ++losses._failedUnits;
    (void)complain(binary._path, image->problem());
    return true;
}

bool LlvmImporter::readImages(const std::vector<LlvmInputs::Binary>& binaries, ImportLosses& losses)
{
    Progress progress("Reading programs", binaries.size());
    for (const LlvmInputs::Binary& binary : binaries) {
        if (!readImage(binary, losses)) {
            return false;
        }
        progress.step();
    }
    return true;
}

// Finds out what is known of the profiles before they are read.
void LlvmImporter::lookAtProfiles(ImportedBuild& build)
{
    for (const std::string& path : allProfiles()) {
        InputFile file;
        std::string head;
        if (!file.open(path) || !file.append(head, RawProfile::HeadSize)) {
            continue; // said when it is read
        }
        const bool isRaw = RawProfile::isRaw(head.data(), head.size());
        build._isBoolean = build._isBoolean || RawProfile::isSingleByte(head.data(), head.size());
        _usesTools =
            _usesTools || RawProfile::isIndexed(head.data(), head.size()) ||
            (isRaw && head.size() > 16 && !RawProfile::isKnown(head.data(), head.size())) ||
            LlvmInputs::hasTextName(path);
    }
}

// The functions come with the counts of the first run that can be read.
bool LlvmImporter::readImagesByTools()
{
    for (size_t run = 0; run < runs(); ++run) {
        auto image = std::make_unique<CoverageImage>();
        _toolRun = std::make_unique<ExportedImage>(image.get());
        const std::vector<std::string>& profiles = _runs[run]._profiles;
        if (!profiles.empty() && _tools.read(_toolBinaries, profiles, *_toolRun)) {
            _toolRunNumber = run;
            _build.add(std::move(image));
            return true;
        }
    }
    return complain(allProfiles().front(), _tools.problem());
}

bool LlvmImporter::readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    if (!findInputs(losses) || !readImages(_inputs.binaries(), losses) ||
        (_toolBinaries.empty() && !readImages(_inputs.objects(), losses))) {
        return false;
    }
    if (_toolBinaries.empty()) {
        if (!_stripped.empty()) {
            return complain(_stripped, "has no coverage map (built without -fcoverage-mapping, or "
                                       "llvm-strip took it)");
        }
        std::cerr << "zem-import: no program with a coverage map found; was it built with clang++ "
                     "-fprofile-instr-generate -fcoverage-mapping?\n";
        return false;
    }
    lookAtProfiles(build);
    if (_usesTools && !readImagesByTools()) {
        return false;
    }
    for (std::unique_ptr<CoverageImage>& image : _read) {
        if (!_usesTools) {
            _build.add(std::move(image));
        }
    }
    _read.clear();
    _build.read(build, losses, nThreads);
    _counters = std::make_unique<RunCounters>(_build.plan());
    return true;
}

// Files of one build carry one number; a profile that has another was written by another build,
// whose lines may be elsewhere.
bool LlvmImporter::isOfBuild(const ProfilePart& part) const
{
    if (part._binaryIds.empty()) {
        return true;
    }
    for (const CoverageImage* image : _build.images()) {
        const std::string& id = image->buildId();
        if (id.empty() || std::find(part._binaryIds.begin(), part._binaryIds.end(), id) !=
                              part._binaryIds.end()) {
            return true;
        }
    }
    return false;
}

bool LlvmImporter::addParts(const std::string& path, const RawProfile& profile,
                            ImportLosses& losses)
{
    RunCounters::Found found;
    uint64_t others = 0;
    for (size_t i = 0; i < profile.parts().size(); ++i) {
        if (isOfBuild(profile.parts()[i])) {
            _counters->add(profile.parts()[i], i, found);
        } else {
            ++others;
        }
    }
    losses._profilesOfOthers += others;
    _addedRuns += timesOfOneImage(profile);
    losses._staleFunctions += found._otherHash + found._otherCount;
    if (others == profile.parts().size()) {
        return complain(path, "was written by another build of the program, or by a program that "
                              "is not among the inputs: run the tests again, or name that program");
    }
    return found._functions != 0 ||
           complain(path, "none of its functions is in the programs: name the program that wrote "
                          "it, or run the tests again");
}

bool LlvmImporter::readProfile(const std::string& path, ImportLosses& losses)
{
    const WorkOn work("reading ", path);
    if (!readAll(path, _bytes)) {
        return false;
    }
    const RawProfile::Result result = _profile.read(_bytes, _build.images());
    return result == RawProfile::Ok ? addParts(path, _profile, losses)
                                    : complain(path, textOf(result));
}

bool LlvmImporter::readRunByTools(size_t run, ImportLosses& losses)
{
    std::unique_ptr<ExportedImage> other;
    ExportedImage* exported = _toolRun.get();
    if (run != _toolRunNumber || exported == nullptr) {
        other = std::make_unique<ExportedImage>(nullptr);
        exported = other.get();
        const std::vector<std::string>& profiles = _runs[run]._profiles;
        if (!_tools.read(_toolBinaries, profiles, *exported)) {
            return complain(profiles.front(), _tools.problem());
        }
    }
    RunCounters::Found found;
    _counters->add(exported->part(), 0, found);
    losses._staleFunctions += found._otherHash + found._otherCount;
    if (other == nullptr) {
        _toolRun.reset();
    }
    return true;
}

bool LlvmImporter::readRun(size_t run, ImportedRun& result, ImportLosses& losses,
                           unsigned int nThreads)
{
    _counters->clear();
    _addedRuns = 0;
    const std::vector<std::string>& profiles = _runs[run]._profiles;
    if (profiles.empty()) {
        return complain(_folders[run], "no .profraw file in the run folder");
    }
    size_t isRead = 0;
    for (size_t i = 0; i < profiles.size(); ++i) {
        const std::string& path = profiles[i];
        const bool isGood = !_usesTools ? readProfile(path, losses)
                            : i == 0    ? readRunByTools(run, losses)
                                        : isRead != 0;
        if (isGood) {
            ++isRead;
            result._executionTime = std::max(result._executionTime, modificationTime(path));
        } else {
            ++losses._failedUnits;
        }
    }
    if (isRead == 0) {
        return false;
    }
    losses._mostRuns = std::max<uint64_t>(losses._mostRuns, std::max(isRead, _addedRuns));
    result._name = _runs[run]._name;
    losses._staleFunctions += _counters->evaluate(result._counts, nThreads);
    return true;
}
