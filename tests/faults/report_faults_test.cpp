// SPDX-License-Identifier: MIT
//
// Prints every report and a dump while one call after the other fails, and judges each time: the
// right output and status 0, or a message, another status and no part of a table.
#include "tests/faults/FaultRun.h"
#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>
#include <vector>

namespace {

class ReportFaultsTest : public ::testing::TestWithParam<std::vector<std::string>>
{
protected:
    ReportFaultsTest()
    {
        std::vector<MapSource> sources;
        std::vector<LogSource> counts;
        const std::string map = _dir.path("p.map");
        for (int i = 0; i < 5; ++i) {
            const std::string path =
                "row/of/directory" + std::to_string(i % 2) + "/file" + std::to_string(i) + ".cpp";
            sources.push_back({path,
                               {{"rowOfClass" + std::to_string(i) + "::member__FPC3Foo",
                                 1,
                                 9,
                                 {{1, 4}, {5, 9}}}}});
            counts.push_back({path, map, {3, 0}});
        }
        mapFile(sources).write(map);
        logFile(counts).write(_dir.path("p.log"));
    }

    // The words of a case, with FILES for the files.
    std::vector<std::string> words() const
    {
        std::vector<std::string> result = {builtProgram(GetParam()[0])};
        for (size_t i = 1; i < GetParam().size(); ++i) {
            const std::string& word = GetParam()[i];
            result.push_back(word[0] == '-' ? word : _dir.path(word));
        }
        return result;
    }

    static int rows(const std::string& text)
    {
        int count = 0;
        for (size_t at = text.find("row"); at != std::string::npos; at = text.find("row", at + 1)) {
            ++count;
        }
        return count;
    }

    void judge(const Fault& fault, const ProgramResult& whole, const ProgramResult& result) const
    {
        const bool ofWriting = fault.call == "write";
        if (result.status == 0) {
            EXPECT_EQ(result.out, whole.out) << fault.text();
            return;
        }
        // 255 is what the command line ends with; signals are between.
        EXPECT_TRUE(result.status < 128 || result.status == 255) << fault.text() << result.status;
        EXPECT_TRUE(!result.err.empty() || ofWriting) << fault.text();
        if (fault.call == "read") {
            EXPECT_NE(
                result.err.find(fault.how == "short" ? ": " : "fread failed: Input/output error"),
                std::string::npos)
                << fault.text() << result.err;
        }
        // A dump prints what stands before the damage.
        if (!ofWriting && GetParam()[0] == "zem-report") {
            EXPECT_TRUE(rows(result.out) == 0 || rows(result.out) == rows(whole.out))
                << fault.text() << result.out;
        }
    }

    TempDir _dir;
};

TEST_P(ReportFaultsTest, IsRightOrSaysSo)
{
    std::map<std::string, long> counts;
    const ProgramResult whole = runWithFault(words(), {}, &counts);
    ASSERT_EQ(whole.status, 0) << whole.err;
    ASSERT_GT(rows(whole.out), 1) << whole.out;
    EXPECT_GT(counts["open"], 0);
    EXPECT_GT(counts["read"], 0);
    EXPECT_GT(counts["malloc"], 10);
    for (const auto& each : counts) {
        const bool ofMemory = each.first == "malloc";
        for (const long at : chosenCalls(each.second, ofMemory ? 60 : 200)) {
            for (const char* how : {"fail", "last", "short"}) {
                if (std::string(how) == "short" && each.first != "read" && each.first != "write") {
                    continue;
                }
                const Fault fault = {each.first, at, how, ofMemory ? ENOMEM : EIO};
                judge(fault, whole, runWithFault(words(), fault));
            }
        }
    }
    tellFaults(GetParam()[0]);
}

INSTANTIATE_TEST_SUITE_P(
    Programs, ReportFaultsTest,
    ::testing::Values(std::vector<std::string>{"zem-report", "-dd", "-sd", "p.log"},
                      std::vector<std::string>{"zem-report", "-dF", "-s%F", "p.log"},
                      std::vector<std::string>{"zem-report", "-df", "-nm", "-sf", "p.log"},
                      std::vector<std::string>{"zem-report", "-do", "-sb", "p.log"},
                      std::vector<std::string>{"zem-report", "--format=csv", "-s%F", "p.log"},
                      std::vector<std::string>{"zem-report", "--summary", "-s%F", "p.log"},
                      std::vector<std::string>{"zem-dump", "p.map", "p.log"}));

} // namespace
