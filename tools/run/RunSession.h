// SPDX-License-Identifier: MIT
//
// One call of zem-run: runs the command with its counters kept apart, makes logs of them, opens the
// viewer when that is wanted, and leaves nothing else behind.
#pragma once

#include "tools/run/CounterFolder.h"
#include "tools/run/CounterImport.h"
#include "tools/run/Environment.h"
#include "tools/run/Process.h"
#include "tools/run/RunRequest.h"
#include "tools/run/SignalWatch.h"

#include <string>
#include <vector>

class RunSession
{
public:
    static constexpr int NoCoverage = 125; // exit status

    // Borrows `request` for its life.
    explicit RunSession(const RunRequest& request);

    // Does it all. Returns the exit status; where the command was killed by a signal, the program
    // ends by the same.
    int run();

private:
    bool prepare();
    bool checkOutput() const;
    bool checkBuild() const;
    void sayWhatIsReplaced() const;
    bool runCommand(int& status);
    void watchForOthers();
    void importAll();
    void importTests();
    void sayLogs() const;
    void view();
    void fail(const std::string& problem);
    void say(const std::string& text) const;
    int end() const;

    const RunRequest& _request;
    SignalWatch _watch;
    CounterFolder _folder;
    Environment _environment;
    std::vector<std::string> _words; // what is run in place of the command
    std::string _privateTests;       // the folder that the driver takes for _testFolder
    std::string _testFolder;         // empty: the driver has the tests' own
    std::vector<std::string> _driverLogs;
    Process _command;
    CounterImport _import;
    bool _hasFailed = false;
};
