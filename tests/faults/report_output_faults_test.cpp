// SPDX-License-Identifier: MIT
//
// Writes a report into a file while one call after the other fails, and judges each time: the whole
// new file and status 0, or a message, another status and the old file or the new one, and nothing
// beside them.
#include "tests/faults/FaultRun.h"
#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class ReportOutputFaultsTest : public ::testing::TestWithParam<const char*>
{
protected:
    ReportOutputFaultsTest()
    {
        setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
        const std::string map =
            mapFile({{"src/a.cpp", {{"A::run__FPC3Foo", 1, 9, {{1, 4}, {5, 9}}}}},
                     {"src/b.cpp", {{"main", 1, 9, {{1, 4}, {3, 3}}}}}})
                .write(_dir.path("p.map"));
        logFile({{"src/a.cpp", map, {3, 0}}, {"src/b.cpp", map, {1, 2}}}).write(_dir.path("p.log"));
        fs::create_directory(_dir.path("out"));
    }

    std::vector<std::string> words() const
    {
        return {builtProgram("zem-report"), "--format",        GetParam(), "-o",
                _dir.path("out/report"),    _dir.path("p.log")};
    }

    size_t filesInFolder() const
    {
        return static_cast<size_t>(
            std::distance(fs::directory_iterator(_dir.path("out")), fs::directory_iterator()));
    }

    void judge(const Fault& fault, const std::string& whole)
    {
        _dir.write("out/report", "old");
        const ProgramResult result = runWithFault(words(), fault);
        const std::string text = TempDir::read(_dir.path("out/report"));
        if (result.status == 0) {
            EXPECT_EQ(text, whole) << fault.text();
        } else {
            EXPECT_TRUE(text == "old" || text == whole) << fault.text() << "\n" << text;
            EXPECT_TRUE(!result.err.empty() || fault.call == "write") << fault.text();
            EXPECT_TRUE(result.status < 128 || result.status == 255) << fault.text();
        }
        EXPECT_EQ(filesInFolder(), 1u) << fault.text();
    }

    // A kill leaves a file that the next run removes.
    void judgeKill(const std::string& call, long at, const std::string& whole)
    {
        const Fault fault = {call, at, "kill", 0};
        _dir.write("out/report", "old");
        EXPECT_EQ(runWithFault(words(), fault).status, 128 + SIGKILL) << fault.text();
        const std::string text = TempDir::read(_dir.path("out/report"));
        EXPECT_TRUE(text == "old" || text == whole) << fault.text();
        EXPECT_EQ(runProgram(words()).status, 0);
        EXPECT_EQ(filesInFolder(), 1u) << fault.text();
    }

    TempDir _dir;
};

TEST_P(ReportOutputFaultsTest, IsWholeOrSaysSo)
{
    std::map<std::string, long> counts;
    const ProgramResult result = runWithFault(words(), {}, &counts);
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string whole = TempDir::read(_dir.path("out/report"));
    ASSERT_FALSE(whole.empty());
    for (const char* call : {"open", "write", "sync", "rename", "close"}) {
        EXPECT_GT(counts[call], 0) << call;
    }
    for (const auto& each : counts) {
        const bool ofMemory = each.first == "malloc";
        for (const long at : chosenCalls(each.second, ofMemory ? 25 : 60)) {
            for (const char* how : {"fail", "last"}) {
                judge({each.first, at, how, ofMemory ? ENOMEM : ENOSPC}, whole);
            }
        }
    }
    judge({"write", 1, "short", 0}, whole);
    for (const char* call : {"write", "sync", "rename"}) {
        judgeKill(call, 1, whole);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, ReportOutputFaultsTest,
                         ::testing::Values("text", "json", "lcov", "cobertura"));

} // namespace
