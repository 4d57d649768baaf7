// SPDX-License-Identifier: MIT
//
// An importer for tests: one function with two lines, and runs as its inputs name them. An input
// "NAME=COUNT" is a run; "NAME=bad" one that cannot be read. It recognises paths that end with its
// mark and knows the option --OPTION.
#pragma once

#include "tools/import/Importer.h"

#include <cstdlib>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

class FakeImporter : public Importer
{
public:
    explicit FakeImporter(const char* mark, const char* option = "") : _mark(mark), _option(option)
    {}

    int option(char** words) override { return _option == words[0] ? 1 : 0; }
    void input(const char* word) override { _inputs.emplace_back(word); }
    void usage(std::ostream& out) const override { out << "  " << _option << "\n"; }

    bool recognises(const char* path) const override
    {
        const std::string text = path;
        return text.size() >= _mark.size() &&
               text.compare(text.size() - _mark.size(), std::string::npos, _mark) == 0;
    }

    bool readBuild(ImportedBuild& build, ImportLosses& losses, unsigned int) override
    {
        if (_inputs.empty() || !_isReadable) {
            return false;
        }
        FunctionCopy copy;
        copy._symbol = "work";
        copy._file = build._sources.find(_source)._number;
        copy._startLine = 1;
        copy._endLine = 9;
        copy._lines = {{0, copy._file, 2}, {1, copy._file, 4}};
        build._copies.push_back(copy);
        build._nCounts = 2;
        losses._systemFunctions = 5;
        return true;
    }

    size_t runs() const override { return _inputs.size(); }

    bool readRun(size_t run, ImportedRun& result, ImportLosses& losses, unsigned int) override
    {
        const std::string& input = _inputs[run];
        const size_t equals = input.find('=');
        if (equals == std::string::npos) {
            result._counts = {1, 0};
            return true;
        }
        if (input.compare(equals, std::string::npos, "=bad") == 0) {
            return false;
        }
        result._name = input.substr(0, equals);
        result._executionTime = 77;
        result._counts = {std::atoi(input.c_str() + equals + 1), 0};
        losses._unitsNotRun = run;
        losses._failedUnits = _failedUnits;
        return true;
    }

    std::string _source = "/s/a.cc";
    bool _isReadable = true;
    uint64_t _failedUnits = 0;

private:
    const std::string _mark;
    const std::string _option;
    std::vector<std::string> _inputs;
};
