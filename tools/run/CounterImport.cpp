// SPDX-License-Identifier: MIT
#include "tools/run/CounterImport.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/run/Companion.h"
#include "tools/run/Process.h"
#include "tools/run/coveredPrograms.h"

#include <cstring>
#include <iostream>
#include <sys/stat.h>

namespace {

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

// Runs zem-import with these words and what all kinds have in common.
void CounterImport::import(std::vector<std::string> words, const std::string& name)
{
    words.insert(words.begin(), companion("zem-import"));
    words.insert(words.end(), {"-o", _request._folder, "--name", name});
    words.insert(words.end(), _request._importWords.begin(), _request._importWords.end());
    const std::string log = _request._folder + "/" + name + ".log";
    const FileState before(log);
    Process process(_watch);
    const int failure = process.start(words, _environment, Process::OnStandardError);
    if (failure != 0) {
        fail("cannot run " + words[0] + ": " + std::strerror(failure));
        return;
    }
    process.wait();
    _interrupt = process.interrupt();
    if (!(FileState(log) == before)) {
        _logs.push_back(log);
    }
    if (process.status() != 0) {
        fail(_logs.empty() || _logs.back() != log ? "no log was written: " + log
                                                  : "the log is not complete: " + log);
    }
}

void CounterImport::addGcc(const std::string& folder, const std::string& name)
{
    if (findBuild()) {
        import({"gcc", _build, "--run", folder}, name);
    }
}

void CounterImport::addLlvm(const std::string& folder, const std::string& name)
{
    if (!findBinaries()) {
        return;
    }
    std::vector<std::string> words = {"llvm", "--merge"};
    words.insert(words.end(), _binaries.begin(), _binaries.end());
    words.push_back(folder);
    import(words, name);
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
