// SPDX-License-Identifier: MIT
//
// The programs read files that somebody else cuts, completes and exchanges meanwhile. Each time the
// output is that of a whole file, or there is a message and a status other than 0.
#include "tests/support/DataFiles.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// While it lives, the file has its bytes, or a part of them, or those of its other form.
class Meddler
{
public:
    Meddler(const std::string& path, const std::vector<std::string>& forms)
        : _path(path), _forms(forms), _thread([this] { meddle(); })
    {}
    ~Meddler()
    {
        _isOver = true;
        _thread.join();
    }
    Meddler(const Meddler&) = delete;
    Meddler& operator=(const Meddler&) = delete;

private:
    // Now and then the file rests for longer than programs wait for that, so that they go on.
    void meddle()
    {
        constexpr unsigned int Rest = 30 * 1000; // microseconds
        std::mt19937 random(1);
        while (!_isOver) {
            const std::string& form = _forms[random() % _forms.size()];
            exchange(form);
            usleep(random() % Rest);
            const auto cut = static_cast<off_t>(random() % form.size());
            if (truncate(_path.c_str(), cut) != 0) {
                continue;
            }
            usleep(random() % 1000);
            complete(form, static_cast<size_t>(cut));
            usleep(random() % Rest);
        }
    }

    void exchange(const std::string& form) const
    {
        const std::string aside = _path + ".new";
        FILE* file = std::fopen(aside.c_str(), "w");
        std::fwrite(form.data(), 1, form.size(), file);
        std::fclose(file);
        std::rename(aside.c_str(), _path.c_str());
    }

    void complete(const std::string& form, size_t from) const
    {
        const int file = open(_path.c_str(), O_WRONLY | O_APPEND);
        while (from < form.size()) {
            const ssize_t written = write(file, form.data() + from, form.size() - from);
            from += written > 0 ? static_cast<size_t>(written) : form.size();
        }
        close(file);
    }

    std::string _path;
    std::vector<std::string> _forms;
    std::atomic<bool> _isOver{false};
    std::thread _thread; // the last: it uses the others
};

class ChangingFilesTest : public ::testing::Test
{
protected:
    static int rounds() { return std::getenv("ZEM_FAULTS_ALL") == nullptr ? 25 : 200; }

    // Large enough to be read in pieces.
    void makeData()
    {
        std::vector<MapSource> sources;
        std::vector<LogSource> counts[2];
        for (uint32_t i = 0; i < 3000; ++i) {
            const std::string path = "row/part" + std::to_string(i) + ".cpp";
            sources.push_back({path, {{"Row::run", 1, 9, {{1, 4}, {5, 9}}}}});
            for (uint32_t form = 0; form < 2; ++form) {
                counts[form].push_back({path, _dir.path("p.map"), {3 + form, i % 2}});
            }
        }
        _map = TempDir::read(mapFile(sources).write(_dir.path("p.map")));
        _logs = {logFile(counts[0]).bytes(), logFile(counts[1]).bytes()};
    }

    std::string outputOf(const std::string& log, const std::vector<std::string>& words)
    {
        _dir.write("p.log", log);
        const ProgramResult result = runProgram(words);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }

    static void judge(const ProgramResult& result, const std::vector<std::string>& wanted)
    {
        if (result.status == 0) {
            bool isWhole = false;
            for (const std::string& each : wanted) {
                isWhole = isWhole || result.out == each;
            }
            EXPECT_TRUE(isWhole) << result.out.substr(0, 2000);
            return;
        }
        EXPECT_EQ(result.status, 1) << result.err;
        EXPECT_NE(result.err, "");
    }

    TempDir _dir;
    std::string _map;
    std::vector<std::string> _logs;
};

TEST_F(ChangingFilesTest, ReportsAndDumpsAreOfAWholeFileOrFail)
{
    makeData();
    const std::vector<std::string> report = {builtProgram("zem-report"), "-dF", "-sF",
                                             _dir.path("p.log")};
    const std::vector<std::string> dump = {builtProgram("zem-dump"), _dir.path("p.map"),
                                           _dir.path("p.log")};
    std::vector<std::string> reports;
    std::vector<std::string> dumps;
    for (const std::string& log : _logs) {
        reports.push_back(outputOf(log, report));
        dumps.push_back(outputOf(log, dump));
    }
    EXPECT_NE(reports[0], reports[1]);
    const Meddler ofMap(_dir.path("p.map"), {_map});
    const Meddler ofLog(_dir.path("p.log"), _logs);
    for (int i = 0; i < rounds(); ++i) {
        judge(runProgram(report), reports);
        judge(runProgram(dump), dumps);
    }
}

TEST_F(ChangingFilesTest, ImportsAreOfWholeFilesOrFail)
{
    const std::string notes = sampleNotes(12);
    const std::string counters = sampleCounters(12);
    _dir.write("build/a.gcno", notes);
    _dir.write("build/a.gcda", counters);
    const std::vector<std::string> import = {builtProgram("zem-import"), "gcc", "-o",
                                             _dir.path("out"), _dir.path("build")};
    const ProgramResult whole = runProgram(import);
    ASSERT_EQ(whole.status, 0) << whole.err;
    // Notes have no mark at their end: cut between two records they are a shorter whole.
    const Meddler ofCounters(_dir.path("build/a.gcda"), {counters});
    for (int i = 0; i < rounds(); ++i) {
        judge(runProgram(import), {whole.out});
    }
}

} // namespace
