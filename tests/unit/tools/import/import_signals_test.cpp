// SPDX-License-Identifier: MIT
//
// The built zem-import, ended by a signal while it waits for a program that it asks: nothing is
// left behind, and that program is gone, too.
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class ImportSignalsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directory(_dir.path("tmp"));
        _dir.write("tool", "#!/bin/sh\necho ready > \"$READY\"\nexec sleep 100\n");
        fs::permissions(_dir.path("tool"), fs::perms::owner_all);
    }

    // Starts zem-import and ends it by `signal` when the tool runs. Returns its status for
    // waitpid().
    int endBySignal(const std::vector<std::string>& words, int signal)
    {
        const std::string ready = _dir.path("ready");
        fs::remove(ready);
        int alive[2];
        EXPECT_EQ(pipe(alive), 0);
        const pid_t pid = fork();
        if (pid == 0) {
            setenv("TMPDIR", _dir.path("tmp").c_str(), 1);
            setenv("READY", ready.c_str(), 1);
            std::vector<char*> pointers;
            for (const std::string& word : words) {
                pointers.push_back(const_cast<char*>(word.c_str()));
            }
            pointers.push_back(nullptr);
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        ::close(alive[1]);
        int status = 0;
        while (TempDir::read(ready).empty() && waitpid(pid, &status, WNOHANG) == 0) {
            usleep(10000);
        }
        EXPECT_FALSE(fs::is_empty(_dir.path("tmp")));
        kill(pid, signal);
        EXPECT_EQ(waitpid(pid, &status, 0), pid);
        // The tool has the other end, too.
        char byte = 0;
        EXPECT_EQ(::read(alive[0], &byte, 1), 0);
        ::close(alive[0]);
        EXPECT_TRUE(fs::is_empty(_dir.path("tmp"))) << "after the signal " << signal;
        return status;
    }

    const TempDir _dir;
};

TEST_F(ImportSignalsTest, NothingOfAnImportIsLeftBehind)
{
    _dir.write("build/one.gcno", sampleNotes(12));
    _dir.write("build/two.gcno", sampleNotes(12));
    const std::vector<std::string> gcc = {builtProgram("zem-import"),
                                          "gcc",
                                          "-o",
                                          _dir.path(),
                                          "--lines",
                                          "--gcov",
                                          _dir.path("tool"),
                                          _dir.path("build")};
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        const int status = endBySignal(gcc, signal);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
    }

    const std::string mapping = plainMapping({{counterNumber(0), 1, 1, 3, 2}});
    const std::string program =
        _dir.write("program", llvmProgram(LlvmTarget(), {"/w", "a.cc"}, {{"f", 5, mapping, {}}}));
    const std::string profile = _dir.write("a.proftext", "text");
    const int status = endBySignal({builtProgram("zem-import"), "llvm", "-o", _dir.path(),
                                    "--llvm-profdata", _dir.path("tool"), program, profile},
                                   SIGTERM);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
}

} // namespace
