// SPDX-License-Identifier: MIT
//
// Runs zem-report on a small map and its log.
//
//   src/list.cpp  List::append(Foo *)        lines 2 to 4 ran 4 times, 5 never, 6 to 9 twice
//                 List::remove(const Foo *)  lines 23 to 30 never
//                 List::remove(int)          line 41 three times
//   src/main.cpp  main                       lines 2 to 8 once
//   lib/a.cpp     A::run                     lines 1 to 5 never
#pragma once

#include "tests/support/DataFiles.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

class ReportProgram : public ::testing::Test
{
protected:
    ReportProgram()
    {
        setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
        _map = mapFile({{"src/list.cpp",
                         {{"List::append__FP3Foo", 1, 20, {{2, 4}, {5, 5}, {6, 9}}},
                          {"List::remove__FPC3Foo", 22, 40, {{23, 30}}},
                          {"List::remove__Fi", 41, 41, {{41, 41}}}}},
                        {"src/main.cpp", {{"main", 1, 9, {{2, 3}, {4, 8}}}}},
                        {"lib/a.cpp", {{"A::run", 1, 5, {{1, 5}}}}}})
                   .write(_dir.path("p.map"));
        _log = logFile({{"src/list.cpp", _map, {4, 0, 2, 0, 3}},
                        {"src/main.cpp", _map, {1, 1}},
                        {"lib/a.cpp", _map, {0}}})
                   .write(_dir.path("p.log"));
    }

    static ProgramResult run(std::vector<std::string> words)
    {
        words.insert(words.begin(), builtProgram("zem-report"));
        return runProgram(words);
    }

    // `text` without the folder of this test, which differs from run to run, and without the
    // version of the program.
    std::string scrubbed(const std::string& text) const
    {
        std::string version = run({"--version"}).out;
        version.pop_back(); // the end of the line
        return replaced(replaced(text, _dir.path(), "FOLDER"), version, "PROGRAM");
    }

    static std::string replaced(std::string text, const std::string& old, const char* by)
    {
        for (size_t at = text.find(old); at != std::string::npos; at = text.find(old)) {
            text.replace(at, old.size(), by);
        }
        return text;
    }

    TempDir _dir;
    std::string _map;
    std::string _log;
};
