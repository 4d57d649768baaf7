// SPDX-License-Identifier: MIT
#include "tools/run/CounterImport.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/run/Companion.h"
#include "tools/run/Process.h"
#include "tools/run/coveredPrograms.h"
#include "tools/run/logName.h"

#include <cstring>
#include <filesystem>
#include <iostream>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

// As many as surely fit into the words of one process.
constexpr size_t MostRuns = 2000;

// Where a build is looked for when none is named.
const char* const usualBuilds[] = {"build", "."};

// What tells one state of a file from another.
struct FileState
{
    explicit FileState(const std::string& path)
    {
        struct stat status = {};
        if (stat(path.c_str(), &status) == 0) {
            _inode = status.st_ino;
            _seconds = status.st_ctim.tv_sec;
            _nanoseconds = status.st_ctim.tv_nsec;
        }
    }

    bool operator==(const FileState& other) const
    {
        return _inode == other._inode && _seconds == other._seconds &&
               _nanoseconds == other._nanoseconds;
    }

    ino_t _inode = 0;
    time_t _seconds = 0;
    long _nanoseconds = 0;
};

} // namespace

void CounterImport::fail(const std::string& problem)
{
    std::cerr << "zem-run: " << qipVisibleText(problem.c_str()) << '\n';
    _hasFailed = true;
}

bool CounterImport::findBuild()
{
    if (_build.empty()) {
        _build = _request._build;
    }
    for (const char* folder : usualBuilds) {
        if (_build.empty() && holdsFile(folder, ".gcno")) {
            _build = folder;
        }
    }
    if (_build.empty()) {
        fail("there are counters, but no .gcno file of their build in the current folder or in "
             "build: name its folder with --build DIR");
    }
    return !_build.empty();
}

bool CounterImport::findBinaries()
{
    if (_binaries.empty()) {
        _binaries = _request._binaries;
    }
    if (_binaries.empty() && !_request._build.empty()) {
        _binaries = coveredPrograms(_request._build);
    }
    for (const char* folder : usualBuilds) {
        if (_binaries.empty() && _request._build.empty()) {
            _binaries = coveredPrograms(folder);
        }
    }
    if (_binaries.empty()) {
        fail("there are counters, but no program with a coverage map (clang++ "
             "-fprofile-instr-generate -fcoverage-mapping) in " +
             (_request._build.empty() ? "the current folder or in build" : _request._build) +
             ": name them with --binary FILE, or their folder with --build DIR");
    }
    return !_binaries.empty();
}

// Runs zem-import with these words and what all kinds have in common, and looks which of the logs
// it has written.
void CounterImport::import(std::vector<std::string> words, const std::string& name,
                           const std::vector<std::string>& logNames)
{
    words.insert(words.begin(), companion("zem-import"));
    words.insert(words.end(), {"-o", _request._folder, "--name", name});
    words.insert(words.end(), _request._importWords.begin(), _request._importWords.end());
    std::vector<FileState> before;
    before.reserve(logNames.size());
    for (const std::string& logName : logNames) {
        before.emplace_back(_request._folder + "/" + logName + ".log");
    }
    Process process(_watch);
    const int failure = process.start(words, _environment, Process::OnStandardError);
    if (failure != 0) {
        fail("cannot run " + words[0] + ": " + std::strerror(failure));
        return;
    }
    process.wait();
    _interrupt = process.interrupt();
    size_t nWritten = 0;
    for (size_t i = 0; i < logNames.size(); ++i) {
        const std::string log = _request._folder + "/" + logNames[i] + ".log";
        if (FileState(log) == before[i]) {
            fail("no log was written: " + log);
        } else {
            _logs.push_back(log);
            ++nWritten;
        }
    }
    if (process.status() != 0 && nWritten == logNames.size()) {
        fail("the import was not complete: " +
             (nWritten == 1 ? _logs.back() : std::to_string(nWritten) + " logs"));
    }
}

void CounterImport::addGcc(const std::string& folder, const std::string& name)
{
    if (findBuild()) {
        import({"gcc", _build, "--run", folder}, name, {name});
    }
}

// The build is read once for all. `words` name the kind and the build.
void CounterImport::importEach(const std::vector<std::string>& words,
                               const std::vector<std::string>& folders)
{
    for (size_t i = 0; i < folders.size() && _interrupt == 0;) {
        std::vector<std::string> all = words;
        all.emplace_back("--each-run");
        std::vector<std::string> names;
        for (; i < folders.size() && names.size() < MostRuns; ++i) {
            all.insert(all.end(), {"--run", folders[i]});
            names.push_back(baseName(folders[i]));
        }
        import(all, _request._name, names);
    }
}

std::vector<std::string> CounterImport::llvmWords() const
{
    std::vector<std::string> words = {"llvm"};
    words.insert(words.end(), _binaries.begin(), _binaries.end());
    return words;
}

void CounterImport::addLlvm(const std::string& folder, const std::string& name)
{
    if (findBinaries()) {
        std::vector<std::string> words = llvmWords();
        words.insert(words.end(), {"--run", folder});
        import(words, name, {name});
    }
}

void CounterImport::add(const std::string& folder, const std::string& name)
{
    const CounterKinds kinds = CounterKinds::in(folder);
    if (kinds._hasGcc && _interrupt == 0) {
        addGcc(folder, kinds.both() ? name + "-gcc" : name);
    }
    if (kinds._hasLlvm && _interrupt == 0) {
        addLlvm(folder, kinds.both() ? name + "-llvm" : name);
    }
}

// Moves the counters of both compilers apart, each into a folder with the name of its log.
bool CounterImport::splitKinds(std::string& folder, std::string& llvmFolder)
{
    std::error_code failure;
    llvmFolder = folder + "-llvm";
    fs::create_directory(llvmFolder, failure);
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (entry->path().extension() == ".profraw") {
            fs::rename(entry->path(), fs::path(llvmFolder) / entry->path().filename(), failure);
        }
    }
    if (!failure) {
        fs::rename(folder, folder + "-gcc", failure);
    }
    if (failure) {
        fail("cannot tell the counters of both compilers apart: " + failure.message());
    }
    folder += "-gcc";
    return !failure;
}

void CounterImport::addEach(const std::vector<std::string>& folders)
{
    std::vector<std::string> ofGcc;
    std::vector<std::string> ofLlvm;
    for (std::string folder : folders) {
        const CounterKinds kinds = CounterKinds::in(folder);
        std::string llvmFolder = folder;
        if (kinds.both() && !splitKinds(folder, llvmFolder)) {
            continue;
        }
        if (kinds._hasGcc) {
            ofGcc.push_back(folder);
        }
        if (kinds._hasLlvm) {
            ofLlvm.push_back(llvmFolder);
        }
    }
    if (!ofGcc.empty() && findBuild()) {
        importEach({"gcc", _build}, ofGcc);
    }
    if (!ofLlvm.empty() && findBinaries()) {
        importEach(llvmWords(), ofLlvm);
    }
}
