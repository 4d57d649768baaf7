// SPDX-License-Identifier: MIT
//
// Imports a small real build while one call after the other fails, and judges each time: the right
// output and status 0, or a message and another status; the folder holds the old log or the new one
// with its whole map, and nothing half.
#include "qip/Support/ListIterator.h"
#include "tests/faults/FaultRun.h"
#include "tests/faults/LogFolder.h"
#include "tests/support/TempDir.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Repository/ZEMRepository.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

namespace fs = std::filesystem;

using Contents = LogFolder::Contents;

const char source[] = "int work(int n)\n{\n    return n > 2 ? n : work(n + 1);\n}\n";
const char program[] = "int work(int n);\nint main(int n, char**)\n{\n    return work(n) - 3;\n}\n";

class ImportFaultsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        _dir.write("src/work.cc", source);
        _dir.write("src/main.cc", program);
        build("old");
        _dir.write("src/work.cc", std::string("\n") + source);
        build("new");
        ASSERT_EQ(runProgram(import("old")).status, 0);
        _old = _out.contents();
        const ProgramResult result = runWithFault(import("new"), {}, &_counts);
        ASSERT_EQ(result.status, 0) << result.err;
        _new = _out.contents();
        _output = result.out;
        ASSERT_EQ(_new.size(), 4u); // two maps, the log, its losses
        ASSERT_NE(_old["x.log"], _new["x.log"]);
    }

    void TearDown() override { tellFaults("zem-import"); }

    void build(const std::string& folder)
    {
        fs::create_directories(_dir.path(folder));
        const std::string line = "cd '" + _dir.path(folder) +
                                 "' && rm -f *.gc* && g++ --coverage "
                                 "../src/*.cc -o work && ./work";
        ASSERT_EQ(std::system(line.c_str()), 0);
    }

    std::vector<std::string> import(const std::string& build) const
    {
        return {
            builtProgram("zem-import"), "gcc", "-o", _out.path(), "--name", "x", _dir.path(build)};
    }

    // Lets one call fail in an import over the old files.
    void sweep(const Fault& fault)
    {
        SCOPED_TRACE(fault.text());
        _out.fill(_old);
        const ProgramResult result = runWithFault(import("new"), fault);
        const Contents files = _out.contents();
        ASSERT_LT(result.status, 126) << result.err;
        expectWholeMaps(files);
        expectNoTemporaries(files);
        if (result.status == 0) {
            EXPECT_EQ(result.out, _output);
            EXPECT_TRUE(files == _new);
            return;
        }
        EXPECT_THAT(result.err, ::testing::AnyOf(::testing::StartsWith("zem-import: "),
                                                 "Unable to allocate memory.\n"));
        EXPECT_THAT(result.err, ::testing::EndsWith("\n"));
        if (result.err.rfind("zem-import: out of memory", 0) == 0) {
            ++(result.err.find(" while ") == std::string::npos ? _unplaced : _placed);
            _reading += result.err.find(" while reading /") != std::string::npos ? 1 : 0;
        }
        const std::string& log = files.at("x.log");
        if (log != _old["x.log"] && log != _new["x.log"]) {
            expectNamedUnit(result.err);
        }
    }

    // Kills an import over the old files at one call, and imports again.
    void sweepKill(const std::string& call, long at)
    {
        SCOPED_TRACE(call + " " + std::to_string(at) + " kill");
        _out.fill(_old);
        EXPECT_EQ(runWithFault(import("new"), {call, at, "kill"}).status, 128 + SIGKILL);
        const Contents files = _out.contents();
        expectWholeMaps(files);
        const std::string& log = files.at("x.log");
        EXPECT_TRUE(log == _old["x.log"] || log == _new["x.log"]);
        ASSERT_EQ(runProgram(import("new")).status, 0);
        EXPECT_TRUE(_out.contents() == _new); // also without what the dead one left
    }

    // Every map is what its name says, those of the old and the new log at least.
    void expectWholeMaps(const Contents& files)
    {
        LogFolder::expectWholeMaps(files);
        ZEMLogFile log;
        ASSERT_EQ(log.open(_out.path("x.log").c_str(), qipVLRecFile::READ, 0), 0);
        ASSERT_GT(log.load(), 0);
        ListIterator<ZEMLogFileRecord*> records(log.toc());
        while (const ZEMLogFileRecord* record = records.next()) {
            EXPECT_TRUE(fs::exists(record->_mapfile)) << record->_mapfile;
        }
        ZEMRepository repository;
        EXPECT_EQ(repository.processFile(_out.path("x.log").c_str()), 0);
    }

    void expectNoTemporaries(const Contents& files)
    {
        for (const auto& file : files) {
            EXPECT_NE(file.first.front(), '.') << file.first;
        }
    }

    static long countMaps(const Contents& files)
    {
        return std::count_if(files.begin(), files.end(), [](const auto& file) {
            return fs::path(file.first).extension() == ".map";
        });
    }

    // A unit that could not be read is named; the log has the others.
    void expectNamedUnit(const std::string& message)
    {
        EXPECT_TRUE(message.find(".gcno: ") != std::string::npos ||
                    message.find("cannot read the folder ") != std::string::npos ||
                    message.find(".gcda: ") != std::string::npos)
            << message;
    }

    void sweepAll(const std::string& call, size_t most, const std::string& how, int reason)
    {
        ASSERT_GT(_counts[call], 0) << call;
        for (const long at : chosenCalls(_counts[call], most)) {
            sweep({call, at, how, reason});
        }
    }

    const TempDir _dir;
    const LogFolder _out{_dir.path("out")};
    std::map<std::string, long> _counts;
    Contents _old;
    Contents _new;
    std::string _output;
    int _placed = 0;   // messages that memory ran out in the middle of something
    int _unplaced = 0; // somewhere else
    int _reading = 0;  // in the middle of a file that is named
};

constexpr size_t AllCalls = static_cast<size_t>(-1);
constexpr size_t SomeCalls = 250;

// Each of the three files, and the folder for the map's name and for the log's.
TEST_F(ImportFaultsTest, AllIsPutOnTheDisk)
{
    EXPECT_EQ(_counts["rename"], 3);
    EXPECT_EQ(_counts["sync"], 5);
    // The map is on the disk before it has its name, the name, losses and log before the log has
    // its own, and that at the end: what a kill at each of these leaves.
    for (long at = 1; at <= 5; ++at) {
        SCOPED_TRACE(at);
        _out.fill(_old);
        EXPECT_EQ(runWithFault(import("new"), {"sync", at, "kill"}).status, 128 + SIGKILL);
        Contents files = _out.contents();
        EXPECT_EQ(countMaps(files), at == 1 ? 1 : 2);
        EXPECT_TRUE(files["x.log"] == (at == 5 ? _new["x.log"] : _old["x.log"]));
    }
}

TEST_F(ImportFaultsTest, EveryFileCallFailsOnce)
{
    for (const char* call : {"open", "read", "write", "close", "sync", "rename", "readdir"}) {
        sweepAll(call, AllCalls, "fail", EIO);
    }
}

TEST_F(ImportFaultsTest, EveryFileCallFailsFromOneOn)
{
    sweepAll("open", AllCalls, "last", EMFILE);
    sweepAll("write", AllCalls, "last", ENOSPC);
    sweepAll("sync", AllCalls, "last", EDQUOT);
    sweepAll("rename", AllCalls, "last", EROFS);
    sweepAll("read", AllCalls, "last", EIO);
    sweepAll("readdir", AllCalls, "last", EIO);
}

TEST_F(ImportFaultsTest, ReadsAndWritesMayBeShort)
{
    sweepAll("read", AllCalls, "short", 0);
    sweepAll("write", AllCalls, "short", 0);
}

TEST_F(ImportFaultsTest, KilledAtAnyCallItLeavesOldOrNew)
{
    for (const char* call : {"open", "write", "close", "sync", "rename"}) {
        for (const long at : chosenCalls(_counts[call], AllCalls)) {
            sweepKill(call, at);
        }
    }
}

// Only what no log names may ever go.
TEST_F(ImportFaultsTest, CleaningNeverTakesANamedMap)
{
    std::map<std::string, long> counts;
    const std::vector<std::string> words = {builtProgram("zem-import"), "--clean", _out.path()};
    ASSERT_EQ(runWithFault(words, {}, &counts).status, 0);
    const Contents cleaned = _out.contents();
    ASSERT_EQ(cleaned.size(), 3u);
    for (const char* call : {"open", "read", "seek", "close", "readdir", "malloc"}) {
        for (const long at : chosenCalls(counts[call], SomeCalls)) {
            const Fault fault = {call, at, "fail", std::string(call) == "malloc" ? ENOMEM : EIO};
            SCOPED_TRACE(fault.text());
            for (const auto& file : _new) {
                _dir.write("out/" + file.first, file.second);
            }
            const ProgramResult result = runWithFault(words, fault);
            const Contents files = _out.contents();
            EXPECT_TRUE(files == cleaned || (files == _new && result.status == 1));
            EXPECT_LE(result.status, 1);
            EXPECT_EQ(result.err.empty(), result.status == 0) << result.err;
            expectWholeMaps(files);
        }
    }
}

TEST_F(ImportFaultsTest, MemoryMayRunOutAtAnyTime)
{
    sweepAll("malloc", SomeCalls, "fail", ENOMEM);
    sweepAll("malloc", SomeCalls, "last", ENOMEM);
    // But for the looking at words and for folders before anything is read.
    EXPECT_GT(_placed, 4 * _unplaced) << _unplaced;
    EXPECT_GT(_reading, 0);
}

} // namespace
