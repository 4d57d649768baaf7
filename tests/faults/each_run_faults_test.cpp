// SPDX-License-Identifier: MIT
//
// Imports two runs of a small real build into a log each, over the logs of another build, while one
// call after the other fails or the program is killed there: each log is the old one or the new
// one, and its map is there and whole.
#include "tests/faults/FaultRun.h"
#include "tests/support/TempDir.h"
#include "tools/common/ContentDigest.h"
#include "zem/Repository/ZEMRepository.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

namespace fs = std::filesystem;

// File name > bytes.
using Contents = std::map<std::string, std::string>;

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
        _old = contents();
        const ProgramResult result = runWithFault(import("new"), {}, &_counts);
        ASSERT_EQ(result.status, 0) << result.err;
        _new = contents();
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
                out(),
                "--each-run",
                "--run",
                folder + "/a",
                "--run",
                folder + "/b",
                folder};
    }

    std::string out() const { return _dir.path("out"); }

    Contents contents() const
    {
        Contents result;
        for (const fs::directory_entry& entry : fs::directory_iterator(out())) {
            result[entry.path().filename().string()] = TempDir::read(entry.path().string());
        }
        return result;
    }

    void restoreOld()
    {
        fs::remove_all(out());
        for (const auto& file : _old) {
            _dir.write("out/" + file.first, file.second);
        }
    }

    void expectOldOrNewLogs(const Contents& files)
    {
        for (const char* name : {"a.log", "b.log"}) {
            const std::string& log = files.at(name);
            EXPECT_TRUE(log == _old[name] || log == _new[name]) << name;
            ZEMRepository repository; // reads the map that the log names
            EXPECT_EQ(repository.processFile(_dir.path(std::string("out/") + name).c_str()), 0);
        }
        for (const auto& file : files) {
            if (fs::path(file.first).extension() == ".map") {
                ContentDigest digest;
                digest.add(reinterpret_cast<const unsigned char*>(file.second.data()),
                           file.second.size());
                EXPECT_NE(file.first.find(digest.text().substr(0, 32)), std::string::npos);
            }
        }
    }

    const TempDir _dir;
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
            restoreOld();
            const ProgramResult result = runWithFault(import("new"), {call, at, "fail", ENOSPC});
            const Contents files = contents();
            expectOldOrNewLogs(files);
            for (const auto& file : files) {
                EXPECT_NE(file.first.front(), '.') << file.first;
            }
            // Only standard output may fail without a trace in the files.
            EXPECT_NE(result.status, 0);
            EXPECT_THAT(result.err, ::testing::StartsWith("zem-import: cannot write "));

            restoreOld();
            EXPECT_EQ(runWithFault(import("new"), {call, at, "kill"}).status, 128 + SIGKILL);
            expectOldOrNewLogs(contents());
            ASSERT_EQ(runProgram(import("new")).status, 0);
            EXPECT_TRUE(contents() == _new);
        }
    }
}

} // namespace
