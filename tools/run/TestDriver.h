// SPDX-License-Identifier: MIT
//
// A command that runs tests, and how it is made to run each behind "zem-run --wrap", which gives
// the test a folder of its own for counters. The driver itself runs once, as it was told to:
// fixtures, order, jobs, time limits and what it prints are its own.
//
//   ctest        gets a folder of tests whose CTestTestfile.cmake reads that of the build, with an
//                add_test() that puts the wrapper before each command
//   meson test   gets --wrapper, unless the command has one; "meson introspect" names its tests
//   others       have the wrapper in their own words; testName() names their tests
#pragma once

#include "tools/run/Environment.h"
#include "tools/run/SignalWatch.h"

#include <string>
#include <vector>

class TestDriver
{
public:
    // Borrows `watch` for its life, and `command`, which ends with null. `self` is the path of
    // zem-run.
    TestDriver(SignalWatch& watch, char** command, const std::string& self);

    // Works out the words to run instead of the command, with the folder `scratch` for files that
    // the driver reads. Returns false with problem() set when the driver cannot be used that way.
    bool prepare(const std::string& scratch, const Environment& environment);

    const std::vector<std::string>& words() const { return _words; }
    const std::string& problem() const { return _problem; }

    // The private folder that the driver takes for that of the tests, and prints, and the one that
    // it stands for; both empty for none. And the files that it prints into, too.
    const std::string& standIn() const { return _standIn; }
    const std::string& folder() const { return _folder; }
    const std::vector<std::string>& logs() const { return _logs; }

private:
    bool prepareCtest(const std::string& scratch, const Environment& environment);
    void prepareMeson(const std::string& scratch, const Environment& environment);
    std::string testFolder(const std::string& scratch, const Environment& environment);
    std::string answerOf(std::vector<std::string> words, const std::string& scratch,
                         const Environment& environment);
    bool writeTests(const std::string& scratch, const std::string& folder);
    void noteLogs();
    void replaceCtestWords(const std::string& scratch, const std::string& folder);

    SignalWatch& _watch;
    std::vector<std::string> _words;
    std::string _self;
    std::string _problem;
    std::string _standIn;
    std::string _folder;
    std::vector<std::string> _logs;
};

// The variable that tells the wrapper where everything is: the path of a CounterFolder.
extern const char* const eachVariable;

// What "zem-run --wrap COMMAND..." does: gives the command a new folder for its counters, named
// after the test, and becomes it. `name` is the test's, null to make one from the command. Outside
// of "zem-run --each" it becomes the command as it is. Returns an exit status where that fails.
int wrapTest(const char* name, char** command);
