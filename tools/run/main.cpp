// SPDX-License-Identifier: MIT
//
// zem-run: runs a command and makes logs of what it covered.
#include "qip/Support/endWithoutMemory.h"
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "tools/run/Process.h"
#include "tools/run/RunRequest.h"
#include "tools/run/RunSession.h"
#include "tools/run/TestDriver.h"

#include <cstring>
#include <exception>
#include <iostream>
#include <string>

namespace {

void usage(std::ostream& out)
{
    out << "Usage: zem-run [options] [--] COMMAND [ARGUMENT...]\n"
           "Run a command whose programs were built with coverage, and write a log of what it "
           "ran.\n"
           "\n"
           "  --build DIR      the build of these programs (default: build, or the current "
           "folder)\n"
           "  --binary FILE... programs and libraries that clang++ instrumented, up to the next\n"
           "                   option (default: those below the build folder)\n"
           "  -o DIR           where to write (default: coverage)\n"
           "  --name NAME      write NAME.log (default: the name of the command)\n"
           "  --view           open zem on what was written\n"
           "  --each           a log for each test, with ctest, meson test, and what runs its "
           "tests\n"
           "                   by zem-run --wrap\n"
           "  --help           print this text\n"
           "  --version        print the version\n"
           "Passed on to zem-import: --only, --exclude, --map, --system, --instances, --relative,\n"
           "--full-names, --no-markers.\n"
           "\n"
           "zem-run --wrap [--name NAME] [--] COMMAND [ARGUMENT...]\n"
           "  run one test, below a zem-run --each\n"
           "\n"
           "The exit status is the command's; 125 when only the coverage is missing.\n";
}

int misuse(const std::string& problem)
{
    std::cerr << "zem-run: " << qipVisibleText(problem.c_str()) << "\nTry zem-run --help.\n";
    return RunSession::NoCoverage;
}

// `words` are those behind --wrap.
int wrap(char** words)
{
    const char* name = nullptr;
    if (*words != nullptr && std::strcmp(*words, "--name") == 0 && words[1] != nullptr) {
        name = words[1];
        words += 2;
    }
    words += *words != nullptr && std::strcmp(*words, "--") == 0 ? 1 : 0;
    return *words != nullptr ? wrapTest(name, words) : misuse("the command to run is missing");
}

int runProgram(int argc, char** argv)
{
    const std::string first = argc > 1 ? argv[1] : "";
    if (first == "--wrap") {
        return wrap(argv + 2);
    }
    RunRequest request;
    const std::string problem = request.read(argv + 1);
    if (!problem.empty()) {
        return misuse(problem);
    }
    if (request._wanted != RunRequest::Run) {
        request._wanted == RunRequest::Help ? usage(std::cout)
                                            : void(std::cout << "zem-run " ZEM_VERSION << '\n');
        return finishStandardOutput("zem-run") ? 0 : 1; // no command ran
    }
    RunSession session(request);
    return session.run();
}

} // namespace

int main(int argc, char** argv)
{
    endWithoutMemory("zem-run", RunSession::NoCoverage);
    Process::rememberStreams();
    guardStandardStreams();
    try {
        return argc > 0 ? runProgram(argc, argv) : RunSession::NoCoverage;
    } catch (const std::exception& problem) {
        std::cerr << "zem-run: " << qipVisibleText(problem.what()) << '\n';
    }
    return RunSession::NoCoverage;
}
