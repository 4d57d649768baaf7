// SPDX-License-Identifier: MIT
#include "tools/run/RunSession.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/run/Companion.h"
#include "tools/run/CounterKinds.h"
#include "tools/run/OutputFilter.h"
#include "tools/run/TestDriver.h"
#include "tools/run/TextReplacer.h"
#include "tools/run/logName.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <iostream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int CannotRun = 126; // exit status, as env(1) has it
constexpr int NotFound = 127;

// What a server that the tests started may take to write its counters when it was told to end.
constexpr int PatienceForOthers = 2000; // milliseconds

// With the font that comes with the program's resources, 26 pixels a row: 30 rows and the rest of
// the window.
const char viewerGeometry[] = "900x960";

constexpr size_t MostNames = 8; // in one message

// The names, at most so many of them.
std::string listed(const std::vector<std::string>& names)
{
    std::string text;
    for (size_t i = 0; i < std::min(names.size(), MostNames); ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
    return text + (names.size() > MostNames ? ", ..." : "");
}

std::vector<fs::path> foldersIn(const std::string& parent)
{
    std::vector<fs::path> folders;
    std::error_code failure;
    for (fs::directory_iterator entry(parent, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        folders.push_back(entry->path());
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

} // namespace

RunSession::RunSession(const RunRequest& request)
    : _request(request), _command(_watch), _import(_watch, request)
{}

void RunSession::say(const std::string& text) const
{
    std::cerr << "zem-run: " << qipVisibleText(text.c_str()) << '\n';
}

void RunSession::fail(const std::string& problem)
{
    say(problem);
    _hasFailed = true;
}

// A long run whose counters cannot be kept at its end would be lost.
bool RunSession::checkOutput() const
{
    fs::path folder = fs::path(_request._folder);
    std::error_code failure;
    while (!fs::exists(folder, failure) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    const std::string existing = folder.empty() ? "." : folder.string();
    if (!fs::is_directory(existing, failure)) {
        say("cannot write into " + _request._folder + ": " + existing + " is no folder");
        return false;
    }
    if (access(existing.c_str(), W_OK | X_OK) != 0) {
        say("cannot write into " + _request._folder + ": " + std::strerror(errno));
        return false;
    }
    return true;
}

bool RunSession::checkBuild() const
{
    std::error_code failure;
    if (!_request._build.empty() && !fs::is_directory(_request._build, failure)) {
        say("the build folder is not there: --build " + _request._build);
        return false;
    }
    return true;
}

void RunSession::sayWhatIsReplaced() const
{
    for (const char* name : {"GCOV_PREFIX", "LLVM_PROFILE_FILE"}) {
        const char* value = _environment.value(name);
        if (value != nullptr) {
            say(std::string(name) + "=" + value + " does not hold for the command");
        }
    }
}

bool RunSession::prepare()
{
    if (!checkOutput() || !checkBuild()) {
        return false;
    }
    CounterFolder::removeDead();
    if (!_folder.create()) {
        say(_folder.problem());
        return false;
    }
    TestDriver driver(_watch, _request._command, ownPath());
    if (_request._isEach && !driver.prepare(_folder.driver(), _environment)) {
        say(driver.problem());
        return false;
    }
    _words = driver.words();
    _privateTests = driver.standIn();
    _testFolder = driver.folder();
    _driverLogs = driver.logs();
    sayWhatIsReplaced();
    collectInto(_folder.all(), _environment);
    if (_request._isEach) {
        _environment.set(eachVariable, _folder.path());
    }
    return true;
}

// Returns false with `status` set when the command cannot be run.
bool RunSession::runCommand(int& status)
{
    OutputFilter filter(_privateTests, _testFolder);
    if (!_testFolder.empty()) {
        // Where the driver says that its records are, they shall be.
        filter.start();
        _command.useStreams(filter.output(), filter.error());
    }
    const int failure = _command.start(_words, _environment, Process::Shared);
    filter.close();
    if (failure != 0) {
        say("cannot run " + _words[0] + ": " + std::strerror(failure));
        status = failure == ENOENT ? NotFound : CannotRun;
        return false;
    }
    _command.wait();
    return true;
}

void RunSession::watchForOthers()
{
    if (!_command.waitForOthers(PatienceForOthers)) {
        say("processes that the command started still run; what they run is not in the log");
    }
    for (const std::string& log : _driverLogs) {
        replaceInFile(log, _privateTests, _testFolder);
    }
}

void RunSession::importTests()
{
    std::vector<std::string> without;
    std::vector<std::string> with;
    const std::vector<fs::path> tests = foldersIn(_folder.each());
    for (const fs::path& test : tests) {
        if (CounterKinds::in(test.string()).any()) {
            with.push_back(test.string());
        } else {
            without.push_back(test.filename().string());
        }
    }
    _import.addEach(with);
    if (tests.empty()) {
        fail("no test was started by \"zem-run --wrap\", so there is no log for each");
    } else if (!without.empty()) {
        say(std::to_string(without.size()) + " tests left no counters: " + listed(without));
    }
}

void RunSession::importAll()
{
    if (_request._isEach) {
        importTests();
    }
    if (CounterKinds::in(_folder.all()).any()) {
        if (_request._isEach) {
            say("what ran outside of the tests is in the log " + _request._name);
        }
        _import.add(_folder.all(), _request._name);
    }
    if (_import.logs().empty() && !_import.hasFailed()) {
        fail("the command left no counters: were its programs built with --coverage, or by clang++ "
             "with -fprofile-instr-generate -fcoverage-mapping, and did they end by themselves?");
    }
    _hasFailed = _hasFailed || _import.hasFailed();
    if (!_folder.remove()) {
        fail(_folder.problem());
    }
}

void RunSession::sayLogs() const
{
    const std::vector<std::string>& logs = _import.logs();
    if (logs.empty()) {
        return;
    }
    std::string words;
    for (const std::string& log : logs) {
        words += " " + shellWord(log);
    }
    if (logs.size() > MostNames) {
        words = " " + shellWord(_request._folder) + "/*.log";
    }
    say("wrote " + (logs.size() == 1 ? logs[0] : std::to_string(logs.size()) + " logs") +
        "; to look: zem" + words);
}

void RunSession::view()
{
    std::vector<std::string> words = {companion("zem"), "-geometry", viewerGeometry};
    words.insert(words.end(), _import.logs().begin(), _import.logs().end());
    Environment environment;
    Process viewer(_watch);
    const int failure = viewer.start(words, environment, Process::Shared);
    if (failure != 0) {
        fail("cannot run " + words[0] + ": " + std::strerror(failure));
        return;
    }
    viewer.wait();
    if (viewer.status() != 0 && viewer.interrupt() == 0) {
        fail("the viewer ended with status " + std::to_string(viewer.status()));
    }
}

int RunSession::end() const
{
    if (_command.killer() != 0) {
        SignalWatch::endBy(_command.killer());
    }
    if (_command.status() != 0) {
        return _command.status();
    }
    if (_import.interrupt() != 0) {
        SignalWatch::endBy(_import.interrupt());
    }
    return _hasFailed ? NoCoverage : 0;
}

int RunSession::run()
{
    int status = 0;
    if (!prepare()) {
        return NoCoverage;
    }
    if (!runCommand(status)) {
        return status;
    }
    if (_command.interrupts() > 1) {
        (void)_folder.remove();
        SignalWatch::endBy(SIGINT);
    }
    watchForOthers();
    importAll();
    sayLogs();
    const int interrupt = _command.interrupt();
    if (_request._isViewed && !_import.logs().empty() && _import.interrupt() == 0 &&
        (interrupt == 0 || interrupt == SIGINT)) {
        view();
    }
    return end();
}
