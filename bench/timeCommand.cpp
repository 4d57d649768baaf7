// SPDX-License-Identifier: MIT
//
// Runs a command some times with its standard output thrown away and prints what the quickest run
// took: "SECONDS PEAK CPU", the wall clock, the largest resident size of a run in KiB, and the
// least user and system time, all with the programs that the command starts and waits for.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double secondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

[[noreturn]] void execute(char** words)
{
    const int null = open("/dev/null", O_WRONLY);
    if (null < 0 || dup2(null, STDOUT_FILENO) < 0) {
        _exit(126);
    }
    execvp(words[0], words);
    std::perror(words[0]);
    _exit(127);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s TIMES COMMAND ...\n", argv[0]);
        return 2;
    }
    double best = 0;
    double cpu = 0;
    long peak = 0;
    const int times = std::max(std::atoi(argv[1]), 1);
    for (int i = 0; i < times; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const pid_t pid = fork();
        if (pid == 0) {
            execute(argv + 2);
        }
        int status = 0;
        struct rusage usage = {};
        if (pid < 0 || wait4(pid, &status, 0, &usage) != pid) {
            std::perror(argv[0]);
            return 1;
        }
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            std::fprintf(stderr, "%s failed\n", argv[2]);
            return 1;
        }
        best = i == 0 ? elapsed.count() : std::min(best, elapsed.count());
        const double used = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
        cpu = i == 0 ? used : std::min(cpu, used);
        peak = std::max(peak, usage.ru_maxrss);
    }
    std::printf("%.6f %ld %.6f\n", best, peak, cpu);
    return 0;
}
