// SPDX-License-Identifier: MIT
//
// Makes logs of what a run left: decides by the kind of counters, finds the build they belong to
// and has zem-import read both. What zem-import prints goes to the standard error stream.
#pragma once

#include "tools/run/CounterKinds.h"
#include "tools/run/Environment.h"
#include "tools/run/RunRequest.h"
#include "tools/run/SignalWatch.h"

#include <string>
#include <vector>

class CounterImport
{
public:
    // Borrows both for its life.
    CounterImport(SignalWatch& watch, const RunRequest& request) : _watch(watch), _request(request)
    {}

    // Makes a log `name` of the counters in `folder`, two with "-gcc" and "-llvm" behind the name
    // when there are both kinds. A problem is told on the standard error stream.
    void add(const std::string& folder, const std::string& name);

    // Makes a log of each of these folders with counters, named after it. Those of one compiler
    // have one map.
    void addEach(const std::vector<std::string>& folders);

    // The logs that were written, and whether any could not be or is incomplete.
    const std::vector<std::string>& logs() const { return _logs; }
    bool hasFailed() const { return _hasFailed; }

    // The signal that came in between, 0 for none. Nothing more is imported then.
    int interrupt() const { return _interrupt; }

private:
    void addGcc(const std::string& folder, const std::string& name);
    void importEach(const std::vector<std::string>& words, const std::vector<std::string>& folders);
    std::vector<std::string> llvmWords() const;
    void addLlvm(const std::string& folder, const std::string& name);
    bool splitKinds(std::string& folder, std::string& llvmFolder);
    bool findBuild();
    bool findBinaries();
    void import(std::vector<std::string> words, const std::string& name,
                const std::vector<std::string>& logNames);
    void fail(const std::string& problem);

    SignalWatch& _watch;
    const RunRequest& _request;
    Environment _environment;
    std::string _build; // empty: not looked for yet
    std::vector<std::string> _binaries;
    std::vector<std::string> _logs;
    bool _hasFailed = false;
    int _interrupt = 0;
};
