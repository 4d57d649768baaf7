// SPDX-License-Identifier: MIT
#include "tools/run/TestDriver.h"

#include "qip/Support/qipVisibleText.h"
#include "tools/common/SourcePath.h"
#include "tools/run/Process.h"
#include "tools/run/logName.h"
#include "tools/run/mesonNames.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

const char* const eachVariable = "ZEM_RUN_EACH";

namespace {

namespace fs = std::filesystem;

// In the folder of counters.
const char eachFolder[] = "/each";
const char driverFolder[] = "/driver";
const char namesFile[] = "/names"; // in the driver's

// Tests that were not built keep their command, so that ctest says what it has to say of them.
const char testFile[] =
    R"cmake(# Made by zem-run: the tests of a build, each with a folder of its own for counters.
function(add_test)
  set(words "")
  math(EXPR last "${ARGC} - 1")
  foreach(i RANGE ${last})
    string(APPEND words " [======[\n${ARGV${i}}]======]")
    if(i EQUAL 0 AND NOT "${ARGV1}" STREQUAL "NOT_AVAILABLE" AND
       (NOT IS_ABSOLUTE "${ARGV1}" OR EXISTS "${ARGV1}"))
      string(APPEND words " [======[\n${zem_run}]======] --wrap --name [======[\n${ARGV0}]======] --")
    endif()
  endforeach()
  cmake_language(EVAL CODE "_add_test(${words})")
endfunction()
)cmake";

// Modes of ctest that do more or other things than to run the tests of one folder; a preset names
// the folder itself and lets no other one in.
const char* const otherModes[] = {"-S",
                                  "--script",
                                  "-SP",
                                  "--script-new-process",
                                  "-D",
                                  "--dashboard",
                                  "-M",
                                  "--test-model",
                                  "-T",
                                  "--test-action",
                                  "--build-and-test",
                                  "--preset",
                                  "--list-presets",
                                  nullptr};

bool isOneOf(const std::string& word, const char* const* words)
{
    while (*words != nullptr && word != *words) {
        ++words;
    }
    return *words != nullptr;
}

// Whether an option of ctest names a file that counts from the folder of tests.
bool takesFile(const std::string& option)
{
    const std::string end = "-file";
    const bool hasEnd = option.size() > end.size() &&
                        option.compare(option.size() - end.size(), end.size(), end) == 0;
    return hasEnd || option == "--output-junit";
}

std::string quotedForCmake(const std::string& text)
{
    return "[======[\n" + text + "]======]";
}

bool writeFile(const std::string& path, const std::string& text, std::string& problem)
{
    std::ofstream file(path);
    file << text;
    file.close();
    if (!file) {
        problem = "cannot write " + path + ": " + std::strerror(errno);
    }
    return static_cast<bool>(file);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// The driver's name for the test with this command, else one made from the command.
std::string nameOf(const std::string& counters, char* const* command)
{
    const std::string name = mesonName(readFile(counters + driverFolder + namesFile), command);
    return name.empty() ? testName(command) : logName(name);
}

// Makes a folder with this name, or with "-2", "-3" behind it when that is taken. Returns its path,
// empty with errno set when the system refuses.
std::string newFolder(const std::string& parent, const std::string& name)
{
    for (unsigned i = 1;; ++i) {
        std::string path = parent;
        path.append("/").append(name);
        path.append(i == 1 ? "" : "-" + std::to_string(i));
        if (mkdir(path.c_str(), 0777) == 0) {
            return path;
        }
        if (errno != EEXIST) {
            return "";
        }
    }
}

} // namespace

TestDriver::TestDriver(SignalWatch& watch, char** command, const std::string& self)
    : _watch(watch), _self(self)
{
    for (; *command != nullptr; ++command) {
        _words.emplace_back(*command);
    }
}

bool TestDriver::prepare(const std::string& scratch, const Environment& environment)
{
    const std::string name = baseName(_words[0]);
    if (name == "ctest") {
        return prepareCtest(scratch, environment);
    }
    if (name == "meson" && _words.size() > 1 && _words[1] == "test") {
        prepareMeson(scratch, environment);
    }
    return true;
}

// What a program prints on its standard output.
std::string TestDriver::answerOf(std::vector<std::string> words, const std::string& scratch,
                                 const Environment& environment)
{
    const std::string answer = scratch + "/answer";
    words.insert(words.begin(), {"sh", "-c", "exec \"$@\" >\"$0\"", answer});
    Environment plain = environment;
    Process program(_watch);
    if (program.start(words, plain, Process::OnStandardError) == 0) {
        program.wait();
    }
    return readFile(answer);
}

// Meson splits the wrapper as a shell does.
void TestDriver::prepareMeson(const std::string& scratch, const Environment& environment)
{
    bool hasWrapper = false;
    std::string build = ".";
    for (size_t i = 2; i < _words.size(); ++i) {
        const std::string option = _words[i].substr(0, _words[i].find('='));
        hasWrapper = hasWrapper || option == "--wrapper" || option == "--wrap";
        if (_words[i] == "-C" && i + 1 < _words.size()) {
            build = _words[i + 1];
        } else if (_words[i].rfind("-C", 0) == 0) {
            build = _words[i].substr(2);
        }
    }
    if (!hasWrapper) {
        _words.insert(_words.begin() + 2, {"--wrapper", shellWord(_self) + " --wrap"});
    }
    // Without names the commands name the tests.
    const std::string answer =
        answerOf({_words[0], "introspect", "--tests", build}, scratch, environment);
    std::string ignored;
    (void)writeFile(scratch + namesFile, mesonNames(answer), ignored);
}

// Asks ctest itself, which knows all the ways to name a folder. Empty with problem() set when there
// is no answer.
std::string TestDriver::testFolder(const std::string& scratch, const Environment& environment)
{
    std::vector<std::string> words = _words;
    words.emplace_back("-N"); // only the list is wanted, and none of its tests
    const char start[] = "Test project ";
    std::istringstream lines(answerOf(words, scratch, environment));
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(start, 0) == 0) {
            return line.substr(sizeof start - 1);
        }
    }
    _problem = "ctest does not say where the tests are: " + shellWord(_words[0]) + " ... -N";
    return "";
}

bool TestDriver::writeTests(const std::string& scratch, const std::string& folder)
{
    std::error_code ignored; // ctest makes what is missing
    fs::create_directories(folder + "/Testing", ignored);
    // Its own records are where they are without zem-run, for --rerun-failed.
    fs::create_directory_symlink(folder + "/Testing", scratch + "/Testing", ignored);
    std::string configuration;
    std::ifstream lines(folder + "/DartConfiguration.tcl");
    for (std::string line; std::getline(lines, line);) {
        configuration += line.rfind("BuildDirectory:", 0) == 0 ? "" : line + "\n";
    }
    return writeFile(scratch + "/CTestTestfile.cmake",
                     "set(zem_run " + quotedForCmake(_self) + ")\n" + testFile + "subdirs(" +
                         quotedForCmake(folder) + ")\n",
                     _problem) &&
           writeFile(scratch + "/CTestCustom.cmake",
                     "include(" + quotedForCmake(folder + "/CTestCustom.cmake") + " OPTIONAL)\n",
                     _problem) &&
           writeFile(scratch + "/DartConfiguration.tcl", configuration, _problem);
}

void TestDriver::replaceCtestWords(const std::string& scratch, const std::string& folder)
{
    std::vector<std::string> words = {_words[0], "--test-dir", scratch};
    for (size_t i = 1; i < _words.size(); ++i) {
        const std::string& word = _words[i];
        const size_t equals = word.find('=');
        const std::string option = word.substr(0, equals);
        if (option == "--test-dir") {
            i += equals == std::string::npos ? 1 : 0;
        } else if (takesFile(option) && equals != std::string::npos) {
            words.push_back(option + "=" + absolutePath(folder, word.substr(equals + 1)));
        } else if (takesFile(option) && i + 1 < _words.size()) {
            words.push_back(option);
            words.push_back(absolutePath(folder, _words[++i]));
        } else {
            words.push_back(word);
        }
    }
    _words = words;
    noteLogs();
}

// What ctest prints goes into a file as well: -O FILE, --output-log FILE, --output-log=FILE.
void TestDriver::noteLogs()
{
    for (size_t i = 1; i < _words.size(); ++i) {
        const size_t equals = _words[i].find('=');
        const std::string option = _words[i].substr(0, equals);
        if (option == "-O" || option == "--output-log") {
            const bool isNext = equals == std::string::npos;
            _logs.push_back(!isNext                 ? _words[i].substr(equals + 1)
                            : i + 1 < _words.size() ? _words[i + 1]
                                                    : "");
        }
    }
}

bool TestDriver::prepareCtest(const std::string& scratch, const Environment& environment)
{
    for (const std::string& word : _words) {
        if (isOneOf(word.substr(0, word.find('=')), otherModes)) {
            _problem = "--each cannot see the tests behind ctest's option " + word +
                       ": name the folder of the build, ctest --test-dir DIR";
            return false;
        }
    }
    const std::string folder = testFolder(scratch, environment);
    if (folder.empty() || !writeTests(scratch, folder)) {
        return false;
    }
    // As ctest prints it, whatever links lead to it.
    std::error_code failure;
    const fs::path real = fs::canonical(scratch, failure);
    _standIn = failure ? scratch : real.string();
    _folder = folder;
    replaceCtestWords(_standIn, folder);
    return true;
}

int wrapTest(const char* name, char** command)
{
    const char* counters = std::getenv(eachVariable);
    Environment environment;
    if (counters != nullptr && counters[0] != '\0') {
        const std::string folder =
            newFolder(counters + std::string(eachFolder),
                      name != nullptr ? logName(name) : nameOf(counters, command));
        if (folder.empty()) {
            std::cerr << "zem-run: cannot make a folder for the counters of "
                      << qipVisibleText(command[0]) << " in " << counters << ": "
                      << std::strerror(errno) << '\n';
            return 125;
        }
        collectInto(folder, environment);
    }
    char** variables = environment.words();
    execvpe(command[0], command, variables);
    // What ctest finds in the folder where it runs the test has no slash either.
    const std::string here = std::string("./") + command[0];
    if (errno == ENOENT && std::strchr(command[0], '/') == nullptr) {
        execve(here.c_str(), command, variables);
    }
    const int reason = errno;
    std::cerr << "zem-run: cannot run " << qipVisibleText(command[0]) << ": "
              << std::strerror(reason) << '\n';
    return reason == ENOENT ? 127 : 126;
}
