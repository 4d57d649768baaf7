// SPDX-License-Identifier: MIT
//
// The built zem-run on a real program: tests/data/run-sample, built with the g++ that is installed.
#include "tests/support/Golden.h"
#include "tests/support/KeptFolder.h"
#include "tests/support/Program.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

bool holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class ZemRunTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::copy(ZEM_SOURCE_DIR "/tests/data/run-sample", _dir.path("src"));
        fs::create_directories(_dir.path("build"));
        fs::create_directories(_dir.path("tmp"));
        setenv("PATH", (ZEM_BINARY_DIR "/bin:" + std::string(getenv("PATH"))).c_str(), 1);
        unsetenv("GCOV_PREFIX");
        unsetenv("LLVM_PROFILE_FILE");
        ASSERT_EQ(shell("cd build && g++ --coverage -c ../src/main.cc && "
                        "g++ --coverage -c ../src/part.cc && g++ --coverage *.o -o sample"),
                  0)
            << _err;
    }

    void TearDown() override
    {
        EXPECT_TRUE(fs::is_empty(_dir.path("tmp"))) << "something is left behind";
        for (const auto& entry : fs::recursive_directory_iterator(_dir.path("build"))) {
            EXPECT_NE(entry.path().extension(), ".gcda") << "counters in the build";
        }
    }

    // Runs a shell command in the test's folder. Returns its exit status, or 128 + its signal.
    int shell(const std::string& command)
    {
        const ProgramResult result = runProgram(
            {"sh", "-c", "cd '" + _dir.path() + "' && export TMPDIR=$PWD/tmp && " + command});
        _out = result.out;
        _err = result.err;
        return result.status;
    }

    // What each call of leaf() adds to its hits.
    static constexpr long Leaf = 3;

    // The hits of a function in a log of the folder "coverage"; -1 when it is not there.
    long hits(const std::string& log, const std::string& function)
    {
        EXPECT_EQ(shell("zem-report -df coverage/" + log + ".log"), 0) << _err;
        const size_t row = _out.find("\n" + function + "\t");
        if (row == std::string::npos) {
            return -1;
        }
        const std::string line = _out.substr(row + 1, _out.find('\n', row + 1) - row - 1);
        return std::atol(line.substr(line.rfind('\t') + 1).c_str());
    }

    std::vector<std::string> logs(const std::string& folder = "coverage") const
    {
        std::vector<std::string> names;
        std::error_code failure;
        for (const auto& entry : fs::directory_iterator(_dir.path(folder), failure)) {
            if (entry.path().extension() == ".log") {
                names.push_back(entry.path().stem());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TempDir _dir;
    std::string _out;
    std::string _err;
};

using Names = std::vector<std::string>;

TEST_F(ZemRunTest, EachProcessLeavesItsCountersAndTheStatusIsTheCommands)
{
    EXPECT_EQ(shell("zem-run build/sample one two"), 0);
    EXPECT_EQ(_out, "one\ntwo\n");
    EXPECT_TRUE(holds(_err, "wrote coverage/sample.log; to look: zem coverage/sample.log")) << _err;
    EXPECT_EQ(hits("sample", "leaf"), 0);

    // By itself and by two children that become other programs.
    EXPECT_EQ(shell("zem-run -o coverage --name 'two words' -- sh -c "
                    "'build/sample leaf; build/sample chain; exit 5'"),
              5);
    EXPECT_TRUE(holds(_err, "to look: zem 'coverage/two words.log'")) << _err;
    EXPECT_GE(hits("'two words'", "becomeLeaf"), 1);
    EXPECT_EQ(hits("'two words'", "leaf"), 3 * Leaf);

    // A crash leaves no counters of its process, the others' are in.
    EXPECT_EQ(shell("zem-run --name crash sh -c 'build/sample leaf; exec build/sample abort'"),
              128 + SIGABRT);
    EXPECT_EQ(hits("crash", "leaf"), Leaf);
    EXPECT_EQ(shell("zem-run build/sample abort; true"), 0);
    EXPECT_TRUE(holds(_err, "Aborted")) << "the shell is told of the signal: " << _err;

    // From within the build, and by name from elsewhere.
    EXPECT_EQ(shell("cd build && zem-run -o ../coverage --name within ./sample leaf"), 7);
    EXPECT_EQ(hits("within", "leaf"), Leaf);
    EXPECT_EQ(shell("mkdir else && cd else && zem-run --build ../build -o ../coverage --name far "
                    "../build/sample leaf"),
              7);
    EXPECT_EQ(hits("far", "leaf"), Leaf);
    EXPECT_EQ(shell("zem-run --only src --exclude '*/part.cc' --name less build/sample"), 0);
    EXPECT_EQ(hits("less", "leaf"), -1);
    EXPECT_EQ(logs(), (Names{"crash", "far", "less", "sample", "two words", "within"}));
}

TEST_F(ZemRunTest, TheCommandHasTheUsersEnvironmentButForItsCounters)
{
    EXPECT_EQ(shell("GCOV_PREFIX=/no/where GCOV_PREFIX_STRIP=3 LLVM_PROFILE_FILE=x zem-run sh -c "
                    "'build/sample; env; ulimit -c; trap' > with; env > plain"),
              0);
    EXPECT_TRUE(holds(_err, "GCOV_PREFIX=/no/where does not hold for the command")) << _err;
    EXPECT_TRUE(holds(_err, "LLVM_PROFILE_FILE=x does not hold for the command")) << _err;
    const std::string with = TempDir::read(_dir.path("with"));
    EXPECT_TRUE(holds(with, "\nGCOV_PREFIX=" + _dir.path("tmp/zem-run-counters."))) << with;
    EXPECT_TRUE(holds(with, "\nGCOV_PREFIX_STRIP=0\n")) << with;
    EXPECT_TRUE(holds(with, "/%p-%m.profraw\n")) << with;
    std::ifstream plain(_dir.path("plain"));
    for (std::string line; std::getline(plain, line);) {
        EXPECT_TRUE(line[0] == '_' || holds("\n" + with, "\n" + line + "\n")) << line;
    }
    EXPECT_EQ(logs(), Names{"sh"});
    // Standard streams, closed ones included.
    EXPECT_EQ(shell("echo text | zem-run sh -c 'build/sample && cat'"), 0);
    EXPECT_EQ(_out, "text\n");
    EXPECT_EQ(shell("zem-run sh -c 'build/sample; test -e /proc/self/fd/0' <&-"), 1);
    EXPECT_EQ(shell("zem-run build/sample leaf 2>&-"), 7);
    // Nobody reads the messages.
    EXPECT_EQ(shell("{ zem-run sh -c 'build/sample; sleep 0.3'; echo $? > status; } 2>&1 | true; "
                    "until test -s status; do sleep 0.1; done; read status < status; "
                    "test $status -ne 141"),
              0);
}

TEST_F(ZemRunTest, SaysWhyThereIsNoCoverage)
{
    EXPECT_EQ(shell("zem-run true"), 125);
    EXPECT_TRUE(holds(_err, "the command left no counters")) << _err;
    EXPECT_EQ(shell("zem-run false"), 1);
    EXPECT_EQ(shell("zem-run build/nothing"), 127);
    EXPECT_TRUE(holds(_err, "cannot run build/nothing: No such file or directory")) << _err;
    EXPECT_EQ(shell("zem-run nothing-on-the-path"), 127);
    EXPECT_EQ(shell("zem-run src/main.cc"), 126);
    EXPECT_EQ(shell("zem-run"), 125);
    EXPECT_TRUE(holds(_err, "the command to run is missing")) << _err;
    EXPECT_EQ(shell("zem-run --build none build/sample leaf"), 125);
    EXPECT_TRUE(holds(_err, "--build none")) << _err;
    EXPECT_EQ(shell("zem-run -o src/main.cc/x build/sample leaf"), 125);
    EXPECT_TRUE(holds(_err, "src/main.cc is no folder")) << _err;
    EXPECT_EQ(shell("TMPDIR=/none zem-run build/sample leaf"), 125);
    EXPECT_TRUE(holds(_err, "cannot make a folder for counters in /none")) << _err;
    EXPECT_EQ(shell("mkdir else && cd else && zem-run ../build/sample"), 125);
    EXPECT_TRUE(holds(_err, "name its folder with --build DIR")) << _err;
    EXPECT_EQ(shell("cd else && zem-run ../build/sample leaf"), 7);
    EXPECT_EQ(shell("zem-run --build src build/sample"), 125) << "the import's failure";
    EXPECT_TRUE(holds(_err, "no log was written: coverage/sample.log")) << _err;
    // The import cannot write: a folder is where the log goes.
    EXPECT_EQ(shell("mkdir -p coverage/sample.log && zem-run build/sample"), 125);
    EXPECT_TRUE(holds(_err, "no log was written: coverage/sample.log")) << _err;
    EXPECT_EQ(shell("mkdir -p alone && cp " ZEM_BINARY_DIR
                    "/bin/zem-run alone && PATH=/usr/bin:/bin "
                    "alone/zem-run build/sample"),
              125);
    EXPECT_TRUE(holds(_err, "cannot run zem-import: No such file or directory")) << _err;
    // No command ran whose status could be meant.
    EXPECT_EQ(shell("rm alone/zem-run && zem-run --help >/dev/full"), 1);
    EXPECT_EQ(shell("zem-run --version >/dev/full"), 1);
    EXPECT_EQ(shell("zem-run --help"), 0);
    EXPECT_TRUE(matchesGolden("zem-run/usage.txt", _out));
    // Among its options, wherever; behind the command the word is the command's.
    EXPECT_EQ(shell("zem-run --name a --each --help build/sample"), 0);
    EXPECT_TRUE(matchesGolden("zem-run/usage.txt", _out));
    EXPECT_EQ(shell("zem-run --each --version build/sample"), 0);
    EXPECT_EQ(_out.rfind("zem-run 3.", 0), 0u) << _out;
    EXPECT_EQ(shell("zem-run --name --help"), 125); // a value
    EXPECT_EQ(shell("DISPLAY= zem-run --name seen --view build/sample"), 125);
    EXPECT_EQ(logs(), (Names{"sample", "seen"}));
}

// Runs a command that has a terminal of its own, types an interrupt when it prints "ready", and
// gives back all that it prints.
std::string interruptedOnTerminal(const std::vector<std::string>& words)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        return "no terminal";
    }
    const pid_t pid = fork();
    if (pid == 0) {
        setsid();
        const int own = open(ptsname(terminal), O_RDWR);
        for (int fd = 0; fd < 3; ++fd) {
            dup2(own, fd);
        }
        std::vector<char*> argv;
        for (const std::string& word : words) {
            argv.push_back(const_cast<char*>(word.c_str()));
        }
        argv.push_back(nullptr);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    std::string text;
    bool isTyped = false;
    char bytes[512];
    for (ssize_t size = 0; (size = read(terminal, bytes, sizeof bytes)) > 0;) {
        text.append(bytes, static_cast<size_t>(size));
        if (!isTyped && holds(text, "ready")) {
            isTyped = write(terminal, "\x03", 1) == 1;
        }
    }
    waitpid(pid, nullptr, 0);
    close(terminal);
    return text;
}

TEST_F(ZemRunTest, AnInterruptReachesTheCommandOnceAndWhatItRanIsImported)
{
    EXPECT_EQ(shell("zem-run build/sample interrupted"), 0);
    EXPECT_EQ(_out, "ready\ninterrupts: 1\n");
    EXPECT_GE(hits("sample", "waitForSignal"), 1);

    const KeptFolder kept;
    fs::current_path(_dir.path());
    std::string shown = interruptedOnTerminal(
        {"env", "TMPDIR=tmp", "zem-run", "--name", "typed", "build/sample", "wait"});
    EXPECT_TRUE(holds(shown, "interrupts: 1\r\n")) << shown;
    EXPECT_TRUE(holds(shown, "wrote coverage/typed.log")) << shown;
    // What the terminal sends is not sent again.
    shown = interruptedOnTerminal(
        {"env", "TMPDIR=tmp", "zem-run", "--name", "typed", "build/sample", "apart"});
    EXPECT_TRUE(holds(shown, "interrupts: 0\r\n")) << shown;

    // One that comes while the counters are imported ends that.
    fs::create_directory(_dir.path("slow"));
    _dir.write("slow/zem-import", "#!/bin/sh\nkill -INT $PPID\nexec sleep 60\n");
    EXPECT_EQ(shell("cp " ZEM_BINARY_DIR "/bin/zem-run slow && chmod +x slow/zem-import && "
                    "slow/zem-run --name late --view build/sample"),
              128 + SIGINT);

    // The second ends it, without a log.
    EXPECT_EQ(shell("zem-run --name twice build/sample stubborn"), 128 + SIGINT);
    EXPECT_EQ(logs(), (Names{"sample", "typed"}));
}

TEST_F(ZemRunTest, WhatItCannotRemoveTheNextRunRemoves)
{
    EXPECT_EQ(shell("zem-run build/sample orphan"), 128 + SIGKILL);
    EXPECT_FALSE(fs::is_empty(_dir.path("tmp")));
    EXPECT_EQ(shell("zem-run build/sample"), 0);
    EXPECT_TRUE(fs::is_empty(_dir.path("tmp")));

    // A process that outlives the command, too: it makes the folder again when it ends.
    _dir.write("goon", "");
    EXPECT_EQ(shell("(zem-run build/sample behind; echo $?; rm goon) 2>&1 | cat"), 0);
    EXPECT_TRUE(holds(_out, "processes that the command started still run")) << _out;
    EXPECT_TRUE(holds(_out, "\n0\n")) << _out;
    EXPECT_FALSE(fs::is_empty(_dir.path("tmp")));
    EXPECT_EQ(shell("zem-run build/sample"), 0);
}

// The tests of a build as CMake writes them down, without the time that CMake takes.
const char ctestFile[] = R"(add_test([=[one]=] "BUILD/sample" "leaf")
add_test([=[two words/x]=] "BUILD/sample" "a;b" "" "]=]" "\$HOME" "back\\slash")
set_tests_properties([=[one]=] PROPERTIES PASS_REGULAR_EXPRESSION "" WILL_FAIL TRUE)
set_tests_properties([=[two words/x]=] PROPERTIES FIXTURES_REQUIRED F WORKING_DIRECTORY "BUILD/.."
  PASS_REGULAR_EXPRESSION "^a;b\n\n\\]=\\]\n\\$HOME\nback.slash\n$")
add_test([=[start]=] "BUILD/sample" "chain")
set_tests_properties([=[start]=] PROPERTIES FIXTURES_SETUP F)
add_test([=[script]=] "sh" "-c" "true")
add_test([=[absent]=] "BUILD/not built")
subdirs("sub")
)";

TEST_F(ZemRunTest, EachTestOfCtestHasALogNamedAfterIt)
{
    std::string tests = ctestFile;
    for (size_t at = 0; (at = tests.find("BUILD", at)) != std::string::npos;) {
        tests.replace(at, 5, _dir.path("build"));
    }
    _dir.write("build/CTestTestfile.cmake", tests);
    _dir.write("build/CTestCustom.cmake", "set(CTEST_CUSTOM_TESTS_IGNORE \"ignored\")\n");
    _dir.write("build/DartConfiguration.tcl", "BuildDirectory: " + _dir.path("build") + "\n");
    _dir.write("build/sub/CTestTestfile.cmake",
               "add_test([=[one]=] \"" + _dir.path("build/sample") +
                   "\")\nadd_test([=[ignored]=] \"" + _dir.path("build/sample") + "\")\n");
    // As ctest runs them without zem-run: the one that is not built fails.
    EXPECT_EQ(shell("ctest --test-dir build"), 8);
    shell("find . -name '*.gcda' -delete");

    EXPECT_EQ(shell("zem-run --each --build build -- ctest --test-dir build -j3 "
                    "--output-junit results.xml --output-log ctest.out"),
              8)
        << _err;
    EXPECT_TRUE(holds(_out, "83% tests passed, 1 tests failed out of 6")) << _out;
    EXPECT_TRUE(holds(_err, "1 tests left no counters: script")) << _err;
    // What it prints of folders is there when it is read.
    EXPECT_FALSE(holds(_out + _err, "zem-run-counters")) << _out << _err;
    EXPECT_TRUE(holds(_out, "Test project " + _dir.path("build") + "\n")) << _out;
    const std::string records = _dir.path("build/Testing/Temporary/LastTest.log");
    EXPECT_TRUE(holds(_err, "Output from these tests are in: " + records)) << _err;
    EXPECT_TRUE(fs::exists(records));
    EXPECT_TRUE(holds(TempDir::read(_dir.path("ctest.out")), "in: " + records));
    EXPECT_EQ(logs(), (Names{"one", "one-2", "start", "two_words_x"}));
    EXPECT_EQ(shell("ls coverage/*.map | wc -l"), 0);
    EXPECT_EQ(std::atoi(_out.c_str()), 1) << "one build, one map";
    EXPECT_EQ(hits("one", "leaf") + hits("one-2", "leaf"), Leaf);
    EXPECT_EQ(hits("start", "leaf"), 2 * Leaf);
    EXPECT_EQ(hits("two_words_x", "leaf"), 0);
    EXPECT_TRUE(fs::exists(_dir.path("build/results.xml")));
    EXPECT_TRUE(fs::exists(_dir.path("ctest.out")));

    // Filters, other ways to name the folder, and what ctest remembers.
    EXPECT_EQ(shell("cd build && zem-run --each -o ../some -- ctest -R words -I 1,9"), 0) << _err;
    EXPECT_EQ(logs("some"), (Names{"start", "two_words_x"}));
    EXPECT_EQ(shell("zem-run --each -o failed --build build ctest --test-dir build --rerun-failed"),
              8);
    EXPECT_TRUE(holds(_out, "1 tests failed out of 1")) << _out;
    EXPECT_EQ(shell("zem-run --each ctest --preset dev"), 125);
    EXPECT_TRUE(holds(_err, "--each cannot see the tests behind ctest's option --preset")) << _err;
    EXPECT_EQ(shell("zem-run --each --build build ctest --test-dir none"), 125);
    EXPECT_TRUE(holds(_err, "ctest does not say where the tests are")) << _err;
}

// A ctest that names its folder of tests by a link, as TMPDIR may.
TEST_F(ZemRunTest, WhatCtestPrintsOfItsFolderIsTheBuildsOnATerminalToo)
{
    _dir.write("bin/ctest", "#!/bin/sh\n"
                            "case \" $* \" in *' -N '*) echo Test project /the/build; exit;; esac\n"
                            "cd \"$2\" && echo in $(pwd -P)/log\n"
                            "echo also in $(pwd -P) >&2\n"
                            "test -t 1 && test -t 2 && echo shown; true\n");
    ASSERT_EQ(shell("chmod +x bin/ctest && ln -s tmp link"), 0);
    EXPECT_EQ(shell("TMPDIR=$PWD/link zem-run --each bin/ctest"), 125);
    EXPECT_TRUE(holds(_out, "in /the/build/log\n")) << _out;
    EXPECT_TRUE(holds(_err, "also in /the/build\n")) << _err;
    EXPECT_FALSE(holds(_out, "shown")) << _out;
    EXPECT_EQ(shell("zem-run --each bin/ctest > both 2>&1; cat both"), 0);
    EXPECT_TRUE(holds(_out, "in /the/build/log\nalso in /the/build\n")) << _out;

    fs::current_path(_dir.path());
    const std::string shown =
        interruptedOnTerminal({"env", "TMPDIR=tmp", "zem-run", "--each", "bin/ctest"});
    EXPECT_TRUE(holds(shown, "in /the/build/log\r\nalso in /the/build\r\nshown\r\n")) << shown;
    // Nobody reads it.
    EXPECT_EQ(shell("{ zem-run --each bin/ctest; } 2>&1 | true"), 0);
    EXPECT_EQ(shell("zem-run --each bin/ctest > /dev/full"), 125);
    EXPECT_TRUE(holds(_err, "also in /the/build\n")) << _err;
    EXPECT_EQ(shell("zem-run --each bin/ctest >&-"), 125);
}

TEST_F(ZemRunTest, OtherDriversHaveTheWrapperInTheirWords)
{
    _dir.write("Makefile", "TESTS = build/sample\\ leaf build/sample\\ one\n"
                           "check:\n"
                           "\tbuild/sample before\n"
                           "\t-$(TESTS_ENVIRONMENT) build/sample leaf\n"
                           "\t$(TESTS_ENVIRONMENT) build/sample /a/one\n"
                           "\t$(TESTS_ENVIRONMENT) sh -c 'build/sample /a/one' --test-name named\n"
                           "\t-$(TESTS_ENVIRONMENT) build/none\n");
    EXPECT_EQ(shell("zem-run --each -- make check TESTS_ENVIRONMENT='zem-run --wrap'"), 0) << _err;
    EXPECT_TRUE(holds(_err, "what ran outside of the tests is in the log make")) << _err;
    EXPECT_TRUE(holds(_err, "cannot run build/none: No such file or directory")) << _err;
    EXPECT_EQ(logs(), (Names{"make", "named", "sample-leaf", "sample-one"}));
    EXPECT_EQ(hits("sample-leaf", "leaf"), Leaf);
    EXPECT_EQ(hits("sample-one", "leaf"), 0);

    EXPECT_EQ(shell("zem-run --each -o unwrapped -- make check"), 125);
    EXPECT_TRUE(holds(_err, "no test was started by \"zem-run --wrap\"")) << _err;
    EXPECT_EQ(logs("unwrapped"), Names{"make"});
    // Outside of zem-run --each the wrapper leaves all as it is.
    EXPECT_EQ(shell("zem-run --name whole -- make check TESTS_ENVIRONMENT='zem-run --wrap'"), 0);
    EXPECT_EQ(hits("whole", "leaf"), Leaf);
    EXPECT_EQ(shell("zem-run --wrap"), 125);
    EXPECT_EQ(shell("ZEM_RUN_EACH=/none zem-run --wrap build/sample"), 125);
    EXPECT_TRUE(holds(_err, "cannot make a folder for the counters of build/sample")) << _err;
}

TEST_F(ZemRunTest, ProgramsOfBothCompilersLeaveALogEach)
{
    if (shell("command -v clang++") != 0) {
        GTEST_SKIP() << "clang++ is not installed";
    }
    ASSERT_EQ(shell("mkdir clang && clang++ -fprofile-instr-generate -fcoverage-mapping -o "
                    "clang/sample src/*.cc"),
              0)
        << _err;
    // What was there before belongs to no run.
    EXPECT_EQ(shell("cd clang && ./sample leaf"), 7);
    EXPECT_EQ(shell("zem-run --build clang clang/sample leaf"), 7);
    EXPECT_EQ(hits("sample", "leaf"), 1);
    EXPECT_EQ(shell("zem-run --binary clang/sample --name named -- clang/sample chain"), 0);
    EXPECT_EQ(hits("named", "leaf"), 2);
    EXPECT_EQ(shell("zem-run --build src clang/sample"), 125);
    EXPECT_TRUE(holds(_err, "no program with a coverage map")) << _err;
    EXPECT_EQ(shell("zem-run --binary build/sample -- clang/sample"), 125);

    ASSERT_EQ(shell("mkdir both && mv build both/gcc && mv clang both/clang && mkdir build"), 0);
    EXPECT_EQ(shell("zem-run --build both --name both -- sh -c "
                    "'both/clang/sample leaf; both/clang/sample leaf; true'"),
              0);
    EXPECT_EQ(logs(), (Names{"both", "named", "sample"}));
    EXPECT_EQ(hits("both", "leaf"), 2);
    ASSERT_EQ(shell("mv both/gcc/*.gcno both/gcc/*.o both/gcc/sample build && rm -r coverage"), 0);
    _dir.write("each.sh",
               "for i in 1 2; do\n"
               "    zem-run --wrap --name t sh -c 'build/sample leaf; clang/sample leaf'\n"
               "done\ntrue\n");
    ASSERT_EQ(shell("mv both/clang clang"), 0);
    EXPECT_EQ(shell("zem-run --build . --name both sh -c 'build/sample; clang/sample leaf; true'"),
              0);
    EXPECT_EQ(shell("zem-run --build . --each sh each.sh"), 0) << _err;
    EXPECT_EQ(logs(), (Names{"both-gcc", "both-llvm", "t-2-gcc", "t-2-llvm", "t-gcc", "t-llvm"}));
    EXPECT_EQ(hits("both-gcc", "leaf"), 0);
    EXPECT_EQ(hits("both-llvm", "leaf"), 1);
    EXPECT_EQ(hits("t-2-gcc", "leaf"), Leaf);
    EXPECT_EQ(hits("t-llvm", "leaf"), 1);

    // One build, one map; it is that of a run without --each.
    ASSERT_EQ(shell("rm -r coverage && mkdir plain"), 0);
    EXPECT_EQ(shell("zem-run --build . --each --name both sh each.sh && ls coverage/*.map"), 0);
    EXPECT_EQ(std::count(_out.begin(), _out.end(), '\n'), 2) << _out;
    EXPECT_EQ(shell("zem-run --build . -o plain --name both sh -c "
                    "'build/sample leaf; clang/sample leaf; true' && "
                    "for map in plain/*.map; do cmp $map coverage/*-${map##*-}; done"),
              0)
        << _out << _err;
}

} // namespace
