// SPDX-License-Identifier: MIT
//
// Imports two runs of a small real build into a log each, over the logs of another build, while one
// call after the other fails or the program is killed there: each log is the old one or the new
// one, and its map is there and whole.
#include "tests/faults/FaultRun.h"
#include "tests/faults/LogFolder.h"
#include "tests/support/TempDir.h"
#include "zem/Repository/ZEMRepository.h"

#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

using Contents = LogFolder::Contents;

const char source[] = "int main(int n, char**)\n{\n    return n > 2 ? 1 : 0;\n}\n";

class EachRunFaultsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        _dir.write("old/main.cc", source);
        _dir.write("new/main.cc", std::string("\n") + source);
        for (const char* build : {"old", "new"}) {
            const std::string line = "cd '" + _dir.path(build) +
                                     "' && g++ --coverage main.cc -o main && GCOV_PREFIX=$PWD/a "
                                     "./main && GCOV_PREFIX=$PWD/b ./main 1";
            ASSERT_EQ(std::system(line.c_str()), 0);
        }
        ASSERT_EQ(runProgram(import("old")).status, 0);
        _old = _out.contents();
        const ProgramResult result = runWithFault(import("new"), {}, &_counts);
        ASSERT_EQ(result.status, 0) << result.err;
        _new = _out.contents();
        ASSERT_EQ(_new.size(), 6u); // two maps, two logs, their losses
        ASSERT_NE(_old["a.log"], _new["a.log"]);
        ASSERT_NE(_old["b.log"], _new["b.log"]);
    }

    std::vector<std::string> import(const std::string& build) const
    {
        const std::string folder = _dir.path(build);
        return {builtProgram("zem-import"),
                "gcc",
                "-o",
                _out.path(),
                "--each-run",
                "--run",
                folder + "/a",
                "--run",
                folder + "/b",
                folder};
    }

    void expectOldOrNewLogs(const Contents& files)
    {
        for (const char* name : {"a.log", "b.log"}) {
            const std::string& log = files.at(name);
            EXPECT_TRUE(log == _old[name] || log == _new[name]) << name;
            ZEMRepository repository; // reads the map that the log names
            EXPECT_EQ(repository.processFile(_out.path(name).c_str()), 0);
        }
        LogFolder::expectWholeMaps(files);
    }

    const TempDir _dir;
    const LogFolder _out{_dir.path("out")};
    std::map<std::string, long> _counts;
    Contents _old;
    Contents _new;
};

constexpr size_t AllCalls = static_cast<size_t>(-1);

TEST_F(EachRunFaultsTest, EachLogIsOldOrNewWhateverFailsOrKills)
{
    EXPECT_EQ(_counts["rename"], 5);
    EXPECT_EQ(_counts["sync"], 7); // each file, and the folder for the map's name and for the logs'
    for (const char* call : {"write", "sync", "rename"}) {
        ASSERT_GT(_counts[call], 0) << call;
        for (const long at : chosenCalls(_counts[call], AllCalls)) {
            SCOPED_TRACE(std::string(call) + " " + std::to_string(at));
            _out.fill(_old);
            const ProgramResult result = runWithFault(import("new"), {call, at, "fail", ENOSPC});
            const Contents files = _out.contents();
            expectOldOrNewLogs(files);
            for (const auto& file : files) {
                EXPECT_NE(file.first.front(), '.') << file.first;
            }
            // Only standard output may fail without a trace in the files.
            EXPECT_NE(result.status, 0);
            EXPECT_THAT(result.err, ::testing::StartsWith("zem-import: cannot write "));

            _out.fill(_old);
            EXPECT_EQ(runWithFault(import("new"), {call, at, "kill"}).status, 128 + SIGKILL);
            expectOldOrNewLogs(_out.contents());
            ASSERT_EQ(runProgram(import("new")).status, 0);
            EXPECT_TRUE(_out.contents() == _new);
        }
    }
}

} // namespace
