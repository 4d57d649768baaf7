// SPDX-License-Identifier: MIT
#include "tools/run/Process.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool isClosed[STDERR_FILENO + 1];

// What a new process does before it becomes the program. Where that fails, `report` gets the
// reason; it closes by itself where it succeeds.
[[noreturn]] void become(char* const* words, char** environment, Process::Output output,
                         const int* streams, int report)
{
    for (int fd = 0; fd <= STDERR_FILENO; ++fd) {
        if (isClosed[fd]) {
            close(fd);
        }
    }
    if (output == Process::OnStandardError) {
        dup2(STDERR_FILENO, STDOUT_FILENO);
    }
    for (int i = 0; i < 2; ++i) {
        if (streams[i] >= 0 && !isClosed[STDOUT_FILENO + i]) {
            dup2(streams[i], STDOUT_FILENO + i);
        }
    }
    execvpe(words[0], words, environment);
    const int reason = errno;
    (void)!write(report, &reason, sizeof reason); // nothing else can be told from here
    _exit(127);
}

// The reason that the new process reports; 0 when it became the program.
int reasonFrom(int report)
{
    int reason = 0;
    ssize_t size = 0;
    do {
        size = read(report, &reason, sizeof reason);
    } while (size < 0 && errno == EINTR);
    return size == static_cast<ssize_t>(sizeof reason) ? reason : 0;
}

} // namespace

void Process::rememberStreams()
{
    for (int fd = 0; fd <= STDERR_FILENO; ++fd) {
        isClosed[fd] = fcntl(fd, F_GETFD) < 0 && errno == EBADF;
    }
}

int Process::start(char* const* words, Environment& environment, Output output)
{
    (void)prctl(PR_SET_CHILD_SUBREAPER, 1); // without it nobody is told what is left behind
    char** variables = environment.words();
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) {
        return errno;
    }
    _pid = fork();
    if (_pid == 0) {
        _watch.restore();
        become(words, variables, output, _streams, report[1]);
    }
    const int reason = _pid < 0 ? errno : 0;
    close(report[1]);
    const int failure = _pid < 0 ? reason : reasonFrom(report[0]);
    close(report[0]);
    if (_pid > 0 && failure != 0) {
        waitpid(_pid, &_end, 0);
    }
    return failure;
}

int Process::start(const std::vector<std::string>& words, Environment& environment, Output output)
{
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words) {
        pointers.push_back(const_cast<char*>(word.c_str()));
    }
    pointers.push_back(nullptr);
    return start(pointers.data(), environment, output);
}

// Takes the ends of all children that have ended.
void Process::reap()
{
    int end = 0;
    for (pid_t pid = 0; (pid = waitpid(-1, &end, WNOHANG)) > 0;) {
        if (pid == _pid) {
            _end = end;
            _hasEnded = true;
        }
    }
}

void Process::pass(int signal)
{
    _interrupt = signal;
    _nInterrupts += signal == SIGINT ? 1 : 0;
    if (_nInterrupts > 1) {
        kill(_pid, SIGKILL);
    } else if (_watch.isSent()) {
        kill(_pid, signal);
    }
}

void Process::wait()
{
    for (reap(); !_hasEnded; reap()) {
        const int signal = _watch.wait(-1);
        if (signal != SIGCHLD && signal != 0) {
            pass(signal);
        }
    }
}

bool Process::waitForOthers(int milliseconds)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        reap();
        siginfo_t info = {};
        if (waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD) {
            return true;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const int signal = left <= 0 ? 0 : _watch.wait(static_cast<int>(left));
        if (signal != SIGCHLD) {
            return false;
        }
    }
}

int Process::status() const
{
    return WIFEXITED(_end) ? WEXITSTATUS(_end) : 128 + WTERMSIG(_end);
}

int Process::killer() const
{
    return WIFSIGNALED(_end) ? WTERMSIG(_end) : 0;
}
